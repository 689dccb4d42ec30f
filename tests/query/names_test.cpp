#include <paramdb/query/param_instance.h>

#include "name_kinds.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <thread>
#include <utility>
#include <vector>

namespace {

using names::CutMessage;
using names::Kind;
using names::Kinds;
using names::NameOfAMiss;
using names::Query;
using names::RandomName;

class NamesTest : public testing::Test {
protected:
    ~NamesTest() override { EXPECT_EQ(messages.Take(), std::vector<Message>()); }

    CQtParamInstance& instance() { return own.instance(); }
    int Id(Kind const& kind, std::wstring const& name) { return (instance().*kind.id)(name.c_str()); }
    std::wstring Name(Kind const& kind, int id) { return (instance().*kind.name)(id); }

    MessageLog messages;
    OwnDistillery own;
};

TEST_F(NamesTest, NothingIsKnownBeforeALoad) {
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        EXPECT_EQ(Id(kind, L""), -1);
        EXPECT_EQ(Id(kind, L"idle"), -1);
        for (int const id : {-1, 0, 1, Lowest, Highest}) {
            EXPECT_EQ(Name(kind, id), NameOfAMiss(kind, id));
            EXPECT_TRUE(kind.is_valid == nullptr || !(instance().*kind.is_valid)(id)) << id;
        }
        EXPECT_TRUE((instance().*kind.tree)().empty());
    }
    EXPECT_TRUE(instance().SignalUnit().empty());
    EXPECT_EQ(instance().SensorConfigName().Idx(L"idle"), -1);
    EXPECT_STREQ(instance().SensorConfigName().Name(1), L"");
    EXPECT_FALSE(instance().SensorConfigName().IsValidId(1));
    EXPECT_EQ(instance().InstrumentParamId(L"", 0), -1);
    EXPECT_STREQ(instance().InstrumentParamName(0), L"");
    EXPECT_EQ(instance().InstrumentParameterToInstrument(0), -1);
    EXPECT_EQ(instance().TriggerId(L""), -1);
    EXPECT_STREQ(instance().TriggerName(0), L"");
    EXPECT_EQ(instance().TriggerId(0), -1);
    EXPECT_EQ(instance().PhysModeId(0), -1);
    EXPECT_TRUE(instance().LearnFileName().IsEmpty());
    EXPECT_TRUE(instance().CalibFileName().IsEmpty());
    EXPECT_TRUE(instance().BaseType().IsEmpty());
    EXPECT_TRUE(instance().AliasType().IsEmpty());
}

TEST_F(NamesTest, EachKindHasItsOwnNames) {
    for (auto const& kind : Kinds) {
        auto& table = own.tables().*kind.table;
        table.Add(7, L"seven");
        table.Add(-5, L"below");
        table.Add(0, L"zero");
        table.Add(Highest, L"highest");
        table.Add(Lowest, L"lowest");
        for (auto const& other : Kinds) {
            SCOPED_TRACE(testing::Message() << kind.tag << ' ' << other.tag);
            bool const is_same = &kind == &other;
            EXPECT_EQ(Id(other, L"seven"), is_same ? 7 : -1);
            EXPECT_EQ(Id(other, L"below"), is_same ? -5 : -1);
            EXPECT_EQ(Id(other, L"zero"), is_same ? 0 : -1);
            EXPECT_EQ(Id(other, L"highest"), is_same ? Highest : -1);
            EXPECT_EQ(Id(other, L"lowest"), is_same ? Lowest : -1);
            EXPECT_EQ(Name(other, 7), is_same ? L"seven" : NameOfAMiss(other, 7));
            EXPECT_EQ(Name(other, -5), is_same ? L"below" : NameOfAMiss(other, -5));
            EXPECT_EQ(Name(other, 0), is_same ? L"zero" : NameOfAMiss(other, 0));
            EXPECT_EQ(Name(other, Highest), is_same ? L"highest" : NameOfAMiss(other, Highest));
            EXPECT_EQ(Name(other, Lowest), is_same ? L"lowest" : NameOfAMiss(other, Lowest));
            EXPECT_EQ(Name(other, 8), NameOfAMiss(other, 8));
            EXPECT_EQ((instance().*other.tree)().size(), is_same ? 5u : 0u);
            if (other.is_valid == nullptr)
                continue;
            for (int const id : {7, -5, 0, Highest, Lowest})
                EXPECT_EQ((instance().*other.is_valid)(id), is_same) << id;
            for (int const id : {8, 6, -1, -4, -6, 1, Highest - 1, Lowest + 1})
                EXPECT_FALSE((instance().*other.is_valid)(id)) << id;
        }
        table.PurgeTable();
    }
}

