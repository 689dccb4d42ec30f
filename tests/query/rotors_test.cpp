#include <paramdb/query/param_instance.h>

#include <cmath>
#include <gtest/gtest.h>
#include <tests/distillery/rotor_world.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>

namespace {

// Mode 4 of physical mode 1: gear 10 is the physical gear 20 on rotor 200, rotor 100 is driven by speed
// source 70, rotor 101 refers to 71.
class RotorsTest : public testing::Test {
protected:
    RotorsTest() {
        own.AddMode(4, L"mode", 1);
        own.AddMode(5, L"no physical mode", -1);
        auto& tables = own.tables();
        tables.Virtual2PhysGear.insert({{1, 10}, QVRefIdx(20)});
        tables.OrderSource2Rotor.insert({{20, 1}, QVRefIdx(200)});
        tables.OrderSource2Rotor.insert({{11, 1}, QVRefIdx(100)});
        tables.OrderSource2Rotor.insert({{12, 1}, QVRefIdx(101)});
        tables.BaseOrder.insert({20, QVBaseOrder(23)});
        tables.BaseOrder.insert({11, QVBaseOrder(7)});
        tables.GearDiameter.insert({20, QVGearDiameter(80.5f)});
        tables.RotorSpeed.insert({{1, 200}, QVRotorSpeeds(2.5, 5, 2)});
        tables.RotorSpeed.insert({{1, 100}, QVRotorSpeeds(0.5, 1, 3)});
        tables.RotorSpeed.insert({{1, 70}, QVRotorSpeeds(4, 0, 0)});
        tables.RotorSpeed.insert({{1, 60}, QVRotorSpeeds(0, 6, 1)});
        tables.RotorSpeed.insert({{1, 61}, QVRotorSpeeds(3, 0, 5)});
        tables.RotorSpeedSource.insert({{1, 100}, QVRefIdx(70)});
        tables.RotorSpeedReference.insert({{1, 100}, QVRefIdx(79)});
        tables.RotorSpeedReference.insert({{1, 101}, QVRefIdx(71)});
        tables.SpeedSource.insert({70, QVRefIdx(900)});
        tables.SpeedSource.insert({79, QVRefIdx(999)});
        own.AddParameter(0, 1000, 0, 1000, 100, 0);
        EXPECT_TRUE(own.Build());
    }

