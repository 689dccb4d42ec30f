#include <paramdb/platform/sea/sea_base.h>
#include <paramdb/query/param_instance.h>

#include <bitset>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/support/extremes.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <vector>

namespace {

constexpr auto Never = CQtParamInstance::show_id_never;
constexpr auto Always = CQtParamInstance::show_id_always;
constexpr auto IfUnnamed = CQtParamInstance::show_id_if_unnamed;

using Mask = std::bitset<Clavis::ElementCount>;

SClavis Plain(QClavis const& key) {
    SClavis plain;
    for (std::size_t element = 0; element < key.size(); ++element)
        plain.elements[element] = key[element];
    return plain;
}

class KeyTextTest : public testing::Test {
protected:
    KeyTextTest() {
        CSeaBase::MessagesSea().Clear();
        CParamTables& tables = own.tables();
        tables.Mode.Add(1, L"idle");
        tables.Instrument.Add(1001, L"Level");
        tables.Instrument.Add(2500, L"Spectrum");
        tables.Instrument.Add(7, L"");
        tables.Channel.Add(3, L"mic");
        tables.Location.Add(4, L"rear");
        tables.ApplicationSignal.Add(6, L"speed");
        AddParameter(50, 1001, L"only");
        AddParameter(60, 2500, L"order");
        AddParameter(61, 2500, L"");
        AddParameter(70, 8, L"lonely");
        AddParameter(80, 9, L"left");
        AddParameter(81, 9, L"right");
    }
    ~KeyTextTest() override {
        CSeaBase::MessagesSea().Clear();
        EXPECT_EQ(messages.Take(), std::vector<Message>());
    }

    CQtParamInstance& instance() { return own.instance(); }
    void AddParameter(int parameter, int instrument, wchar_t const* name) {
        own.tables().InstrumentParam.insert({parameter, QVInstrumentParam(instrument, name, 0, 0u, 0u)});
    }
    void AddChannel(int channel, unsigned int type) {
        own.tables().ChannelProperty.insert({channel, QVChannelProperty(type, 0)});
    }

    // Every form gives the same.
    void ExpectText(QClavis const& key, CQtParamInstance::show_id_t rule, Mask mask,
                    wchar_t const* expected) {
        EXPECT_STREQ(instance().FormatClavisText(key, rule, mask), expected);
        EXPECT_STREQ(instance().FormatClavisText(key.ToClavis(), rule, mask), expected);
        EXPECT_STREQ(instance().FormatClavisText(Plain(key), rule, mask), expected);
    }
    void ExpectText(QClavis const& key, Mask mask, wchar_t const* expected) {
        EXPECT_STREQ(instance().FormatClavisText(key, mask), expected);
        EXPECT_STREQ(instance().FormatClavisText(key.ToClavis(), mask), expected);
        EXPECT_STREQ(instance().FormatClavisText(Plain(key), mask), expected);
    }
    void ExpectNice(QClavis const& key, bool both, wchar_t const* separator, std::wstring const& expected) {
        EXPECT_EQ(std::wstring(instance().FormatClavisTextNice(key, both, separator)), expected);
        EXPECT_EQ(std::wstring(instance().FormatClavisTextNice(key.ToClavis(), both, separator)), expected);
    }
    void ExpectInstrParam(int instrument, int parameter, wchar_t const* expected) {
        CString out = L"what was there before, which is longer than any of the texts that come";
        wchar_t const* const text = instance().FormatInstrParamText(out, instrument, parameter);
        EXPECT_STREQ(text, expected);
        EXPECT_EQ(text, out.GetString()) << "not the text of the argument";
        QClavis const key(9, instrument, 9, 9, parameter, 9);
        CString of_key;
        wchar_t const* const text_of_key = instance().FormatInstrParamText(of_key, key);
        EXPECT_STREQ(text_of_key, expected);
        EXPECT_EQ(text_of_key, of_key.GetString());
    }
    void ExpectLocaChan(int location, int channel, bool both, wchar_t const* expected) {
        CString out = L"what was there before";
        wchar_t const* const text = instance().FormatLocaChanText(out, location, channel, both);
        EXPECT_STREQ(text, expected);
        EXPECT_EQ(text, out.GetString()) << "not the text of the argument";
        QClavis const key(9, 9, channel, location, 9, 9);
        CString of_key;
        wchar_t const* const text_of_key = instance().FormatLocaChanText(of_key, key, both);
        EXPECT_STREQ(text_of_key, expected);
        EXPECT_EQ(text_of_key, of_key.GetString());
    }