TEST_F(NamesTest, ARowOfMinusOneIsARow) {
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        (own.tables().*kind.table).Add(-1, L"nothing");
        EXPECT_EQ(Id(kind, L"nothing"), -1);
        // The mode of -1 is no mode, whatever the table holds.
        EXPECT_EQ(Name(kind, -1), kind.name == &Query::ModeName ? L"" : L"nothing");
        EXPECT_TRUE(kind.is_valid == nullptr || (instance().*kind.is_valid)(-1));
    }
}

TEST_F(NamesTest, NamesAreComparedByCodeUnit) {
    static constexpr std::pair<int, wchar_t const*> rows[] = {
        {1, L"abc"},     {2, L"Stra\u00DFe"}, {3, L"\xD83D\xDE00"}, {4, L"\xFFFF"},
        {5, L" blank "}, {6, L"tab\t"},       {7, L"-1"},
    };
    static constexpr wchar_t const* misses[] = {
        L"",        L"Abc",     L"ABC",    L"ab",     L"abcd",  L"abc ",         L" abc",
        L"strasse", L"Strasse", L"\xD83D", L"\xDE00", L"blank", L"\xFFFF\xFFFF", L"Stra\u00DF",
        L"tab",     L"1",       L"\uFFFE"};
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        for (auto const& [id, name] : rows)
            (own.tables().*kind.table).Add(id, name);
        for (auto const& [id, name] : rows) {
            EXPECT_EQ(Id(kind, name), id);
            EXPECT_EQ(Name(kind, id), name);
        }
        for (auto const* const name : misses)
            EXPECT_EQ(Id(kind, name), -1) << testing::PrintToString(std::wstring(name));
    }
}

TEST_F(NamesTest, AnEmptyNameIsFoundWhereARowHasIt) {
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        (own.tables().*kind.table).Add(3, L"");
        EXPECT_EQ(Id(kind, L""), 3);
        EXPECT_EQ(Name(kind, 3), NameOfAMiss(kind, 3));
        EXPECT_TRUE(kind.is_valid == nullptr || (instance().*kind.is_valid)(3));
    }
}

TEST_F(NamesTest, LongNamesAreReportedAndCut) {
    std::wstring const fits = std::wstring(198, L'n') + L"1";
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        EXPECT_EQ(Id(kind, fits + L"!"), -1);
        EXPECT_EQ(messages.Take(), (std::vector<Message>{CutMessage(fits + L"!")})) << "also of a miss";
        (own.tables().*kind.table).Add(20, fits.c_str());
        EXPECT_EQ(Id(kind, fits), 20);
        EXPECT_EQ(messages.Take(), std::vector<Message>());
        for (auto const& name : {fits + L"!", fits + L"\u00E4", fits + std::wstring(5000, L'x')}) {
            EXPECT_EQ(Id(kind, name), 20);
            EXPECT_EQ(messages.Take(), (std::vector<Message>{CutMessage(name)}));
        }
        std::wstring const other(200, L'n');
        EXPECT_EQ(Id(kind, other), -1);
        EXPECT_EQ(messages.Take(), (std::vector<Message>{CutMessage(other)}));
        EXPECT_EQ(Name(kind, 20), fits);
    }
}

TEST_F(NamesTest, OfSeveralRowsWithOneNameTheFirstReadCounts) {
    for (auto const& kind : Kinds) {
        SCOPED_TRACE(kind.tag);
        auto& table = own.tables().*kind.table;
        table.Add(9, L"twice");
        table.Add(4, L"twice");
        table.Add(4, L"late"); // the id is taken
        EXPECT_EQ(Id(kind, L"twice"), 9);
        EXPECT_EQ(Id(kind, L"late"), -1);
        EXPECT_EQ(Name(kind, 4), L"twice");
        EXPECT_EQ(Name(kind, 9), L"twice");
    }
}

