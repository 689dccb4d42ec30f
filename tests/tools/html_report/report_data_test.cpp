#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tests/support/messages.h"
#include "tests/tools/command_run.h"
#include "tests/tools/drive_lake.h"
#include "tools/html_report/report_data.h"
#include "tools/html_report/report_parts.h"

#include <nlohmann/json.hpp>
#include <sstream>

using namespace paramdb::tools;

namespace {

using Json = nlohmann::ordered_json;
using Language = CLibMgr::Language;

std::string const Version = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";

class ReportDataTest : public CommandTest {
protected:
    ReportDataTest() { CLibMgr::SetLanguage(Language::english); }
    ~ReportDataTest() override { CLibMgr::ResetLanguage(); }

    // Loads the text; what was loaded stays until the next.
    Load const& LoadText(std::string const& text) {
        std::ostringstream err;
        m_load = LoadFiles({File(u8"a.lake", text)}, err, [](int, int, std::wstring const&) {}).value();
        m_load.sources.files[0].name = "a.lake";
        return m_load;
    }
    std::string DataOf(std::string const& text, std::vector<ReportFinding> findings = {}) {
        return ReportData({.load = LoadText(text), .findings = std::move(findings), .rpm = 1500});
    }

private:
    Load m_load;
};

// The line of the data that begins with the key.
std::string LineOf(std::string const& data, std::string const& key) {
    std::size_t const begin = data.find("\"" + key + "\":");
    return begin == std::string::npos ? "" : data.substr(begin, data.find('\n', begin) - begin);
}

// The rows of a table as they stand.
std::string TableOf(std::string const& data, std::string const& tag) {
    std::size_t const begin = data.find("{\"tag\":\"\\u003c" + tag + "\\u003e\"");
    return begin == std::string::npos ? "" : data.substr(begin, data.find("]}", begin) + 2 - begin);
}

} // namespace

TEST_F(ReportDataTest, HeadOfASmallLake) {
    std::string const text = Version + "<QType><FBaseName>: Base\n"
                                       "<QType><FAliasName>: \"<b>Alias\"\n"
                                       "<TMode>: {\n1 \"Idle\"\n2 \"<img onerror=x>\"\n}\n";
    std::string const data = DataOf(text);
    std::string const head = data.substr(0, data.find("\"rotors\":"));
    EXPECT_EQ(head, "{\"program\":\"paramdb 0.1.0\",\n"
                    "\"language\":\"en\",\n"
                    "\"rpm\":1500.0,\n"
                    "\"sources\":[{\"file\":\"a.lake\",\"bytes\":" +
                        std::to_string(text.size()) +
                        ",\"lines\":8,\"sections\":1}],\n"
                        "\"version\":{\"major\":216,\"minor\":1},\n"
                        "\"result\":\"complete\",\n"
                        "\"texts\":{\"learn_file\":\"\",\"calib_file\":\"\",\"base_type\":\"Base\","
                        "\"alias_type\":\"\\u003cb\\u003eAlias\"},\n"
                        "\"totals\":{\"bytes\":" +
                        std::to_string(text.size()) +
                        ",\"lines\":8,\"sections\":1,\"tables\":1,\"all_tables\":103,\"rows\":2},\n"
                        "\"findings\":[],\n");
    EXPECT_EQ(LineOf(data, "rotors"), "\"rotors\":[],");
    EXPECT_EQ(LineOf(data, "orders"), "\"orders\":[],");
    EXPECT_EQ(LineOf(data, "polygons"), R"("polygons":{"polygons":[],"judged":[]},)");
    EXPECT_EQ(LineOf(data, "parameters"), "\"parameters\":[],");
    EXPECT_EQ(LineOf(data, "keys"),
              R"("keys":{"words":["Test step","Instrument","Channel","Object","Parameter","Sensor"],)"
              R"("rows":[],"modes":[]},)");
    EXPECT_EQ(TableOf(data, "TMode"), R"({"tag":"\u003cTMode\u003e","instrument_class":null,)"
                                      R"("key":[["mode","int"]],"row":[["name","text"]],"rows":[)"
                                      "\n[1,\"Idle\"],\n[2,\"\\u003cimg onerror=x\\u003e\"]]}");
    EXPECT_EQ(TableOf(data, "TIpCrest"),
              R"({"tag":"\u003cTIpCrest\u003e","instrument_class":1002,"key":[["parameter","int"]],)"
              R"("row":[["trigger","int"],["calculation","int"],["averaging_constant","float"]],"rows":[]})");
    EXPECT_EQ(Json::parse(data)["tables"].size(), 103U);
    EXPECT_EQ(data, DataOf(text)); // the same once more
}

