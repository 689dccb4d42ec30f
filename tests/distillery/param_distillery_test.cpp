#include <paramdb/distillery/param_distillery.h>

#include "derivation_support.h"
#include "load_data.h"

#include <tests/support/sources.h>

using derivation::Random;
using ParamDb::CDbTableSet;

namespace {

using Messages = std::vector<Message>;

enum class Source { Lake, TableSet };

// Loads from either source into distilleries of the test's own.
class OwnLoads : public LoadTest {
protected:
    static bool LoadFrom(Source source, CQtParamDistillery& target, CDbTableSet const& data) {
        CParameterLake::Lake().clear();
        ParamDb::CParameterTableSet::TableSet().clear();
        if (source == Source::Lake)
            FillLake(derivation::LakeText(data));
        else
            ParamDb::CParameterTableSet::TableSet() = data;
        return target.ReadTablesFromCandidateLake();
    }

    MessageLog messages;
};

class LoadSequence : public OwnLoads, public testing::WithParamInterface<Source> {
protected:
    static bool Load(CQtParamDistillery& target, CDbTableSet const& data) {
        return LoadFrom(GetParam(), target, data);
    }

    // A load that goes through, with something of everything that a later one may leave as it is.
    void LoadGood() {
        CDbTableSet data = derivation::Versions();
        data[L"<TMode>"] = {{1, L"good mode"}};
        data[L"<TChannel>"] = {{4, L"good channel"}};
        data[L"<QType><FBaseName>"] = {{L"good"}};
        Signals(data, {{11, 4}});
        ASSERT_TRUE(Load(distillery, data));
        ASSERT_TRUE(distillery.Initialized());
        ASSERT_EQ(CQtParamDistillery::TimeSignalId(), 11);
        ASSERT_EQ(messages.Take(), Messages());
    }

    // Both signal tables: id and type.
    static void Signals(CDbTableSet& data, std::vector<std::pair<int, int>> const& signals) {
        for (auto const& [id, type] : signals) {
            data[L"<TApplicationSignal>"].push_back({id, L"s" + std::to_wstring(id)});
            data[L"<TAppSignalProperty>"].push_back({id, type, L"Hz", 1.0f, 2, 3});
        }
    }
    // Data with another mode, another channel, another text and another time signal than the good.
    static CDbTableSet OtherData() {
        CDbTableSet data = derivation::Versions();
        data[L"<TMode>"] = {{2, L"new mode"}};
        data[L"<TChannel>"] = {{5, L"new channel"}};
        data[L"<TErrorGroup>"] = {{1, 9, 0, L"a", L"b"}};
        data[L"<QType><FBaseName>"] = {{L"new"}};
        Signals(data, {{12, 4}});
        return data;
    }
    static Message Incongruent() {
        return {
            8, 3,
            L"CQtParamDistillery::CheckIntegrity(): Tables 'ApplicationSignal' and 'AppSignalProperty' are "
            L"incongruent\n"};
    }
    int ResultCode() { return distillery.Tables().SeverityProperty.front().second.get<"result_code">(); }