    CQtParamInstance const& instance() { return own.instance(); }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(RotorsTest, Gears) {
    EXPECT_EQ(instance().PhysicalGear(4, 10), 20);
    EXPECT_EQ(instance().PhysicalGear(4, 20), 20);
    EXPECT_EQ(instance().PhysicalGear(4, -1), -1);
    EXPECT_EQ(instance().PhysicalGear(-1, 10), -1);
    EXPECT_EQ(instance().PhysicalGear(5, 10), -1);
    EXPECT_EQ(instance().PhysicalGear(6, 10), -1);
    EXPECT_EQ(instance().BaseOrder(4, 10), 23.0f);
    EXPECT_EQ(instance().BaseOrder(4, 20), 23.0f);
    EXPECT_EQ(instance().BaseOrder(4, 12), 0.0f);
    EXPECT_EQ(instance().BaseOrder(6, 11), 0.0f) << "without physical mode there is no gear";
    EXPECT_EQ(instance().GearDiameter(4, 10), 80.5f);
    EXPECT_EQ(instance().GearDiameter(4, 11), 0.0f);
    EXPECT_EQ(instance().GearDiameter(-1, 20), 0.0f);
}

TEST_F(RotorsTest, OrderSources) {
    EXPECT_EQ(instance().OrderSource2Rotor(4, 20), 200);
    EXPECT_EQ(instance().OrderSource2Rotor(4, 10), 10) << "the gear is not looked at";
    EXPECT_EQ(instance().OrderSource2Rotor(4, 77), 77);
    EXPECT_EQ(instance().OrderSource2Rotor(-1, 20), 0);
    EXPECT_EQ(instance().OrderSource2Rotor(4, -1), 0);
    EXPECT_EQ(instance().OrderSource2Rotor(5, 20), -1) << "the mode is there, its physical mode is not";
    EXPECT_EQ(instance().OrderSource2Rotor(6, 20), -1);
}

TEST_F(RotorsTest, SpeedSources) {
    for (bool const reference : {false, true}) {
        EXPECT_EQ(instance().RotorSpeedSource(4, 100, reference), 70) << "the source wins";
        EXPECT_EQ(instance().RotorSpeedSource(4, 11, reference), 70)
            << "an order source stands for its rotor";
        EXPECT_EQ(instance().RotorSpeedSourceAppId(4, 11, reference), 900);
        EXPECT_EQ(instance().SpeedInfoOfRotor(4, 100, reference), 900);
        EXPECT_EQ(instance().SpeedInfoOfRotor(4, 11, reference), -1) << "a rotor only";
        EXPECT_EQ(instance().RotorSpeedSource(4, 101, reference), reference ? 71 : -1);
        EXPECT_EQ(instance().RotorSpeedSource(4, 12, reference), reference ? 71 : -1);
        EXPECT_EQ(instance().RotorSpeedSourceAppId(4, 12, reference), -1) << "71 has no signal";
        for (int const mode : {-1, 5, 6})
            EXPECT_EQ(instance().RotorSpeedSource(mode, 100, reference), -1);
        EXPECT_EQ(instance().RotorSpeedSource(4, -1, reference), -1);
        EXPECT_EQ(instance().RotorSpeedSourceAppId(4, -1, reference), -1);
        EXPECT_EQ(instance().SpeedInfoOfRotor(-1, 100, reference), -1);
    }
    EXPECT_EQ(instance().RotorSpeedAppIdSource(900), 70);
    EXPECT_EQ(instance().RotorSpeedAppIdSource(999), 79);
    EXPECT_EQ(instance().RotorSpeedAppIdSource(70), -1);
    EXPECT_EQ(instance().RotorSpeedAppIdSource(-1), -1);
}

TEST_F(RotorsTest, NeitherNoModeNorNoRotorHasASpeedSource) {
    own.tables().RotorSpeedSource.insert({{-1, 100}, QVRefIdx(70)});
    own.tables().RotorSpeedSource.insert({{1, -1}, QVRefIdx(70)});
    for (bool const reference : {false, true}) {
        EXPECT_EQ(instance().RotorSpeedSource(-1, 100, reference), -1);
        EXPECT_EQ(instance().RotorSpeedSource(4, -1, reference), -1);
    }
}

TEST_F(RotorsTest, FrequencyRatios) {
    struct Case {
        int mode, a, b;
        double ratio;
    };
    Case const cases[] = {{4, 100, 200, 5.0}, {4, 200, 100, 0.2}, {4, 11, 10, 5.0},    {4, 10, 10, 1.0},
                          {4, 60, 200, 0.0},  {4, 200, 60, 0.0},  {4, 77, 200, 0.0},   {4, 200, 77, 0.0},
                          {4, -1, 200, 0.0},  {4, 200, -1, 0.0},  {-1, 100, 200, 0.0}, {5, 100, 200, 0.0},
                          {6, 100, 200, 0.0}};
    for (auto const& [mode, a, b, ratio] : cases)
        EXPECT_EQ(instance().FrequencyRatioToGeneratingRotor(mode, a, b), ratio)
            << mode << " " << a << " " << b;
}

TEST_F(RotorsTest, FrequenciesRelativeToTheSpeedSource) {
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, 100, false), 0.125);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, 11, true), 0.125);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, 101, false), 0.0);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, 101, true), 0.0) << "71 has no speed";
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, 200, true), 0.0);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(4, -1, true), 0.0);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(-1, 100, true), 0.0);
}

TEST_F(RotorsTest, SpeedRatios) {
    using numeric::CRatio;
    EXPECT_EQ(instance().RotorSpeedRatio(4, 100, 200), CRatio(15, 2));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 200, 100), CRatio(2, 15));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 100, 100), CRatio(1, 1));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 60, 200), CRatio(5, 12)) << "the fraction goes before the number";
    EXPECT_EQ(instance().RotorSpeedRatio(4, 200, 61), CRatio(0, 1));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 61, 200), CRatio(0.0)) << "division by zero";
    EXPECT_EQ(instance().RotorSpeedRatio(4, 70, 200), CRatio(0.625));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 200, 70), CRatio(1.6));
    EXPECT_EQ(instance().RotorSpeedRatio(4, 77, 200), CRatio(0.0));
    for (auto const& [mode, a, b] :
         {std::tuple(-1, 100, 200), std::tuple(4, -1, 200), std::tuple(4, 100, -1), std::tuple(6, 100, 200)})
        EXPECT_EQ(instance().RotorSpeedRatio(mode, a, b), CRatio(0.0));
}