    MessageLog messages;
    OwnDistillery own;
};

constexpr Mask All = 63;
constexpr Mask ModeAlone = 1;
constexpr Mask ChannelAlone = 4;

TEST_F(KeyTextTest, RulesAndMasks) {
    QClavis const none(-1, -1, -1, -1, -1, -1);
    QClavis const known(1, 2500, 3, 4, 60, 6);
    QClavis const unknown(100, 101, 102, 103, 104, 105);
    QClavis const mixed(1, -1, 102, 4, 61, Lowest);
    struct {
        QClavis const& key;
        CQtParamInstance::show_id_t rule;
        Mask mask;
        wchar_t const* text;
    } const cases[] = {
        {none, Never, All, L"(Nil) / (Nil) / (Nil) / (Nil) / (Nil) / (Nil)"},
        {none, IfUnnamed, All, L"(Nil) / (Nil) / (Nil) / (Nil) / (Nil) / (Nil)"},
        {none, Always, All, L"(Nil) [-1] / (Nil) [-1] / (Nil) [-1] / (Nil) [-1] / (Nil) [-1] / (Nil) [-1]"},
        {known, Never, All, L"idle / Spectrum / mic / rear / order / speed"},
        {known, IfUnnamed, All, L"idle / Spectrum / mic / rear / order / speed"},
        {known, Always, All, L"idle [1] / Spectrum [2500] / mic [3] / rear [4] / order [60] / speed [6]"},
        {unknown, Never, All, L"(Instr. 101) /  /  /  / "},
        {unknown, IfUnnamed, All, L"[100] / (Instr. 101) / [102] / [103] / [104] / [105]"},
        {unknown, Always, All, L"[100] / (Instr. 101) [101] / [102] / [103] / [104] / [105]"},
        {mixed, Never, All, L"idle / (Nil) /  / rear /  / "},
        {mixed, IfUnnamed, All, L"idle / (Nil) / [102] / rear / [61] / [-2147483648]"},
        {mixed, Always, All, L"idle [1] / (Nil) [-1] / [102] / rear [4] / [61] / [-2147483648]"},
        // Masks.
        {known, Always, Mask(), L""},
        {known, Never, ChannelAlone, L"mic"},
        {known, Always, ChannelAlone, L"mic [3]"},
        {known, Never, Mask(0b000011), L"idle / Spectrum"},
        {known, Never, Mask(0b110000), L"order / speed"},
        {known, Never, Mask(0b101010), L"Spectrum / rear / speed"},
        {known, IfUnnamed, Mask(0b100001), L"idle / speed"},
        // Nothing stands before the first text, and so no separator.
        {unknown, Never, ModeAlone, L""},
        {unknown, Never, ChannelAlone, L""},
        {unknown, Never, Mask(0b111100), L""},
        {unknown, Never, Mask(0b000111), L"(Instr. 101) / "},
        {mixed, Never, Mask(0b001100), L"rear"},
        {mixed, Never, Mask(0b111000), L"rear /  / "},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::Message() << "rule " << test.rule << " mask " << test.mask);
        ExpectText(test.key, test.rule, test.mask, test.text);
    }
    EXPECT_EQ(Never, 0);
    EXPECT_EQ(Always, 1);
    EXPECT_EQ(IfUnnamed, 2);
}

TEST_F(KeyTextTest, AnEmptyInstrumentNameShowsItsNumber) {
    QClavis const key(1, 7, 3, 4, 60, 6);
    ExpectText(key, IfUnnamed, Mask(2), L"(Instr. 7)");
    ExpectText(key, Always, Mask(2), L"(Instr. 7) [7]");
}