// Only ASCII without the characters of markup.
TEST_F(ReportDataTest, NothingEndsTheScript) {
    std::string const hostile = "</script><script>alert(1)</script>\x01\x7F\x85\xAD\xFF<!--&";
    std::string const data =
        DataOf(Version + "<QType><FAliasName>: \"" + hostile + "\"\n<TMode>: {\n1 \"" + hostile +
                   "\"\n}\n<TInstrumentParam>: {\n7 1 \"" + hostile + "\" 0 0 0\n}\n<TIpPolygon>: {\n1 1 \"" +
                   hostile + "\"\n}\n<TIpPolygonValue>: {\n1 1 2\n}\n<TIpSpectralValue>: {\n7 1 1 6 \"" +
                   hostile + "\" 1 1\n}\n<TIpParamAndStore>: {\n1 1 1 1 7 1 0 0 0 0 0\n}\n",
               {{.severity = "error",
                 .code = "P100",
                 .title = hostile,
                 .place = {.file = hostile, .line = 3, .column = 1, .length = 2},
                 .message = hostile,
                 .hint = hostile,
                 .source = hostile,
                 .related = {{{.file = hostile}, hostile}}}});
    for (char const letter : data)
        ASSERT_TRUE((letter == '\n' || (letter >= 0x20 && letter < 0x7F)) && letter != '<' && letter != '>' &&
                    letter != '&')
            << int{letter};
    auto const document = Json::parse(data);
    std::string const name = document["tables"][0]["rows"][0][1];
    EXPECT_EQ(name, "</script><script>alert(1)</script>\x01\x7F\xC2\x85\xC2\xAD\xC3\xBF<!--&");
    EXPECT_EQ(document["texts"]["alias_type"], name);
    EXPECT_EQ(document["polygons"]["polygons"][0]["name"], name);
    EXPECT_EQ(document["orders"][0]["definition"], name);
    EXPECT_EQ(document["parameters"][0]["parameter"]["name"], name);
}

TEST_F(ReportDataTest, Findings) {
    auto const document = Json::parse(DataOf(
        Version + "<TMode>: {\n1 \"a\"\n}\n",
        {{.severity = "warning",
          .code = "P204",
          .title = "row dropped",
          .place = {.file = "a.lake", .line = 4, .column = 2, .length = 5},
          .message = "the key 1 is there already",
          .hint = "take it away",
          .source = "\t1 \"b\"",
          .related = {{{.file = "b.lake", .line = 2}, "the first"}, {{.file = "b.lake"}, "its file"}}},
         {.severity = "note", .code = "P101", .title = "t", .place = {.file = "a.lake"}, .message = "m"}}));
    EXPECT_EQ(
        document["findings"].dump(),
        R"([{"severity":"warning","code":"P204","title":"row dropped","file":"a.lake","line":4,"column":2,)"
        R"("length":5,"message":"the key 1 is there already","hint":"take it away","source":"\t1 \"b\"",)"
        R"("related":[{"file":"b.lake","line":2,"text":"the first"},)"
        R"({"file":"b.lake","line":null,"text":"its file"}]},)"
        R"({"severity":"note","code":"P101","title":"t","file":"a.lake","line":null,"column":null,)"
        R"("length":null,"message":"m","hint":null,"source":null,"related":[]}])");
}

TEST_F(ReportDataTest, KeysAndSettingsAreInTheLanguage) {
    struct Case {
        Language language;
        char const* code;
        char const* words;
        char const* setting;
    };
    Case const cases[] = {
        {Language::english, "en", R"(["Test step","Instrument","Channel","Object","Parameter","Sensor"])",
         "Base order ref.: Driving wheel (#90)"},
        {Language::standard, "en", R"(["Test step","Instrument","Channel","Object","Parameter","Sensor"])",
         "Base order ref.: Driving wheel (#90)"},
        {Language::german, "de",
         "[\"Pr\xC3\xBC"
         "fschritt\",\"Instrument\",\"Kanal\",\"Objekt\",\"Parameter\",\"Sensor\"]",
         "Bezug Basisordnung: Driving wheel (#90)"},
    };
    for (Case const& test : cases) {
        CLibMgr::SetLanguage(test.language);
        auto const document = Json::parse(DataOf(DriveLake));
        EXPECT_EQ(document["language"], test.code);
        EXPECT_EQ(document["keys"]["words"].dump(), test.words);
        EXPECT_EQ(document["parameters"][0]["settings"][1], test.setting);
    }
    for (auto const& [language, code] : {std::pair(Language::portuguese, "pt"),
                                         {Language::czech, "cs"},
                                         {Language::french, "fr"},
                                         {Language::hungarian, "hu"},
                                         {Language::italian, "it"},
                                         {Language::chinese, "zh"},
                                         {Language::spanish, "es"}}) {
        CLibMgr::SetLanguage(language);
        EXPECT_EQ(LineOf(DataOf(Version + "<TMode>: {\n1 \"a\"\n}\n"), "language"),
                  "\"language\":\"" + std::string(code) + "\",");
    }
}