    CQtParamDistillery distillery;
    CQtParamInstance instance{&distillery};
};

std::string NameOf(testing::TestParamInfo<Source> const& source) {
    return source.param == Source::Lake ? "Lake" : "TableSet";
}

INSTANTIATE_TEST_SUITE_P(Sources, LoadSequence, testing::Values(Source::Lake, Source::TableSet), NameOf);

TEST_P(LoadSequence, StartsUninitialized) {
    EXPECT_FALSE(distillery.Initialized());
    EXPECT_FALSE(instance.Initialized());
}

TEST_P(LoadSequence, GoesThroughWithVersionsAlone) {
    EXPECT_TRUE(Load(distillery, derivation::Versions()));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(CQtParamDistillery::TimeSignalId(), -1);
    EXPECT_EQ(messages.Take(), Messages());
}

struct SignalCase {
    std::vector<int> signals;
    std::vector<int> properties;
    bool congruent;
};

TEST_P(LoadSequence, SignalTablesMustHoldTheSameIds) {
    SignalCase const cases[] = {
        {{}, {}, true},
        {{1}, {1}, true},
        {{1, 2, 3}, {3, 1, 2}, true}, // in the order of their keys
        {{1, 1, 2}, {1, 2, 2}, true}, // a key that comes twice counts once
        {{-1, -7}, {-7, -1}, true},
        {{1}, {}, false},
        {{}, {1}, false},
        {{1}, {2}, false},
        {{1, 2}, {1}, false},
        {{1}, {1, 2}, false},
        {{1, 2, 3}, {1, 4, 3}, false},
        {{0, 1, 2}, {1, 2, 3}, false},
    };
    for (SignalCase const& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.signals) + testing::PrintToString(test.properties));
        CQtParamDistillery target;
        CDbTableSet data = derivation::Versions();
        for (int const id : test.signals)
            data[L"<TApplicationSignal>"].push_back({id, L"s" + std::to_wstring(id)});
        for (int const id : test.properties)
            data[L"<TAppSignalProperty>"].push_back({id, 0, L"", 0.0f, 0, 0});
        EXPECT_EQ(Load(target, data), test.congruent);
        EXPECT_EQ(target.Initialized(), test.congruent);
        EXPECT_EQ(messages.Take(), test.congruent ? Messages() : Messages{Incongruent()});
    }
}