TEST_F(RotorsTest, VirtualModesAreReduced) {
    int const virtual_mode = instance().VirtModeGenerateId(4, 3);
    ASSERT_TRUE(instance().IsVirtualMode(virtual_mode));
    own.tables().Channel.Add(1, L"channel");
    own.tables().ChannelProperty.insert({1, QVChannelProperty(1, 0)});
    ASSERT_TRUE(own.Build());
    EXPECT_EQ(instance().PhysicalGear(virtual_mode, 10), 20);
    EXPECT_EQ(instance().OrderSource2Rotor(virtual_mode, 20), 200);
    EXPECT_EQ(instance().BaseOrder(virtual_mode, 10), 23.0f);
    EXPECT_EQ(instance().GearDiameter(virtual_mode, 10), 80.5f);
    EXPECT_EQ(instance().RotorSpeedSource(virtual_mode, 11, false), 70);
    EXPECT_EQ(instance().RotorSpeedSourceAppId(virtual_mode, 11, false), 900);
    EXPECT_EQ(instance().SpeedInfoOfRotor(virtual_mode, 100, false), 900);
    EXPECT_EQ(instance().FrequencyRatioToGeneratingRotor(virtual_mode, 100, 200), 5.0);
    EXPECT_EQ(instance().RotorFrequencyRelativeToSpeedSourceRotor(virtual_mode, 100, false), 0.125);
    EXPECT_EQ(instance().RotorSpeedRatio(virtual_mode, 100, 200), numeric::CRatio(15, 2));
    auto const range = instance().OrderSourceRange(virtual_mode, 1, 100, false);
    ASSERT_EQ(std::distance(range.first, range.second), 1);
    EXPECT_EQ(range.first->second.get<"referred_id">(), 11);
}

bool Same(double left, double right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

TEST(RotorsRandomTest, SameAsTheModel) {
    constexpr std::uint32_t seed = 5402;
    MessageLog messages;
    RotorWorld world(seed);
    for (int round = 0; round < 4000; ++round) {
        world.Renew();
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round << " " << world.Describe());
        auto const& model = world.model;
        auto const& instance = world.own.instance();
        for (int query = 0; query < 20; ++query) {
            int const mode = world.AnyMode();
            int const a = world.AnyId();
            int const b = world.AnyId();
            bool const reference = world.Chance();
            SCOPED_TRACE(testing::Message() << mode << " " << a << " " << b << " " << reference);
            ASSERT_EQ(instance.PhysModeId(mode), model.PhysicalMode(mode));
            ASSERT_EQ(instance.PhysicalGear(mode, a), model.PhysicalGear(mode, a));
            ASSERT_EQ(instance.OrderSource2Rotor(mode, a), model.OrderSource2Rotor(mode, a));
            ASSERT_EQ(instance.BaseOrder(mode, a), model.BaseOrder(mode, a));
            ASSERT_EQ(instance.GearDiameter(mode, a), model.GearDiameter(mode, a));
            ASSERT_EQ(instance.RotorSpeedSource(mode, a, reference),
                      model.RotorSpeedSource(mode, a, reference));
            ASSERT_EQ(instance.RotorSpeedSourceAppId(mode, a, reference),
                      model.RotorSpeedSourceAppId(mode, a, reference));
            ASSERT_EQ(instance.SpeedInfoOfRotor(mode, a, reference),
                      model.SpeedInfoOfRotor(mode, a, reference));
            ASSERT_EQ(instance.RotorSpeedAppIdSource(a), model.RotorSpeedAppIdSource(a));
            ASSERT_TRUE(
                Same(instance.FrequencyRatioToGeneratingRotor(mode, a, b), model.FrequencyRatio(mode, a, b)));
            ASSERT_TRUE(Same(instance.RotorFrequencyRelativeToSpeedSourceRotor(mode, a, reference),
                             model.FrequencyRelativeToSource(mode, a, reference)));
            auto const ratio = instance.RotorSpeedRatio(mode, a, b);
            auto const expected = model.RotorSpeedRatio(mode, a, b);
            ASSERT_EQ(ratio.numerator(), expected.numerator());
            ASSERT_EQ(ratio.denominator(), expected.denominator());
            ASSERT_TRUE(Same(ratio.value(), expected.value()));
        }
    }
}

using RotorsLoadTest = LoadTest;

TEST_F(RotorsLoadTest, FromALake) {
    MessageLog messages;
    FillLake("<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
             "<TModeProperty>: {\n 4 1 0 0 0\n}\n<TOrderSource2Rotor>: {\n 11 1 100\n 12 1 100\n}\n"
             "<TBaseOrder>: {\n 11 7\n}\n<TRotorSpeed>: {\n 1 100 0.5 1 3\n 1 70 4 0 0\n}\n"
             "<TRotorSpeedSource>: {\n 1 100 70\n}\n<TSpeedSource>: {\n 70 900\n}\n");
    CQtParamInstance const instance;
    ASSERT_TRUE(CQtParamInstance().ReadTablesFromCandidateLake());
    EXPECT_EQ(
        messages.Take(),
        (std::vector<Message>{{8, 1,
                               L"CQtRotorInfo::BuildRotor2OrderSourcesLookup(): Parameter database: No base "
                               L"order for RotorId 100 in PhysMode 1, skipping entry into "
                               L"m_rotor2OrderSources\n"}}));
    EXPECT_EQ(instance.RotorSpeedSourceAppId(4, 11, false), 900);
    EXPECT_EQ(instance.RotorFrequencyRelativeToSpeedSourceRotor(4, 11, false), 0.125);
    EXPECT_EQ(instance.BaseOrder(4, 11), 7.0f);
}

} // namespace
