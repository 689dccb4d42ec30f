#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/query/param_instance.h>

#include <gtest/gtest.h>
#include <limits>
#include <set>
#include <stdexcept>
#include <string>
#include <tests/distillery/own_distillery.h>
#include <tests/support/messages.h>
#include <tests/support/sources.h>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;

class DisplayText : public LoadTest {
protected:
    DisplayText() { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    ~DisplayText() override { CLibMgr::ResetLanguage(); }

    void Load(std::string const& text) {
        FillLake(
            "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n"
            "<TInstrument>: {\n 1002 Crest\n 1004 Peak\n}\n<TLocation>: {\n 5 housing\n 6 \"gear box\"\n}\n"
            "<TTrigger>: {\n 3 \"run up\" 0\n 4 coast 0\n}\n"
            "<TLearnProcedures>: {\n 8 0 0 0 \"long term\" 0\n 9 0 0 0 \"\" 0\n}\n" +
            text);
        ASSERT_TRUE(instance.ReadTablesFromCandidateLake());
    }
    std::wstring Text(int parameter, wchar_t const* prefix = L"", wchar_t const* suffix = L"") {
        return instance.IpDisplayText(parameter, prefix, suffix).GetString();
    }

    MessageLog messages;
    CQtParamInstance instance;
};

std::string ParameterRow(int parameter, int instrument, std::string const& name) {
    std::string const id = std::to_string(parameter);
    return " " + id + " " + std::to_string(instrument) + " \"" + name + "\" 0 0 0\n";
}

// A parameter of each class, numbered as the class, with its row and what it must show.
struct Display {
    int instrument;
    char const* tag;
    char const* row;
    Lines lines;
};

Display const Displays[] = {
    {1001,
     "<TIpSpectralValue>",
     "3 5 6 \"H1-M2;H1+M2\" 1002 77",
     {L"Trigger: run up (#3)", L"Base order ref.: housing (#5)", L"Interpretation: Maximum (#6)",
      L"Definition: H1-M2;H1+M2", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)"}},
    {2001,
     "<TIpSpectralTrack>",
     "4 6 8 \"F100;F 200,5\" 1004 78",
     {L"Trigger: coast (#4)", L"Base order ref.: gear box (#6)", L"Interpretation: Sum (#8)",
      L"Definition: F100;F 200,5", L"Source instrument: Peak (#1004)", L"Source parameter:  (#78)"}},
    {2007,
     "<TIpResidualTrack>",
     "-1 -1 -1 \"\" -1 -1",
     {L"Trigger:  (#-1)", L"Base order ref.:  (#-1)", L"Interpretation:  (#-1)", L"Definition: ",
      L"Source instrument: (Instr. -1) (#-1)", L"Source parameter:  (#-1)"}},
    {1002,
     "<TIpCrest>",
     "3 1 0.125",
     {L"Trigger: run up (#3)", L"Calculation: Minimum (#1)", L"Avg. const.: 0.125000"}},
    {1003,
     "<TIpRms>",
     "3 4 1e6",
     {L"Trigger: run up (#3)", L"Calculation: Log. average / RMS (#4)", L"Avg. const.: 1000000.000000"}},
    {1004,
     "<TIpPeak>",
     "5 8 -0.1",
     {L"Trigger:  (#5)", L"Calculation: Position Minimum (#8)", L"Avg. const.: -0.100000"}},
    {1005,
     "<TIpKurtosis>",
     "3 9 1e-9",
     {L"Trigger: run up (#3)", L"Calculation:  (#9)", L"Avg. const.: 0.000000"}},
    {1008,
     "<TIpHoelder>",
     "4 3 2.5 -6",
     {L"Trigger: coast (#4)", L"Calculation: Average (#3)", L"Avg. const.: 2.500000",
      L"H\u00F6lder power: -6"}},
    {1060, "<TIpSP>", "4", {L"Shifting Evaluation: Shifting time (#4)"}},
    {1700,
     "<TIpSgArea>",
     "2 \"area one\" 1002 77 0 3 21",
     {L"Calculation: Maximum (#2)", L"Definition: area one", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)", L"Time domain accumulation: Average (#21)"}},
    {2002, "<TIpCrestTrack>", "3 0", {L"Trigger: run up (#3)", L"Calculation: not defined (#0)"}},
    {2003, "<TIpRmsTrack>", "4 1", {L"Trigger: coast (#4)", L"Calculation: Minimum (#1)"}},
    {2004, "<TIpPeakTrack>", "3 5", {L"Trigger: run up (#3)", L"Calculation: Sum (#5)"}},
    {2005, "<TIpKurtosisTrack>", "3 6", {L"Trigger: run up (#3)", L"Calculation: Log. sum (#6)"}},
    {2006, "<TIpModulationTrack>", "3 7", {L"Trigger: run up (#3)", L"Calculation: Position Maximum (#7)"}},
    {2012,
     "<TIpVarAreaTrack>",
     "2 3 6 1004 77 11 -12",
     {L"Calculation: Maximum (#2)", L"Trigger: run up (#3)", L"Source location: gear box (#6)",
      L"Source instrument: Peak (#1004)", L"Source parameter: Peak level (#77)", L"Polygon: 11",
      L"2nd Polygon: -12"}},
    {2070,
     "<TIpSgAreaTrack>",
     "4 2 \"area two\" 1002 77",
     {L"Trigger: coast (#4)", L"Calculation: Maximum (#2)", L"Definition: area two",
      L"Source instrument: Crest (#1002)", L"Source parameter: Peak level (#77)"}},
    {2100, "<TIpCatCurve>", "3 4", {L"Calculation: Average (#3)"}},
    {2500, "<TIpSpectrum>", "3 22 0 0", {L"Trigger: run up (#3)", L"Time domain accumulation: Last (#22)"}},
    {2700,
     "<TIpSgSection>",
     "2 cut 1002 77 3 20",
     {L"Calculation: Maximum (#2)", L"Definition: cut", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)"}},
    {2800,
     "<TIpSpectralDev>",
     "77 1 0.5 3 10 20.25",
     {L"Source parameter: Peak level (#77)", L"Trend Detection mode: Maximum (#1)", L"Avg. const.: 0.500000",
      L"Std.deviation: 3.000000", L"x start: 10.000000", L"x end: 20.250000"}},
    {3000, "<TIpSignalGuard>", "3 0", {L"Calculation: H\u00F6lder mean p6 (#3)"}},
    {3700, "<TIpModSpectrogram>", "4 20 0 0", {L"Trigger: coast (#4)"}},
    {10000,
     "<TIpTrackInterval>",
     "3 1002 77 -1.5 2.75 4",
     {L"Calculation: Average (#3)", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)", L"x start: -1.500000", L"x end: 2.750000",
      L"Calculation special: DbMoyenne (Renault) (#4)"}},
    {10100, "<TIpCurveMax>", "5 77", {L"Source parameter: Peak level (#77)"}},
    {10101,
     "<TIpCurvePolygon>",
     "3 0 77 12 0.5 1.5",
     {L"Area interpretation: Sum above (#3)", L"Source instrument: Peak (#1004)",
      L"Source parameter: Peak level (#77)", L"Polygon: 12", L"Offset: 0.500000",
      L"Std.deviation: 1.500000"}},
    {10102,
     "<TIpSvCurve>",
     "2 78",
     {L"Calculation: Maximum (#2)", L"Source instrument: (Instr. -1) (#-1)", L"Source parameter:  (#78)"}},
    {10201,
     "<TIpSvBinOp>",
     "2 1002 77 1004 78 3",
     {L"Bin. op. calc. mode: Subtraction (#2)", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)", L"2nd source instrument: Peak (#1004)",
      L"2nd source parameter:  (#78)", L"Trigger: run up (#3)"}},
    {11201,
     "<TIpTrackBinOp>",
     "7 1999 78 -1 77 -1",
     {L"Bin. op. calc. mode: Division (#7)", L"Source instrument: (Instr. 1999) (#1999)",
      L"Source parameter:  (#78)", L"2nd source instrument: (Instr. -1) (#-1)",
      L"2nd source parameter: Peak level (#77)", L"Trigger:  (#-1)"}},
    {10202,
     "<TIpSvTrend>",
     "77 1 8 -1 0.5 -2",
     {L"Source parameter: Peak level (#77)", L"Trend Detection mode: Difference (#1)",
      L"Learn procedure A: long term", L"Learn procedure B: (current measurement)", L"Offset: 0.500000",
      L"Slope: -2.000000"}},
    {12202,
     "<TIpCurveTrend>",
     "78 0 -1 7 0 0.25",
     {L"Source parameter:  (#78)", L"Trend Detection mode: Not defined (#0)",
      L"Learn procedure A: (current measurement)", L"Learn procedure B: (not assigned)", L"Offset: 0.000000",
      L"Slope: 0.250000"}},
    {13202,
     "<TIpCurveTrackTrend>",
     "77 2 -2 9 1 1",
     {L"Source parameter: Peak level (#77)", L"Trend Detection mode:  (#2)",
      L"Learn procedure A: (not assigned)", L"Learn procedure B: ", L"Offset: 1.000000", L"Slope: 1.000000"}},
    {11000,
     "<TIpTrackTransform>",
     "2 1002 77 3",
     {L"Track transformation: not defined (#2)", L"Source instrument: Crest (#1002)",
      L"Source parameter: Peak level (#77)", L"Trigger: run up (#3)"}},
    {16000,
     "<TIpTrackRegression>",
     "77 1 -2 3 4 5",
     {L"Source parameter: Peak level (#77)", L"Reg. time: not defined (#1)", L"Reg. link: not defined (#-2)",
      L"Reg. source: 3", L"Reg. transform.: 4", L"Reg. show mode: 5"}},
    {20000, "<TIpCvValue>", "3 2", {L"Trigger: run up (#3)", L"Calculation: Maximum (#2)"}},
    {1050, "<TIpRatioTest>", "3", {L"Trigger: run up (#3)"}},
    {1051, "<TIpDiffTest>", "4", {L"Trigger: coast (#4)"}},
    {2600, "<TIpTimeSignal>", "3", {L"Trigger: run up (#3)"}},
    {3500, "<TIpSpectrogram>", "4", {L"Trigger: coast (#4)"}},
    {5000, "<TIpSFTrack>", "3", {L"Trigger: run up (#3)"}},
    {5001, "<TIpSFTimeSignal>", "4", {L"Trigger: coast (#4)"}},
    {21000, "<TIpCvTrack>", "3", {L"Trigger: run up (#3)"}},
};
constexpr int PolygonClass = 10001; // has its row in no table of its own

TEST_F(DisplayText, LinesOfEachClass) {
    std::string parameters = ParameterRow(77, 1004, "Peak level");
    std::string tables;
    for (Display const& test : Displays) {
        std::string const id = std::to_string(test.instrument);
        parameters += ParameterRow(test.instrument, test.instrument, "p" + id);
        tables += std::string(test.tag) + ": {\n " + id + " " + test.row + "\n}\n";
    }
    Load("<TInstrumentParam>: {\n" + parameters + "}\n" + tables);
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    for (Display const& test : Displays) {
        SCOPED_TRACE(test.tag);
        std::wstring bare;
        std::wstring laid_out;
        for (std::wstring const& line : test.lines) {
            bare += line;
            laid_out += L"\t" + line + L";\n";
        }
        EXPECT_EQ(Text(test.instrument), bare);
        EXPECT_EQ(Text(test.instrument, L"\t", L";\n"), laid_out);
    }
    EXPECT_EQ(Text(77, L"<", L">"), L"<>") << "a parameter without a row of settings";
    EXPECT_EQ(messages.Take(), std::vector<Message>());
}

TEST_F(DisplayText, UnknownParameters) {
    for (bool const loaded : {false, true}) {
        if (loaded)
            Load("<TIpCatCurve>: {\n 5 3 0\n}\n");
        for (int const parameter :
             {5, 0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
            EXPECT_EQ(Text(parameter, L"before ", L"behind"), L"before behind");
            EXPECT_EQ(Text(parameter), L"");
        }
    }
}

TEST_F(DisplayText, ClassesWithoutLines) {
    std::set<int> classes{PolygonClass, 2900};
    for (Display const& test : Displays)
        classes.insert(test.instrument);
    EXPECT_EQ(classes.size(), std::size(Displays) + 2);
    OwnDistillery own;
    own.tables().InstrumentParam.insert({7, QVInstrumentParam()});
    int& instrument = own.tables().InstrumentParam.find(7)->second.get<"instrument">();
    // A row in every single table, so that a class that is none would find one.
    own.tables().IpSP.insert({7, QVIpSP(1)});
    own.tables().IpCatCurve.insert({7, QVIpCatCurve(1, 1)});
    for (instrument = -2; instrument < 26000; ++instrument) {
        if (classes.contains(instrument))
            continue;
        ASSERT_EQ(own.instance().IpDisplayText(7, L"<", L">"), L"<>") << instrument;
    }
    for (int const known : classes) {
        instrument = known;
        if (known != 2900 && known != 1060 && known != 2100) {
            ASSERT_EQ(own.instance().IpDisplayText(7, L"<", L">"), L"<>") << known << " without a row";
        }
    }
    instrument = 1060;
    EXPECT_EQ(own.instance().IpDisplayText(7, L"<", L">"), L"<Shifting Evaluation: Maximum position (#1)>");
}

TEST_F(DisplayText, CepstraAreLookedForInTheWrongFamily) {
    Load("<TInstrumentParam>: {\n" + ParameterRow(7, 2900, "cepstrum") + "}\n<TIpCepstrum>: {\n 7 3\n}\n");
    for (wchar_t const* const text : {L"", L"\t"}) {
        try {
            Text(7, text, text);
            ADD_FAILURE() << "no exception";
        } catch (std::out_of_range const& error) {
            EXPECT_STREQ(error.what(), "invalid map<K, T> key");
        }
    }
    EXPECT_EQ(Text(8, L"a", L"b"), L"ab") << "unknown parameters never come that far";
}

TEST_F(DisplayText, AccumulationsOfOlderSpectra) {
    struct {
        char const* row;
        wchar_t const* text;
    } const cases[] = {
        {"-1 0 0 0", L"Trigger:  (#-1)|Time domain accumulation: not definined|"},
        {"-1 20 0 0", L"Trigger:  (#-1)|Time domain accumulation: Maximum (#20)|"},
        {"-1 21 1e6 0", L"Trigger:  (#-1)|Time domain accumulation: Average (#21)|"},
        {"-1 2 0 0", L"Trigger:  (#-1)|Time domain accumulation: Maximum (#20)|"},
        {"-1 3 1e6 0", L"Trigger:  (#-1)|Time domain accumulation: Average (#21)|"},
        {"-1 3 0 0", L"Trigger:  (#-1)|Time domain accumulation: Last (#22)|"},
        {"-1 23 0 0", L"Trigger:  (#-1)|Time domain accumulation: not definined|"},
    };
    for (auto const& [row, text] : cases) {
        Reset();
        Load("<TInstrumentParam>: {\n" + ParameterRow(7, 2500, "spectrum") + "}\n<TIpSpectrum>: {\n 7 " +
             row + "\n}\n");
        EXPECT_EQ(Text(7, L"", L"|"), text) << row;
    }
    // Areas keep what their row says.
    Load("<TInstrumentParam>: {\n" + ParameterRow(8, 1700, "area") +
         "}\n<TIpSgArea>: {\n 8 0 d -1 -1 0 -1 2\n}\n");
    EXPECT_EQ(Text(8).substr(Text(8).rfind(L"Time")), L"Time domain accumulation:  (#2)");
}

TEST_F(DisplayText, AccumulationLines) {
    struct {
        int accumulation;
        wchar_t const* text;
    } const cases[] = {
        {0, L"Time domain accumulation: not definined"},
        {20, L"Time domain accumulation: Maximum (#20)"},
        {21, L"Time domain accumulation: Average (#21)"},
        {22, L"Time domain accumulation: Last (#22)"},
        {23, L"Time domain accumulation: (current measurement) (#23)"},
        {1, L"Time domain accumulation:  (#1)"},
        {8, L"Time domain accumulation: Section (#8)"},
        {-1, L"Time domain accumulation:  (#-1)"},
        {std::numeric_limits<int>::min(), L"Time domain accumulation:  (#-2147483648)"},
        {std::numeric_limits<int>::max(), L"Time domain accumulation:  (#2147483647)"},
    };
    for (auto const& [accumulation, text] : cases)
        EXPECT_EQ(instance.IpSpectrumAccumulationType(
                      static_cast<ParamDb::time_domain_accumulation_t>(accumulation)),
                  text);
}

TEST_F(DisplayText, SingleLines) {
    EXPECT_EQ(instance.IpParamDisplayText(101, L"run up", 3), L"Trigger: run up (#3)");
    EXPECT_EQ(instance.IpParamDisplayText(101, L"run up", 0), L"Trigger: run up (#0)");
    EXPECT_EQ(instance.IpParamDisplayText(101, L"run up", -1), L"Trigger: run up");
    EXPECT_EQ(instance.IpParamDisplayText(101, L"", std::numeric_limits<int>::min()), L"Trigger: ");
    EXPECT_EQ(instance.IpParamDisplayText(101, L"", std::numeric_limits<int>::max()),
              L"Trigger:  (#2147483647)");
    EXPECT_EQ(instance.IpParamDisplayText(98, L"100 %s%d", 1), L": 100 %s%d (#1)") << "no such label";
    EXPECT_EQ(instance.IpParamDisplayText(23, std::wstring(2000, L'x'), -1).GetLength(), 2007)
        << "a single line is not cut";
    EXPECT_EQ(instance.IpEnumParamDisplayText(100, 5, 205), L"Calculation: Sum (#5)");
    EXPECT_EQ(instance.IpEnumParamDisplayText(100, -5, 300), L"Calculation: not defined (#-5)");
    EXPECT_EQ(instance.IpEnumParamDisplayText(100, 9, 209), L"Calculation:  (#9)") << "no such word";
    EXPECT_EQ(instance.IpEnumParamDisplayText(0, 1, std::numeric_limits<unsigned int>::max()), L":  (#1)");
}

TEST_F(DisplayText, LinesAreInTheLanguageInForce) {
    Load("<TInstrumentParam>: {\n" + ParameterRow(7, 2002, "crest") + "}\n<TIpCrestTrack>: {\n 7 3 5\n}\n");
    for (paramdb::StringTable const& table : paramdb::StringTables()) {
        CLibMgr::SetLanguage(static_cast<CLibMgr::Language>(table.language));
        auto const text = [number = table.language](unsigned int id) {
            return std::wstring(paramdb::FindString(number, id));
        };
        EXPECT_EQ(Text(7, L"", L"\n"),
                  text(101) + L": run up (#3)\n" + text(100) + L": " + text(205) + L" (#5)\n");
        EXPECT_EQ(instance.IpSpectrumAccumulationType(ParamDb::accumulation_none),
                  text(10) + L": " + text(18));
    }
}

TEST_F(DisplayText, WhatIsTooLongIsCut) {
    Load("<TInstrumentParam>: {\n" + ParameterRow(7, 2002, "crest") + "}\n<TIpCrestTrack>: {\n 7 3 5\n}\n");
    std::wstring const first = L"Trigger: run up (#3)";
    std::wstring const second = L"Calculation: Sum (#5)";
    for (std::size_t const prefix : {0u, 1u, 400u, 478u, 479u, 480u, 950u, 979u, 998u, 999u, 1000u, 5000u}) {
        for (std::size_t const suffix : {0u, 1u, 2u, 500u, 1000u}) {
            SCOPED_TRACE(testing::Message() << prefix << ' ' << suffix);
            std::wstring const before(prefix, L'<');
            std::wstring const behind(suffix, L'>');
            std::wstring const whole = before + first + behind + before + second + behind;
            EXPECT_EQ(Text(7, before.c_str(), behind.c_str()), whole.substr(0, 999));
            EXPECT_EQ(Text(8, before.c_str(), behind.c_str()), (before + behind).substr(0, 999));
        }
    }
}

// Polygons come with the concrete keys of the parameter, the first of which says what is shown.
TEST_F(DisplayText, Polygons) {
    Load("<TInstrumentParam>: {\n" + ParameterRow(7, PolygonClass, "a") + ParameterRow(8, PolygonClass, "b") +
         ParameterRow(9, PolygonClass, "c") + ParameterRow(77, 1004, "Peak level") +
         "}\n<TIpPolygonValue>: {\n 40 0 0\n 40 1 1\n}\n"
         "<TIpParamAndStore>: {\n 2 10001 1 1 7 1 0 0 0 0 0\n 1 10001 1 1 7 1 0 0 0 0 0\n"
         " 1 10001 1 1 8 1 0 0 0 0 0\n 1 10001 1 1 6 1 0 0 0 0 0\n}\n"
         "<TIpTrackPolygon>: {\n 2 -1 -1 -1 7 -1 12 0 3 77 0 0 0 0 0 0\n 1 -1 -1 -1 7 -1 13 0 502 78 0 0 0 0 "
         "0 0\n"
         " -1 -1 -1 -1 8 -1 14 0 15 77 0 1 0 0 0 0\n -1 -1 -1 -1 9 -1 15 0 1 77 0 0 0 0 0 0\n}\n");
    EXPECT_EQ(messages.Take(), std::vector<Message>());
    EXPECT_EQ(Text(7, L"", L"|"), L"Area interpretation:  (#502)|Source parameter:  (#78)|Polygon: 13|")
        << "the key of mode 1 is the first";
    EXPECT_EQ(
        Text(8, L"", L"|"),
        L"Area interpretation: Mean value overall (#15)|Source parameter: Peak level (#77)|Polygon: 41|")
        << "two points make a polygon of their own";
    EXPECT_EQ(Text(9, L"", L"|"), L"|") << "a row without concrete key";
}

} // namespace