TEST_F(KeyTextTest, MinusOneReadsNilAlsoWhereThereIsARow) {
    own.tables().Channel.Add(-1, L"never shown");
    AddParameter(-1, 5, L"nor this");
    ExpectText(QClavis(-1, -1, -1, -1, -1, -1), Never, All, L"(Nil) / (Nil) / (Nil) / (Nil) / (Nil) / (Nil)");
}

TEST_F(KeyTextTest, TheSwitchOfTheDialogsPicksTheRule) {
    QClavis const key(1, 2500, 102, -1, 61, 6);
    wchar_t const* const without = L"idle / Spectrum / [102] / (Nil) / [61] / speed";
    wchar_t const* const with = L"idle [1] / Spectrum [2500] / [102] / (Nil) [-1] / [61] / speed [6]";
    EXPECT_FALSE(CQtParamInstance::ShowIdsInDialogs()) << "off while nobody has set it";
    ExpectText(key, All, without);
    CQtParamInstance::ShowIdsInDialogs(true);
    EXPECT_TRUE(CQtParamInstance::ShowIdsInDialogs());
    EXPECT_TRUE(CSeaBase::MessagesSea().LookupGetBool(L"ShowIdsInDialogs", 0, false));
    ExpectText(key, All, with);
    ExpectText(key, ChannelAlone, L"[102]");
    ExpectText(key, ModeAlone, L"idle [1]");
    ExpectText(key, IfUnnamed, All, without);
    ExpectText(key, Never, ModeAlone, L"idle");
    ExpectNice(key, false, L"/", L"idle / Spectrum  /  / speed");
    CQtParamInstance::ShowIdsInDialogs(false);
    EXPECT_FALSE(CQtParamInstance::ShowIdsInDialogs());
    ExpectText(key, All, without);
}

TEST_F(KeyTextTest, InstrumentWithParameter) {
    struct {
        int instrument, parameter;
        wchar_t const* text;
    } const cases[] = {
        {1001, 50, L"Level"}, // a single parameter goes without saying
        {1001, 60, L"Level"}, // also a foreign one
        {1001, -1, L"Level"},
        {2500, 60, L"Spectrum order"},
        {2500, 50, L"Spectrum only"}, // a foreign one
        {2500, 61, L"Spectrum "},     // one without name
        {2500, 99, L"Spectrum "},
        {2500, -1, L"Spectrum "},
        // The instrument through the parameter.
        {-1, 50, L"Level"},
        {-1, 60, L"Spectrum order"},
        {-1, 61, L"Spectrum "},
        {-1, 70, L"(Instr. 8)"},
        {-1, 81, L"(Instr. 9) right"},
        {-1, 99, L"(Instr. -1)"},
        {-1, -1, L"(Instr. -1)"},
        // Instruments without name or parameter.
        {7, 50, L"(Instr. 7)"},
        {8, 70, L"(Instr. 8)"},
        {9, 80, L"(Instr. 9) left"},
        {0, 0, L"(Instr. 0)"},
        {Lowest, 60, L"(Instr. -2147483648)"},
        {Highest, Highest, L"(Instr. 2147483647)"},
    };
    for (auto const& [instrument, parameter, text] : cases) {
        SCOPED_TRACE(testing::Message() << instrument << ' ' << parameter);
        ExpectInstrParam(instrument, parameter, text);
    }
}

TEST_F(KeyTextTest, ParametersOfNoInstrumentAreCountedAsOthers) {
    AddParameter(90, -1, L"stray");
    ExpectInstrParam(-1, 90, L"(Instr. -1)");
    AddParameter(91, -1, L"other");
    ExpectInstrParam(-1, 90, L"(Instr. -1) stray");
    ExpectInstrParam(-1, 99, L"(Instr. -1) ");
}