TEST_F(ReportDataTest, Parameters) {
    auto const document = Json::parse(DataOf(DriveLake));
    auto const& parameters = document["parameters"];
    ASSERT_EQ(parameters.size(), 9U);
    EXPECT_EQ(
        parameters[0].dump(),
        R"x({"parameter":{"id":7,"name":"Mesh"},"instrument":{"id":1001,"name":"Spectral value"},)x"
        R"x("trigger":{"id":1,"name":"Speed"},"yields":"a single value","settings":["Trigger: Speed (#1)",)x"
        R"x("Base order ref.: Driving wheel (#90)","Interpretation: Maximum (#6)",)x"
        R"x("Definition: H1-L2;H1+L2","Source instrument: (Instr. 2500) (#2500)",)x"
        R"x("Source parameter:  (#1001)"]})x");
    EXPECT_EQ(parameters[4]["parameter"]["id"], 12);
    EXPECT_EQ(parameters[4]["settings"], nullptr); // they cannot be shown
    EXPECT_EQ(parameters[8].dump(),
              R"({"parameter":{"id":16,"name":"Unnamed class"},"instrument":{"id":1006,"name":null},)"
              R"("trigger":null,"yields":"a single value","settings":[]})");
}

TEST_F(ReportDataTest, KeysAreAsAHostShowsThem) {
    auto const document = Json::parse(DataOf(DriveLake));
    auto const& rows = document["keys"]["rows"];
    CQtParamInstance const parameters;
    ASSERT_EQ(rows.size(), parameters.IpParamAndStore().size());
    auto row = rows.begin();
    for (auto const& [key, value] : parameters.IpParamAndStore()) {
        Json expected = key.elements();
        expected.push_back(paramdb::ToUtf8(parameters.FormatClavisTextNice(key, false, L"/").GetString()));
        EXPECT_EQ(*row++, expected);
    }
    EXPECT_EQ(rows[0][6], "1. gear drive / Spectral value Mesh / Driving wheel Sync / Input speed");
    EXPECT_EQ(document["keys"]["modes"].dump(), "[]");
}

// A mode that is no row is known by its extension, or not at all.
TEST_F(ReportDataTest, ModesThatAreNoRows) {
    auto const document = Json::parse(DataOf(Version + "<TMode>: {\n1 \"a\"\n}\n<TIpParamAndStore>: {\n"
                                                       "1 1 1 1 1 1 0 0 0 0 0\n9 1 1 1 1 1 0 0 0 0 0\n"
                                                       "7 1 1 1 1 1 0 0 0 0 0\n7 1 1 1 1 2 0 0 0 0 0\n}\n"));
    EXPECT_EQ(document["keys"]["modes"].dump(), R"([[7,""],[9,""]])");
}

TEST_F(ReportDataTest, ReferenceRotor) {
    struct Case {
        char const* why;
        char const* rotors; // id, ratio, fraction
        char const* sources;
        int reference;
    };
    Case const cases[] = {
        {"it tells its own speed", "1 1 1 1 1\n1 2 0.5 1 2\n", "1 1 2\n1 2 2\n", 2},
        {"the first of two", "1 3 0.25 1 4\n1 4 0.5 1 2\n", "1 3 3\n1 4 4\n", 3},
        {"it stands", "1 1 0 0 1\n1 2 0.5 1 2\n1 5 1 1 1\n", "1 1 1\n", 5},
        {"it is no number", "1 1 nan 0 0\n1 2 inf 0 0\n1 5 0.5 1 2\n", "1 1 1\n1 2 2\n", 5},
        {"none tells, one turns once", "1 1 2 2 1\n1 2 1 1 1\n", "", 2},
        {"backwards is not once", "1 1 -1 -1 1\n1 2 3 3 1\n", "", 1},
        {"none turns", "1 1 0 0 1\n", "1 1 1\n", -1},
    };
    for (Case const& test : cases) {
        auto const document = Json::parse(DataOf(Version + "<TRotorSpeed>: {\n" + test.rotors +
                                                 "}\n<TRotorSpeedSource>: {\n" + test.sources + "}\n"));
        auto const& reference = document["rotors"][0]["reference"];
        EXPECT_EQ(reference.is_null() ? -1 : reference["id"].get<int>(), test.reference) << test.why;
    }
    Json rotors = RotorsPart(CQtParamInstance());
    EXPECT_EQ(rotors[0]["rotors"][0]["ratio"], 0.0); // the rest is as `paramdb rotors` has it
}

TEST_F(ReportDataTest, OrdersWithTheirDrives) {
    auto const document = Json::parse(DataOf(DriveLake));
    auto const& orders = document["orders"];
    ASSERT_EQ(orders.size(), 4U);
    EXPECT_EQ(
        orders[0].dump(),
        R"({"parameter":{"id":7,"name":"Mesh"},"instrument":{"id":1001,"name":"Spectral value"},)"
        R"("definition":"H1-L2;H1+L2","verdict":"good","fault":null,"intervals":[{)"
        R"("lower":{"text":"1 x base order - 2 lines","frequency":0.0,"order":0.0,"harmonic":1.0,)"
        R"("modulation":0.0,"lines":-2,"domain":2},)"
        R"("upper":{"text":"1 x base order + 2 lines","frequency":0.0,"order":0.0,"harmonic":1.0,)"
        R"("modulation":0.0,"lines":2,"domain":2}}],"drives":[{)"
        R"("mode":{"id":11,"name":"1. gear drive"},"physical_mode":{"id":1,"name":null},)"
        R"("rotor":{"id":1,"name":"Input shaft"},"gear":{"id":90,"name":"Driving wheel"},"base_order":13.0,)"
        R"("ratio":{"numerator":1,"denominator":1,"value":1.0},"turns":1.0}]})");
    auto const& track = orders[1]["drives"]; // of parameter 8, measured in both gears
    ASSERT_EQ(track.size(), 2U);
    EXPECT_EQ(track[0]["physical_mode"]["id"], 1);
    EXPECT_EQ(track[0]["ratio"].dump(), R"({"numerator":1,"denominator":2,"value":0.5})");
    EXPECT_EQ(track[1]["physical_mode"]["id"], 2);
    EXPECT_EQ(track[1]["mode"].dump(), R"({"id":12,"name":"2. gear drive"})");
    EXPECT_EQ(track[1]["ratio"].dump(), R"({"numerator":1,"denominator":4,"value":0.25})");
    EXPECT_EQ(orders[2]["drives"][0]["base_order"], 0.0); // frequencies need none
    EXPECT_EQ(orders[2]["drives"][0]["turns"], 0.0);
    EXPECT_EQ(document["results"].dump(),
              R"({"2":"a harmonic, but the gear has no base order",)"
              R"("3":"a harmonic or modulation, but the gear has no speed relative to the rotor",)"
              R"("5":"an order beside a frequency, but the gear has no speed relative to the rotor",)"
              R"("6":"it begins below 0 or behind its end"})");
}

TEST_F(ReportDataTest, BadDefinitionsAreToldSilently) {
    LoadText(Version + "<TInstrumentParam>: {\n1 1001 \"a\" 0 0 0\n}\n<TIpSpectralValue>: {\n"
                       "1 1 1 6 \"O1*2\" 1 1\n2 1 1 6 \"O1;O2;O3\" 1 1\n3 1 1 6 \"\" 1 1\n}\n");
    MessageLog log;
    Load load;
    load.tables = TableTotals();
    auto const document = Json::parse(ReportData({.load = load, .findings = {}, .rpm = 1}));
    EXPECT_EQ(log.Take(), std::vector<Message>());
    auto const& orders = document["orders"];
    ASSERT_EQ(orders.size(), 3U);
    EXPECT_EQ(orders[0]["verdict"], "bad");
    EXPECT_EQ(orders[0]["fault"]["place"], 2);
    EXPECT_EQ(orders[0]["intervals"].size(), 0U);
    EXPECT_EQ(orders[1]["verdict"], "odd");
    EXPECT_EQ(orders[1]["fault"], nullptr);
    EXPECT_EQ(orders[2]["verdict"], "empty");
    PrWin::Output(8, 1, L"still heard");
    EXPECT_EQ(log.Take(), (std::vector<Message>{{8, 1, L"still heard"}}));
}