TEST_F(NamesTest, RandomNamesAgainstAList) {
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        Kind const& kind = Kinds[seed % std::size(Kinds)];
        auto& table = own.tables().*kind.table;
        table.PurgeTable();
        std::vector<std::pair<int, std::wstring>> rows; // in the order of reading
        for (int count = random.Between(0, 30); count > 0; --count) {
            int const id = random.OneIn(8) ? Lowest + random.Between(0, 1) : random.Between(0, 40);
            std::wstring const name = RandomName(random);
            bool const is_new =
                std::ranges::find(rows, id, &std::pair<int, std::wstring>::first) == rows.end();
            EXPECT_EQ(table.Add(id, name.c_str()), is_new);
            if (is_new)
                rows.emplace_back(id, name.substr(0, 199));
        }
        for (int count = 0; count < 100; ++count) {
            int const id = random.OneIn(8) ? Lowest + random.Between(0, 1) : random.Between(-1, 41);
            auto const row = std::ranges::find(rows, id, &std::pair<int, std::wstring>::first);
            bool const is_named = row != rows.end() && !row->second.empty();
            EXPECT_EQ(Name(kind, id), is_named ? row->second : NameOfAMiss(kind, id)) << id;
            EXPECT_TRUE(kind.is_valid == nullptr || (instance().*kind.is_valid)(id) == (row != rows.end()))
                << id;

            std::wstring const name = RandomName(random);
            auto const named =
                std::ranges::find(rows, name.substr(0, 199), &std::pair<int, std::wstring>::second);
            EXPECT_EQ(Id(kind, name), named != rows.end() ? named->first : -1);
            EXPECT_EQ(messages.Take(),
                      name.size() < 200 ? std::vector<Message>() : std::vector<Message>{CutMessage(name)});
        }
    }
}

TEST_F(NamesTest, UnknownInstrumentsShowTheirNumber) {
    own.tables().Instrument.Add(2500, L"Spectrum");
    EXPECT_STREQ(instance().InstrumentName(2500), L"Spectrum");
    EXPECT_STREQ(instance().InstrumentName(-1), L"(Instr. -1)");
    EXPECT_STREQ(instance().InstrumentName(0), L"(Instr. 0)");
    EXPECT_STREQ(instance().InstrumentName(Highest), L"(Instr. 2147483647)");
    EXPECT_STREQ(instance().InstrumentName(Lowest), L"(Instr. -2147483648)");
    EXPECT_STREQ(instance().InstrumentName(7), L"(Instr. 7)") << "nothing is left of a longer one";
}

TEST_F(NamesTest, AGeneratedNameStaysUntilTheNextOfItsThread) {
    own.tables().Instrument.Add(2500, L"Spectrum");
    own.AddMode(4, L"Ramp", 2);
    own.tables().PhysMode.Add(2, L"Third");
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    int const interval = 2;
    int const virtual_mode =
        instance().VirtModeGenerateId(4, instance().VirtModeExtension(&interval, nullptr));

    wchar_t const* const instrument = instance().InstrumentName(17);
    wchar_t const* const mode = instance().ModeName(virtual_mode);
    EXPECT_STREQ(instance().InstrumentName(2500), L"Spectrum");
    EXPECT_STREQ(instance().ModeName(4), L"Ramp");
    EXPECT_STREQ(instance().ModeName(-1), L"");
    EXPECT_EQ(instance().InstrumentId(L"(Instr. 17)"), -1);
    std::thread([&] {
        EXPECT_STREQ(instance().InstrumentName(18), L"(Instr. 18)");
        EXPECT_STREQ(instance().ModeName(virtual_mode + (1 << 27)), L"Third-cn\u00B7350rpm");
    }).join();
    EXPECT_STREQ(instrument, L"(Instr. 17)");
    EXPECT_STREQ(mode, L"Third-cn\u00B7250rpm");
    EXPECT_EQ(instance().InstrumentName(19), instrument) << "one buffer in a thread";
    EXPECT_STREQ(instrument, L"(Instr. 19)");
    EXPECT_EQ(instance().ModeName(virtual_mode + (1 << 27)), mode);
    EXPECT_STREQ(mode, L"Third-cn\u00B7350rpm");
    EXPECT_STREQ(instrument, L"(Instr. 19)") << "each query has its own";
}

TEST_F(NamesTest, NamesInRowsStayWhereTheyAre) {
    own.tables().Channel.Add(5, L"front");
    wchar_t const* const name = instance().ChannelName(5);
    for (int id = -50; id < 50; ++id)
        own.tables().Channel.Add(id, L"other");
    EXPECT_EQ(instance().ChannelName(5), name);
    EXPECT_STREQ(name, L"front");
    EXPECT_EQ(instance().ChannelName(99), instance().LocationName(1)) << "one empty text for all";
}