TEST_F(KeyTextTest, ANewParameterCountsAtOnce) {
    ExpectInstrParam(1001, 50, L"Level");
    AddParameter(51, 1001, L"second");
    ExpectInstrParam(1001, 50, L"Level only");
    own.tables().InstrumentParam.erase(own.tables().InstrumentParam.find(51));
    ExpectInstrParam(1001, 50, L"Level");
}

// A channel of each type, N channels of its type, and the flags of the location, if it has a row.
TEST_F(KeyTextTest, LocationWithChannel) {
    using Flags = std::optional<unsigned int>;
    Flags const no_row;
    struct {
        Flags type; // of the channel
        int count;  // of the rows with that type
        Flags flags;
        wchar_t const *without, *with_both;
    } const cases[] = {
        // Fixed.
        {4u, 1, no_row, L"rear", L"rear"},
        {4u, 1, 0u, L"mic", L"mic"},
        {4u, 1, 3u, L"mic", L"mic"},
        {4u, 1, 8u, L"mic", L"mic"},
        {4u, 1, 0xFFFFFFFB, L"mic", L"mic"},
        {4u, 1, 4u, L"rear", L"rear"},
        {4u, 1, 7u, L"rear", L"rear"},
        {4u, 1, 0xFFFFFFFF, L"rear", L"rear"},
        {4u, 2, no_row, L"rear (mic)", L"rear (mic)"},
        {4u, 2, 0u, L"rear (mic)", L"rear (mic)"},
        {4u, 3, 4u, L"rear (mic)", L"rear (mic)"},
        {5u, 1, 0u, L"mic", L"mic"},
        {5u, 2, 0u, L"rear (mic)", L"rear (mic)"},
        {6u, 1, no_row, L"rear", L"rear"},
        {6u, 2, 4u, L"rear (mic)", L"rear (mic)"},
        {7u, 1, 0u, L"mic", L"mic"},
        {7u, 1, 4u, L"rear", L"rear"},
        {7u, 2, no_row, L"rear (mic)", L"rear (mic)"},
        {0xFFFFFFFF, 1, 0u, L"mic", L"mic"},
        {0xFFFFFFFF, 2, 0u, L"rear (mic)", L"rear (mic)"},
        // Of no kind, with a row and without.
        {0u, 1, no_row, L"rear", L"rear"},
        {0u, 1, 0u, L"mic", L"mic"},
        {0u, 1, 4u, L"rear", L"rear"},
        {0u, 2, 0u, L"rear (mic)", L"rear (mic)"},
        {no_row, 0, no_row, L"rear", L"rear"},
        {no_row, 0, 0u, L"mic", L"mic"},
        {no_row, 1, 0u, L"mic", L"mic"},
        {no_row, 1, 4u, L"rear", L"rear"},
        {no_row, 2, 0u, L"rear (mic)", L"rear (mic)"},
        {no_row, 2, no_row, L"rear (mic)", L"rear (mic)"},
        // Mix.
        {2u, 1, no_row, L"mic", L"mic (rear)"},
        {2u, 1, 0u, L"mic", L"mic (rear)"},
        {2u, 1, 4u, L"mic", L"mic (rear)"},
        {2u, 2, no_row, L"mic (rear)", L"mic (rear)"},
        {2u, 2, 4u, L"mic (rear)", L"mic (rear)"},
        {3u, 1, 0u, L"mic", L"mic (rear)"},
        {3u, 2, 0u, L"mic (rear)", L"mic (rear)"},
        {10u, 1, no_row, L"mic", L"mic (rear)"},
        {0xFFFFFFFB, 1, no_row, L"mic", L"mic (rear)"},
        // Synchronous, and what else there may be.
        {1u, 1, no_row, L"rear mic", L"rear mic"},
        {1u, 1, 0u, L"rear mic", L"rear mic"},
        {1u, 1, 4u, L"rear mic", L"rear mic"},
        {1u, 2, 0u, L"rear mic", L"rear mic"},
        {8u, 1, 0u, L"rear mic", L"rear mic"},
        {0x80000001, 2, no_row, L"rear mic", L"rear mic"},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::Message() << &test - cases << ": type " << test.type.value_or(0) << ", "
                                        << test.count << " channels, flags " << test.flags.value_or(999));
        own.tables().ChannelProperty.clear();
        own.tables().LocationProperty.clear();
        int more = test.count;
        if (test.type) {
            AddChannel(3, *test.type);
            --more;
        }
        for (int channel = 100; more > 0; --more, ++channel)
            AddChannel(channel, test.type.value_or(0));
        // Channels of other types do not count.
        for (unsigned int const other : {0u, 1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u})
            if (other != test.type.value_or(0))
                for (int const channel : {200, 300})
                    AddChannel(channel + static_cast<int>(other), other);
        if (test.flags)
            own.tables().LocationProperty.insert({4, QVLocationProperty(*test.flags, 0, 0)});
        ExpectLocaChan(4, 3, false, test.without);
        ExpectLocaChan(4, 3, true, test.with_both);
    }
}