TEST_P(LoadSequence, TheTimeSignalIsTheLowestOfItsType) {
    std::pair<std::vector<std::pair<int, int>>, int> const cases[] = {
        {{}, -1},
        {{{5, 4}}, 5},
        {{{5, 3}, {6, 5}, {7, 0}, {4, -4}}, -1},
        {{{9, 4}, {3, 1}, {7, 4}, {8, 4}}, 7},
        {{{0, 4}, {-3, 4}}, -3},
        {{{5, 1}}, -1},
    };
    for (auto const& [signals, expected] : cases) {
        CDbTableSet data = derivation::Versions();
        Signals(data, signals);
        EXPECT_TRUE(Load(distillery, data));
        EXPECT_EQ(CQtParamInstance::TimeSignalId(), expected);
    }
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_P(LoadSequence, TheTimeSignalIsOneForTheProcess) {
    LoadGood();
    CQtParamDistillery other;
    EXPECT_TRUE(Load(other, OtherData()));
    EXPECT_EQ(CQtParamDistillery::TimeSignalId(), 12);
}

TEST_P(LoadSequence, ARefusedVersionLeavesEverything) {
    LoadGood();
    auto const state = derivation::State(distillery);
    CDbTableSet data = OtherData();
    data[L"<DbDesign.CacheVersion>"] = {{217}};
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_EQ(derivation::State(distillery), state);
    EXPECT_TRUE(distillery.Initialized());
    auto const told = messages.Take();
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(told[0].category, 8);
    EXPECT_EQ(told[0].style, 4);
}

TEST_P(LoadSequence, AnEmptySourceLeavesEverything) {
    LoadGood();
    auto const state = derivation::State(distillery);
    EXPECT_FALSE(Load(distillery, {}));
    EXPECT_EQ(derivation::State(distillery), state);
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_P(LoadSequence, AfterIncongruentSignalsTablesAndTextsAreNew) {
    CDbTableSet data = OtherData();
    data[L"<TAppSignalProperty>"].push_back({13, 0, L"", 0.0f, 0, 0});
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_FALSE(distillery.Initialized());
    messages.Take();
    LoadGood();
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(instance.BaseType(), L"new");
    EXPECT_STREQ(distillery.Tables().Mode.Name(2), L"new mode");
    EXPECT_FALSE(distillery.Tables().Mode.IsValidId(1));
    EXPECT_EQ(CQtParamDistillery::TimeSignalId(), 11);
    EXPECT_EQ(instance.BaseChannel(1, 4), 4); // derived by the load before
    EXPECT_EQ(instance.BaseChannel(2, 5), 0);
    EXPECT_EQ(ResultCode(), 9);
    EXPECT_EQ(messages.Take(), (Messages{Incongruent()}));
}

TEST_P(LoadSequence, AfterAFailedDerivationTablesTextsAndTimeSignalAreNew) {
    CDbTableSet data = OtherData();
    data[L"<TAutoModeParam>"] = {{12, 0.0f, 2000000000.0f, 0.25f, 1.0f, 0.0f, 1.0f, 0, 1.0f, 1u}};
    data[L"<TAutoModeParamOrder>"] = {{1, 12}};
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_FALSE(distillery.Initialized());
    messages.Take();
    LoadGood();
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(instance.BaseType(), L"new");
    EXPECT_STREQ(distillery.Tables().Mode.Name(2), L"new mode");
    EXPECT_EQ(CQtParamDistillery::TimeSignalId(), 12);
    EXPECT_EQ(distillery.DerivedInfo().ChannelInfo().BaseChannel(2, 5), 5);
    EXPECT_EQ(ResultCode(), 9); // refinement has not run
    EXPECT_EQ(messages.Take(),
              (Messages{{16, 3, L"CQtModeInfo: Not enough bits to encode virtual modes\n"}}));
}

TEST_P(LoadSequence, AfterAFailedRefinementAllButTheFlagIsNew) {
    CDbTableSet data = OtherData();
    data[L"<TRelativeLimit>"] = {{1, 2, 3, 4, 5, 6, 1.0f, 2.0f}};
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_FALSE(distillery.Initialized());
    LoadGood();
    EXPECT_FALSE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(instance.BaseType(), L"new");
    EXPECT_STREQ(distillery.Tables().Mode.Name(2), L"new mode");
    EXPECT_EQ(CQtParamDistillery::TimeSignalId(), 12);
    EXPECT_EQ(instance.BaseChannel(2, 5), 5);
    EXPECT_EQ(ResultCode(), 9); // it had not come so far
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_P(LoadSequence, RefinementIsPartOfTheLoad) {
    CDbTableSet data = OtherData();
    data[L"<TInstrument>"] = {{2500, L"Spectrum"}};
    data[L"<TInstrumentParam>"] = {{5, 2500, L"p", 0, 0u, 0u}};
    data[L"<TRelativeLimit>"] = {{1, 2, 3, 4, 5, 6, 1.0f, 2.0f}};
    data[L"<TIpSpectrum>"] = {{5, 1, 3, 500.0f, 0}};
    data[L"<TIpModSpectrogram>"] = {{5, 1, 2, 500.0f, 0}};
    data[L"<TIpSgSection>"] = {{5, 1, L"d", 2, 3, 4, 3}};
    EXPECT_TRUE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(distillery.Tables().RelativeLimit.front().first, QClavis(1, 2500, 3, 4, 5, 6));
    EXPECT_EQ(ResultCode(), 3);
    EXPECT_EQ(distillery.Tables().IpSpectrum.front().second.get<"accumulation">(), 21);
    EXPECT_EQ(distillery.Tables().IpModSpectrogram.front().second.get<"accumulation">(), 20);
    EXPECT_EQ(distillery.Tables().IpSgSection.front().second.get<"accumulation">(), 21);
    EXPECT_EQ(
        messages.Take(),
        (Messages{{8, 4,
                   L"CQtParamDistillery::RefineDatabaseTables(): illegal result code 9, set to 3 ('System "
                   L"error')\n"},
                  {8, 3,
                   L"CQtParamDistillery::RefineDatabaseTables(): exponential decay 500.000000 found for "
                   L"instrument 'Spectrum', parameter 'p', treated as infinity\n"}}));
}

TEST_P(LoadSequence, DerivationReportsBeforeRefinement) {
    CDbTableSet data = OtherData();
    data[L"<TChannelInheritance>"] = {{5, -1, 5}};
    EXPECT_TRUE(Load(distillery, data));
    auto const told = messages.Take();
    ASSERT_EQ(told.size(), 2u);
    EXPECT_EQ(told[0].text, L"CQtChannelInfo::Build(): cyclic channel inheritance in mode 2: 5 -> 5\n");
    EXPECT_TRUE(told[1].text.starts_with(L"CQtParamDistillery::RefineDatabaseTables(): illegal"));
}

TEST_P(LoadSequence, ACycleDoesNotFailALoad) {
    CDbTableSet data = derivation::Versions();
    data[L"<TMode>"] = {{1, L"m"}};
    data[L"<TChannel>"] = {{1, L"a"}, {2, L"b"}, {3, L"c"}};
    data[L"<TChannelInheritance>"] = {{1, -1, 2}, {2, -1, 3}, {3, -1, 2}};
    EXPECT_TRUE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(instance.BaseChannel(1, 1), 3);
    EXPECT_EQ(instance.BaseChannel(1, 2), 3);
    EXPECT_EQ(instance.BaseChannel(1, 3), 2);
    EXPECT_EQ(
        messages.Take(),
        (Messages{{8, 3, L"CQtChannelInfo::Build(): cyclic channel inheritance in mode 1: 2 -> 3 -> 2\n"}}));
}

TEST_P(LoadSequence, ABadRowDoesNotFailALoad) {
    CDbTableSet data = derivation::Versions();
    data[L"<TChannelProperty>"] = {{L"x", 1u, 2}, {7, 1u, 2}};
    EXPECT_TRUE(Load(distillery, data));
    EXPECT_TRUE(distillery.Initialized());
    EXPECT_EQ(distillery.Tables().ChannelProperty.size(), 1u);
    EXPECT_GE(messages.Take().size(), 1u);
}

// One distillery takes one file after the other, and each time a new one takes that file alone.
TEST_P(LoadSequence, ALoadLeavesTheSameWhateverCameBefore) {
    constexpr unsigned rounds = 250;
    bool initialized = false;
    std::size_t good = 0;
    for (unsigned seed = 0; seed < rounds; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        CDbTableSet const data = derivation::RandomData(random);
        CQtParamDistillery fresh;
        bool const fresh_result = Load(fresh, data);
        auto const fresh_messages = messages.Take();
        auto const fresh_state = derivation::State(fresh);
        EXPECT_EQ(fresh.Initialized(), fresh_result);

        EXPECT_EQ(Load(distillery, data), fresh_result);
        EXPECT_EQ(messages.Take(), fresh_messages);
        EXPECT_EQ(derivation::State(distillery), fresh_state);
        initialized = initialized || fresh_result;
        EXPECT_EQ(distillery.Initialized(), initialized);
        if (HasFailure())
            return;
        good += fresh_result ? 1 : 0;
    }
    EXPECT_GT(good, rounds / 2);
    EXPECT_LT(good, rounds);
}

TEST_P(LoadSequence, AFailedLoadLeavesNoTraceInTheNext) {
    CDbTableSet bad = OtherData();
    bad[L"<TAppSignalProperty>"].clear();
    for (unsigned seed = 1000; seed < 1030; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        CDbTableSet const first = derivation::RandomData(random);
        CDbTableSet const second = derivation::RandomData(random);
        CQtParamDistillery used;
        Load(used, first);
        EXPECT_FALSE(Load(used, bad));
        Load(used, second);
        CQtParamDistillery fresh;
        Load(fresh, second);
        EXPECT_EQ(derivation::State(used), derivation::State(fresh));
    }
}

TEST_F(OwnLoads, BothSourcesLeaveTheSame) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Random random(seed);
        CDbTableSet const data = derivation::RandomData(random);
        CQtParamDistillery from_lake;
        CQtParamDistillery from_set;
        bool const lake_result = LoadFrom(Source::Lake, from_lake, data);
        auto const lake_messages = messages.Take();
        EXPECT_EQ(LoadFrom(Source::TableSet, from_set, data), lake_result);
        EXPECT_EQ(messages.Take(), lake_messages);
        EXPECT_EQ(derivation::State(from_set), derivation::State(from_lake));
        if (HasFailure())
            return;
    }
}

} // namespace