TEST_F(NamesTest, ElementsOfKeys) {
    auto& tables = own.tables();
    tables.Mode.Add(1, L"mode");
    tables.Instrument.Add(1, L"instrument");
    tables.Channel.Add(1, L"channel");
    tables.Location.Add(1, L"location");
    tables.ApplicationSignal.Add(1, L"signal");
    tables.InstrumentParam.insert({1, QVInstrumentParam(9, L"parameter", 0, 0u, 0u)});
    static constexpr struct {
        int element;
        wchar_t const *of_one, *of_two;
    } cases[] = {
        {Clavis::qMode, L"mode", L""},
        {Clavis::qInstrument, L"instrument", L"(Instr. 2)"},
        {Clavis::qChannel, L"channel", L""},
        {Clavis::qLocation, L"location", L""},
        {Clavis::qInstrParam, L"parameter", L""},
        {Clavis::qSignal, L"signal", L""},
    };
    int number = 0;
    for (auto const& [element, of_one, of_two] : cases) {
        EXPECT_EQ(element, number++);
        EXPECT_STREQ(instance().ClavisElementName(element, 1), of_one);
        EXPECT_STREQ(instance().ClavisElementName(element, 2), of_two);
    }
    EXPECT_STREQ(instance().ClavisElementName(0, -1), L"");
    EXPECT_STREQ(instance().ClavisElementName(1, -1), L"(Instr. -1)");
    for (int const none : {-1, 6, 7, Lowest, Highest})
        EXPECT_EQ(instance().ClavisElementName(none, 1), nullptr) << none;

    UniqueTree const* const trees[] = {&tables.Mode,     &tables.Instrument, &tables.Channel,
                                       &tables.Location, &tables.Mode,       &tables.ApplicationSignal};
    for (unsigned int element = 0; element < std::size(trees); ++element)
        EXPECT_EQ(&instance().IdNameMap(element), trees[element]) << element;
    for (unsigned int const none : {6u, 99u, 0x80000000u, 0xFFFFFFFFu})
        EXPECT_EQ(&instance().IdNameMap(none), trees[0]) << none;
}

TEST_F(NamesTest, VirtualModesBeforeAndAfterTheyAreAdded) {
    own.AddMode(4, L"Ramp", 2);
    own.tables().PhysMode.Add(2, L"Third");
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    auto const id = [&](int interval) {
        return instance().VirtModeGenerateId(4, instance().VirtModeExtension(&interval, nullptr));
    };
    struct {
        int mode;
        wchar_t const *generated, *given; // null: under the generated name
    } const cases[] = {{id(2), L"Third-cn\u00B7250rpm", nullptr}, {id(3), L"Third-cn\u00B7350rpm", L"given"}};
    for (auto const& [mode, generated, given] : cases) {
        SCOPED_TRACE(mode);
        EXPECT_TRUE(instance().IsVirtualMode(mode));
        EXPECT_TRUE(instance().IsValidVirtualMode(mode));
        EXPECT_FALSE(instance().IsValidMode(mode));
        EXPECT_STREQ(instance().ModeName(mode), generated);
        EXPECT_STREQ(instance().ClavisElementName(Clavis::qMode, mode), generated);
        EXPECT_EQ(instance().ModeId(generated), -1);
        EXPECT_EQ(instance().PhysModeId(mode), 2);

        ASSERT_TRUE(given != nullptr ? instance().AddVModeName(mode, given) : instance().AddVMode(mode));
        wchar_t const* const name = given != nullptr ? given : generated;
        EXPECT_TRUE(instance().IsVirtualMode(mode));
        EXPECT_TRUE(instance().IsValidMode(mode));
        EXPECT_STREQ(instance().ModeName(mode), name);
        EXPECT_EQ(instance().ModeName(mode), instance().Mode().Name(mode)) << "the row's own";
        EXPECT_EQ(instance().ModeId(name), mode);
        EXPECT_EQ(instance().IdNameMap(Clavis::qMode).count(mode), 1u);
        EXPECT_EQ(instance().PhysModeId(mode), 2);
    }
    EXPECT_FALSE(instance().IsVirtualMode(4));
    EXPECT_FALSE(instance().IsVirtualMode(-1));
    EXPECT_FALSE(instance().IsValidMode(-1));
    EXPECT_EQ(instance().PhysModeId(4), 2);
    EXPECT_EQ(instance().PhysModeId(5), -1);
    EXPECT_EQ(instance().PhysModeId(-1), -1);
}