TEST_F(KeyTextTest, LocationsAndChannelsWithoutName) {
    AddChannel(3, 2);
    AddChannel(103, 1);
    AddChannel(104, 4);
    AddChannel(105, 4);
    struct {
        int location, channel;
        wchar_t const *without, *with_both;
    } const cases[] = {
        {-1, 3, L"mic", L"mic ()"},   {99, 3, L"mic", L"mic ()"}, {99, 99, L"", L""},
        {4, 103, L"rear ", L"rear "}, {99, 103, L" ", L" "},      {4, 104, L"rear ()", L"rear ()"},
        {99, 105, L" ()", L" ()"},    {4, -1, L"rear", L"rear"},  {-1, -1, L"", L""},
        {Lowest, Highest, L"", L""},
    };
    for (auto const& test : cases) {
        SCOPED_TRACE(testing::Message() << test.location << ' ' << test.channel);
        ExpectLocaChan(test.location, test.channel, false, test.without);
        ExpectLocaChan(test.location, test.channel, true, test.with_both);
    }
}

TEST_F(KeyTextTest, NiceTexts) {
    AddChannel(3, 2);
    AddChannel(103, 1);
    struct {
        QClavis key;
        bool both;
        wchar_t const *separator, *text;
    } const cases[] = {
        {{1, 2500, 3, 4, 60, 6}, false, L"/", L"idle / Spectrum order / mic / speed"},
        {{1, 2500, 3, 4, 60, 6}, true, L"/", L"idle / Spectrum order / mic (rear) / speed"},
        {{1, 1001, 103, 4, 50, 6}, true, L"|", L"idle | Level | rear mic | speed"},
        {{1, -1, 3, 4, 61, 6}, false, L"", L"idle  Spectrum   mic  speed"},
        {{1, -1, 3, 4, 81, 6},
         false,
         L" \u00B7 ",
         L"idle  \u00B7  (Instr. 9) right  \u00B7  mic  \u00B7  speed"},
        {{-1, -1, -1, -1, -1, -1}, true, L"/", L"(Nil) / (Instr. -1) /  / (Nil)"},
        {{100, 101, 102, 103, 104, 105}, false, L"/", L" / (Instr. 101) /  / "},
        {{1, 2500, 3, 4, 60, -1}, false, L"%s", L"idle %s Spectrum order %s mic %s (Nil)"},
    };
    own.tables().Channel.Add(103, L"mic");
    for (auto const& [key, both, separator, text] : cases)
        ExpectNice(key, both, separator, text);
}

