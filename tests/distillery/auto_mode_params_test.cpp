#include <paramdb/distillery/auto_mode_params.h>
#include <paramdb/platform/sea/resource_sea.h>

#include "own_distillery.h"

#include <gtest/gtest.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>

namespace {

auto FieldsOf(CVAutoModeParams const& params) {
    return std::tie(params.SignalId, params.Start, params.Stop, params.Step, params.Value4, params.Value5,
                    params.Value6, params.IntervalBits, params.HasState, params.Value8, params.Value9);
}

class AutoModeParamsTest : public testing::Test {
protected:
    CAutoModeParamMap& params() { return own.instance().AutoModeParams(); }
    CAutoModeParamMap const& const_params() { return std::as_const(own.instance()).AutoModeParams(); }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(AutoModeParamsTest, BitsAreFiveUntilComputed) {
    EXPECT_EQ(CVAutoModeParams().IntervalBits, 5);
    EXPECT_EQ(CVAutoModeParams(3, QVAutoModeParams()).IntervalBits, 5);
    EXPECT_FALSE(CVAutoModeParams().HasState);
}

TEST_F(AutoModeParamsTest, DefaultsOfARow) {
    EXPECT_EQ(FieldsOf(CVAutoModeParams(3, QVAutoModeParams())),
              std::tuple(3, 0.0f, 10.0f, 1.0f, 1.0f, 0.0f, 1.0f, 5, true, 1.0f, 1u));
}

TEST_F(AutoModeParamsTest, FromARowAndBack) {
    struct Case {
        int state;
        bool has_state;
    };
    for (auto const& [state, has_state] : {Case{0, false}, Case{1, true}, Case{2, true}, Case{-1, true}}) {
        QVAutoModeParams row;
        row.tuple() = std::tuple(-1.5f, 2.5f, 0.25f, 4.0f, 5.0f, 6.0f, state, 8.0f, 4000000000u);
        row.IntervalBits = 17;
        CVAutoModeParams const params(-1, row);
        EXPECT_EQ(FieldsOf(params),
                  std::tuple(-1, -1.5f, 2.5f, 0.25f, 4.0f, 5.0f, 6.0f, 17, has_state, 8.0f, 4000000000u));
        auto const back = params.ToRow();
        EXPECT_EQ(back.tuple(),
                  std::tuple(-1.5f, 2.5f, 0.25f, 4.0f, 5.0f, 6.0f, has_state ? 1 : 0, 8.0f, 4000000000u));
        EXPECT_EQ(back.IntervalBits, 17);
    }
}

TEST_F(AutoModeParamsTest, TheMapFollowsTheTables) {
    own.AddParameter(7, 30, 0, 5, 1, 1);
    own.AddParameter(-2, 20, 0, 1000, 100, 0);
    own.AddParameter(Highest, 10, 0, 3, 1, 5);
    own.tables().AutoModeParam[20].get<"value_9">() = 99;
    ASSERT_TRUE(own.Build());
    ASSERT_EQ(const_params().size(), 3u);
    auto place = const_params().begin();
    EXPECT_EQ(place->first, -2);
    EXPECT_EQ(FieldsOf(place->second),
              std::tuple(20, 0.0f, 1000.0f, 100.0f, 1.0f, 0.0f, 1.0f, 4, false, 1.0f, 99u));
    EXPECT_EQ((++place)->first, 7);
    EXPECT_EQ(FieldsOf(place->second), std::tuple(30, 0.0f, 5.0f, 1.0f, 1.0f, 0.0f, 1.0f, 3, true, 1.0f, 1u));
    EXPECT_EQ((++place)->first, Highest);
    EXPECT_EQ(FieldsOf(place->second), std::tuple(10, 0.0f, 3.0f, 1.0f, 1.0f, 0.0f, 1.0f, 2, true, 1.0f, 1u));
    EXPECT_EQ(&const_params(), &params());
}

TEST_F(AutoModeParamsTest, AnEditChangesTheLayoutOnRequest) {
    own.AddParameter(0, 10, 0, 1000, 100, 1);
    ASSERT_TRUE(own.Build());
    auto& instance = own.instance();
    ASSERT_EQ(instance.VirtModeExtension(0x7FFFFFFF), 63);
    params().at(0).Step = 1; // 1000 intervals: 10 bits
    params()[5] = CVAutoModeParams(20, QVAutoModeParams());
    EXPECT_EQ(instance.VirtModeExtension(0x7FFFFFFF), 63) << "nothing happens by itself";
    EXPECT_TRUE(instance.UpdateLocalSeas());
    EXPECT_EQ(params().at(0).IntervalBits, 10);
    EXPECT_EQ(params().at(5).IntervalBits, 4);
    EXPECT_EQ(instance.VirtModeExtension(0x7FFFFFFF), (1 << 18) - 1);
    EXPECT_EQ(instance.VirtMode2BaseMode(0x7FFFFFFF), (1 << 13) - 1);
    EXPECT_EQ(own.derived().ModeInfo().StateBits(), 4);
    EXPECT_EQ(own.tables().AutoModeParam.size(), 1u) << "the tables wait for the writing";
    params().clear();
    EXPECT_TRUE(instance.UpdateLocalSeas());
    EXPECT_EQ(own.derived().ModeInfo().ExtensionMask(), 0u);
    EXPECT_EQ(own.derived().ModeInfo().StateBits(), 0);
}

TEST_F(AutoModeParamsTest, WhetherABitIsLeft) {
    struct Case {
        float stop;
        bool has_state;
        bool is_left;
    };
    Case const cases[] = {{1e9f, false, true},   {2e9f, false, false}, {4e9f, false, false},
                          {1e30f, false, false}, {2e8f, true, true},   {1e9f, true, false},
                          {1, true, true},       {0, false, true}};
    own.AddMode(Highest, L"its bits do not count here", 1);
    for (auto const& [stop, has_state, is_left] : cases) {
        params()[0] = CVAutoModeParams(10, QVAutoModeParams());
        params()[0].Stop = stop;
        params()[0].HasState = has_state;
        EXPECT_EQ(own.instance().UpdateLocalSeas(), is_left) << stop;
    }
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(AutoModeParamsTest, WritingRebuildsTheTables) {
    own.AddParameter(0, 10, 0, 1000, 100, -3);
    own.AddParameter(1, 20, 0, 3, 1, 0);
    ASSERT_TRUE(own.Build());
    params().erase(0);
    params()[-4] = CVAutoModeParams(5, QVAutoModeParams());
    params()[-4].HasState = false;
    params()[-4].Value9 = 12;
    params()[9] = CVAutoModeParams(7, QVAutoModeParams());
    own.instance().UpdateLocalSeas();
    own.instance().WriteTablesToLocalSeas();

    auto const& orders = own.tables().AutoModeParamOrder;
    std::vector<std::pair<int, int>> rows;
    for (auto const& [order, row] : orders)
        rows.emplace_back(order[0], row.get<"signal">());
    EXPECT_EQ(rows, (std::vector<std::pair<int, int>>{{-4, 5}, {1, 20}, {9, 7}}));
    ASSERT_EQ(own.tables().AutoModeParam.size(), 3u);
    auto const& five = own.tables().AutoModeParam.at(5);
    EXPECT_EQ(five.tuple(), std::tuple(0.0f, 10.0f, 1.0f, 1.0f, 0.0f, 1.0f, 0, 1.0f, 12u));
    EXPECT_EQ(five.IntervalBits, 4);
    EXPECT_EQ(own.tables().AutoModeParam.at(7).get<"state">(), 1);
    EXPECT_EQ(own.tables().AutoModeParam.at(20).get<"stop">(), 3.0f);

    // The next build finds what was written, and so does a sea.
    EXPECT_TRUE(own.Build());
    EXPECT_EQ(const_params().size(), 3u);
    CResourceSea sea;
    ASSERT_TRUE(own.tables().AutoModeParamOrder.WriteTable(&sea));
    ASSERT_NE(sea.FindList(L"<TAutoModeParamOrder>"), nullptr);
    EXPECT_EQ(sea.FindList(L"<TAutoModeParamOrder>")->size(), 3u);
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(AutoModeParamsTest, WritingNormalisesTheStateFlag) {
    own.AddParameter(0, 10, 0, 1000, 100, -3);
    ASSERT_TRUE(own.Build());
    own.instance().WriteTablesToLocalSeas();
    EXPECT_EQ(own.tables().AutoModeParam.at(10).get<"state">(), 1);
}

TEST_F(AutoModeParamsTest, TwoPlacesOfOneSignalWriteOneRow) {
    params()[0] = CVAutoModeParams(10, QVAutoModeParams());
    params()[1] = CVAutoModeParams(10, QVAutoModeParams());
    params()[1].Stop = 99;
    own.instance().WriteTablesToLocalSeas();
    EXPECT_EQ(own.tables().AutoModeParamOrder.size(), 2u);
    ASSERT_EQ(own.tables().AutoModeParam.size(), 1u);
    EXPECT_EQ(own.tables().AutoModeParam.at(10).get<"stop">(), 10.0f);
    own.Build();
    EXPECT_TRUE(const_params().empty());
    EXPECT_EQ(messages.Take().size(), 1u);
}

TEST_F(AutoModeParamsTest, WritingWithoutParametersEmptiesTheTables) {
    own.AddParameter(0, 10, 0, 1000, 100, 1);
    own.instance().WriteTablesToLocalSeas(); // before any build
    EXPECT_TRUE(own.tables().AutoModeParamOrder.empty());
    EXPECT_TRUE(own.tables().AutoModeParam.empty());
}

} // namespace