class NamesLoadTest : public LoadTest {
protected:
    void Load(std::string const& text) {
        FillLake(VersionLines + text);
        ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
        ASSERT_EQ(messages.Take(), std::vector<Message>());
    }

    MessageLog messages;
    CQtParamInstance instance;
};

TEST_F(NamesLoadTest, EachTagFeedsItsQueries) {
    std::string text;
    int id = 100;
    for (auto const& kind : Kinds) {
        std::string const name = "the name " + std::to_string(id);
        text += std::string(kind.tag) + ": {\n" + std::to_string(id) + " \"" + name + "\"\n3 common\n}\n";
        if (kind.id == &Query::ApplicationSignalId) // both tables hold the same signals
            text += "<TAppSignalProperty>: {\n3 0 x 0 1 0\n" + std::to_string(id) + " 0 x 0 1 0\n}\n";
        ++id;
    }
    text += "<TSignalUnit>: {\n3 unit\n}\n<TTpSensorConfig>: {\n5 config\n}\n";
    Load(text);
    for (int last = id, query = 100; query < last; ++query) {
        auto const& kind = Kinds[query - 100];
        SCOPED_TRACE(kind.tag);
        std::wstring const name = L"the name " + std::to_wstring(query);
        EXPECT_EQ((instance.*kind.id)(name.c_str()), query);
        EXPECT_EQ(std::wstring((instance.*kind.name)(query)), name);
        EXPECT_EQ((instance.*kind.id)(L"common"), 3);
        auto const& tree = (instance.*kind.tree)();
        ASSERT_EQ(tree.size(), 2u);
        EXPECT_EQ(tree.begin()->first, QIdx1(3));
        EXPECT_EQ(tree.rbegin()->second, QIdxName(name.c_str()));
    }
    EXPECT_EQ(instance.SignalUnit().Idx(L"unit"), 3);
    CDynNameIdTable const& configs = instance.SensorConfigName();
    EXPECT_EQ(configs.Idx(L"config"), 5);
    EXPECT_STREQ(configs.Name(5), L"config");
    EXPECT_TRUE(configs.IsValidId(5));
    EXPECT_EQ(configs.Idx(L"common"), -1);
    EXPECT_STREQ(configs.Name(3), L"");
    EXPECT_FALSE(configs.IsValidId(3));
}

TEST_F(NamesLoadTest, ParametersAndTriggers) {
    Load("<TInstrument>: {\n2500 s\n}\n"
         "<TInstrumentParam>: {\n12 2500 later 0 0 0\n6 2500 level 0 0 0\n5 1001 level 0 0 0\n}\n"
         "<TTrigger>: {\n70 ramp 0\n60 ramp 0\n}\n"
         "<TIpSpectrum>: {\n6 60 0 0 0\n}\n");
    EXPECT_EQ(instance.InstrumentParamId(L"level", 2500), 6);
    EXPECT_EQ(instance.InstrumentParamId(L"level", 1001), 5);
    EXPECT_EQ(instance.TriggerId(L"ramp"), 60);
    EXPECT_EQ(instance.TriggerId(6), 60);
    EXPECT_EQ(instance.TriggerId(60), -1);
    EXPECT_EQ(instance.TriggerId(70), -1);
    EXPECT_STREQ(instance.TriggerName(instance.TriggerId(6)), L"ramp");
}

TEST_F(NamesLoadTest, OfTwoLinesWithOneNameTheFirstCounts) {
    Load("<TLocation>: {\n9 twice\n4 twice\n1 other\n}\n");
    EXPECT_EQ(instance.LocationId(L"twice"), 9);
    EXPECT_STREQ(instance.LocationName(4), L"twice");
    Load("<TLocation>: {\n4 twice\n9 twice\n}\n");
    EXPECT_EQ(instance.LocationId(L"twice"), 4);
    EXPECT_EQ(instance.LocationId(L"other"), -1) << "nothing is left of the load before";
    instance.PurgeTables();
    EXPECT_EQ(instance.LocationId(L"twice"), -1);
    EXPECT_STREQ(instance.LocationName(4), L"");
    EXPECT_FALSE(instance.IsValidLocation(4));
}

} // namespace