TEST_F(KeyTextTest, NiceTextsAreCutBehind499Characters) {
    QClavis const key(1, 2500, 3, 4, 60, 6);
    AddChannel(3, 2);
    std::wstring const rest = L"Spectrum order";
    for (std::size_t const length : {1u,   150u, 151u, 152u, 153u, 154u, 155u, 156u, 160u, 200u, 240u,
                                     485u, 490u, 491u, 492u, 493u, 494u, 495u, 499u, 500u, 3000u}) {
        SCOPED_TRACE(length);
        std::wstring const separator(length, L'=');
        std::wstring const between = L" " + separator + L" ";
        std::wstring const whole =
            L"idle" + between + L"Spectrum order" + between + L"mic" + between + L"speed";
        ExpectNice(key, false, separator.c_str(), whole.substr(0, 499));
    }
    // A name is cut as any other text, the longest ones together too.
    std::wstring const longest(199, L'n');
    own.tables().Mode.Add(2, longest.c_str());
    own.tables().Instrument.Add(30, longest.c_str());
    AddParameter(31, 30, longest.c_str());
    AddParameter(32, 30, L"b");
    own.tables().Channel.Add(33, longest.c_str());
    own.tables().Location.Add(34, longest.c_str());
    AddChannel(33, 1);
    ExpectNice(QClavis(2, 30, 33, 34, 31, 6), false, L"/",
               longest + L" / " + longest + L" " + std::wstring(97, L'n'));
    CString out;
    EXPECT_EQ(std::wstring(instance().FormatInstrParamText(out, 30, 31)), longest + L" " + longest);
    EXPECT_EQ(std::wstring(instance().FormatLocaChanText(out, 34, 33, false)), longest + L" " + longest);
    own.tables().ChannelProperty.clear();
    AddChannel(33, 4);
    AddChannel(35, 4);
    EXPECT_EQ(std::wstring(instance().FormatLocaChanText(out, 34, 33, false)),
              longest + L" (" + longest + L")");
}

TEST_F(KeyTextTest, VirtualModesShowTheirGeneratedName) {
    own.AddMode(4, L"Ramp", 2);
    own.tables().PhysMode.Add(2, L"Third");
    own.AddParameter(0, 10, 0, 1000, 100, 0);
    own.AddSignal(10, L"rpm");
    ASSERT_TRUE(own.Build());
    int const interval = 2;
    int const mode = instance().VirtModeGenerateId(4, instance().VirtModeExtension(&interval, nullptr));
    ExpectText(QClavis(mode, 17, -1, -1, -1, -1), Always, Mask(3),
               (L"Third-cn\u00B7250rpm [" + std::to_wstring(mode) + L"] / (Instr. 17) [17]").c_str());
    ExpectNice(QClavis(mode, 17, 3, 4, 5, 6), false, L"/",
               L"Third-cn\u00B7250rpm / (Instr. 17) / rear / speed");
}

using KeyTextLoadTest = LoadTest;

TEST_F(KeyTextLoadTest, FromALake) {
    MessageLog const messages;
    std::string const begin =
        "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
        "<TMode>: {\n1 idle\n}\n<TInstrument>: {\n2500 Spectrum\n}\n"
        "<TChannel>: {\n3 mic\n}\n<TLocation>: {\n4 rear\n}\n"
        "<TApplicationSignal>: {\n6 speed\n}\n<TAppSignalProperty>: {\n6 1 \"?\" 0 7 0\n}\n"
        "<TChannelProperty>: {\n3 4 0\n5 4 0\n}\n<TLocationProperty>: {\n4 0 0 0\n}\n";
    CQtParamInstance instance;
    QClavis const key(1, 2500, 3, 4, 60, 6);
    EXPECT_STREQ(instance.FormatClavisTextNice(key, false, L"/"), L" / (Instr. 2500) /  / ");
    FillLake(begin + "<TInstrumentParam>: {\n60 2500 order 0 0 0\n61 2500 third 0 0 0\n}\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_STREQ(instance.FormatClavisTextNice(key, false, L"/"),
                 L"idle / Spectrum order / rear (mic) / speed");
    EXPECT_STREQ(instance.FormatClavisText(key, IfUnnamed, All),
                 L"idle / Spectrum / mic / rear / order / speed");
    CParameterLake::Lake().clear();
    FillLake(begin + "<TInstrumentParam>: {\n60 2500 order 0 0 0\n}\n");
    ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    EXPECT_STREQ(instance.FormatClavisTextNice(key, false, L"/"), L"idle / Spectrum / rear (mic) / speed");
}

} // namespace
