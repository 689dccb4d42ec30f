#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tests/tools/command_run.h"
#include "tests/tools/names_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

using Language = CLibMgr::Language;

std::string const GearboxLake = PARAMDB_SOURCE_DIR "/examples/gearbox/gearbox.lake";

class KeyVerbTest : public CommandTest {
protected:
    KeyVerbTest() { CLibMgr::SetLanguage(Language::english); }
    ~KeyVerbTest() override { CLibMgr::ResetLanguage(); }

    CommandRun Key(std::string const& key, std::vector<std::string> const& options = {}) {
        std::vector<std::string> arguments{"key"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.insert(arguments.end(), {"--", m_lake, key});
        return RunCommand(arguments);
    }

    std::string m_lake = File(u8"a.lake", NamesLake);
};

std::string const WholeKey =
    "Short  1. gear drive [11] / Spectral value [1001] / Fix [1] / Differential [4] / "
    "Mesh H1 [7] / Input speed [10]\n"
    "Nice   1. gear drive / Spectral value Mesh H1 / Differential / Input speed\n"
    "\n"
    "Element       Id  Name\n"
    "Test step     11  1. gear drive\n"
    "Instrument  1001  Spectral value\n"
    "Channel        1  Fix\n"
    "Object         4  Differential\n"
    "Parameter      7  Mesh H1\n"
    "Sensor        10  Input speed\n";

} // namespace

TEST_F(KeyVerbTest, ShowsAKey) {
    for (char const* const key : {"11/1001/1/4/7/10", " 11/1001 / 1/4/7 /10",
                                  "1. gear drive/Spectral value/Fix/Differential/Mesh H1/Input speed",
                                  "\"1. gear drive\"/1001/Fix/\"Differential\"/Mesh H1/10"}) {
        auto const run = Key(key);
        EXPECT_EQ(run.code, 0) << key;
        EXPECT_EQ(run.err, "") << key;
        EXPECT_EQ(run.out, WholeKey) << key;
    }
}

TEST_F(KeyVerbTest, ElementsThatAreNotSet) {
    for (char const* const key : {"/17//\"4\"", "*/17/-1/6", "-1/ 17 /*/6/ /", " /17//\"4\" /*/-1"}) {
        auto const run = Key(key);
        EXPECT_EQ(run.err, "") << key;
        EXPECT_EQ(run.code, 0) << key;
        EXPECT_EQ(run.out,
                  "Short  (Nil) [-1] / (Instr. 17) [17] / (Nil) [-1] / 4 [6] / (Nil) [-1] / (Nil) [-1]\n"
                  "Nice   (Nil) / (Instr. 17) / 4 / (Nil)\n"
                  "\n"
                  "Element     Id  Name\n"
                  "Test step   -1               not set\n"
                  "Instrument  17  (Instr. 17)\n"
                  "Channel     -1               not set\n"
                  "Object       6  4\n"
                  "Parameter   -1               not set\n"
                  "Sensor      -1               not set\n")
            << key;
    }
}

TEST_F(KeyVerbTest, SpeaksLanguages) {
    struct Case {
        char const* code;
        Language language;
    };
    Case const cases[] = {
        {"en", Language::english}, {"pt", Language::portuguese}, {"cs", Language::czech},
        {"de", Language::german},  {"fr", Language::french},     {"hu", Language::hungarian},
        {"it", Language::italian}, {"zh", Language::chinese},    {"es", Language::spanish},
    };
    for (Case const& test : cases) {
        auto const run = Key("11", {"--lang", test.code, "--format", "json"});
        EXPECT_EQ(run.code, 0) << test.code;
        EXPECT_EQ(CLibMgr::GetLanguage(), Language::english) << test.code; // as before
        auto const elements = nlohmann::json::parse(run.out)["elements"];
        CLibMgr::SetLanguage(test.language);
        for (int element = 0; element < Clavis::ElementCount; ++element) {
            auto const index = static_cast<std::size_t>(element);
            EXPECT_EQ(elements[index]["word"], paramdb::ToUtf8(Clavis::ElementName(element, 1).GetString()));
            EXPECT_EQ(elements[index]["element"],
                      paramdb::ToUtf8(Clavis::ElementName(element, 0).GetString()));
        }
        CLibMgr::SetLanguage(Language::english);
    }
}

TEST_F(KeyVerbTest, GivesGermanWords) {
    auto const run = Key("11", {"--lang", "de"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("\nKanal "), std::string::npos) << run.out;
    EXPECT_EQ(Key("11", {"--lang=en"}).out.find("\nKanal "), std::string::npos);
}

TEST_F(KeyVerbTest, UnknownIdsAreMarked) {
    auto const run = Key("13/1001/2/4/6/10");
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              "paramdb: 13: no such mode; did you mean 12 1. gear coast, 11 1. gear drive or 3 Pr\xC3\x9C"
              "fen?\n"
              "paramdb: 2: no such channel; did you mean 1 Fix or 3 Mix?\n"
              "paramdb: 6: no such parameter; did you mean 7 Mesh H1, 8 Mesh H1 or 9 Level?\n");
    EXPECT_EQ(run.out,
              "Short  [13] / Spectral value [1001] / [2] / Differential [4] / [6] / Input speed [10]\n"
              "Nice    / Spectral value  / Differential / Input speed\n"
              "\n"
              "Element       Id  Name\n"
              "Test step     13                  unknown\n"
              "Instrument  1001  Spectral value\n"
              "Channel        2                  unknown\n"
              "Object         4  Differential\n"
              "Parameter      6                  unknown\n"
              "Sensor        10  Input speed\n");
}

TEST_F(KeyVerbTest, NamesThatAreNotThere) {
    struct Case {
        char const* key;
        char const* message;
    };
    Case const cases[] = {
        {"idle", "idle: no such mode; did you mean 1 Idle or 30 Idle?"},
        {"////mesh h1", "mesh h1: no such parameter; did you mean 7 Mesh H1 or 8 Mesh H1?"},
        {"////Mesh H1",
         "Mesh H1: several parameters have this name: 7 of 1001 Spectral value, 8 of 2001 Track"},
        {"/2001///Level", "Level: no such parameter of instrument 2001 Track"},
        {"/Track///Mesh h1", "Mesh h1: no such parameter of instrument 2001 Track; did you mean 8 Mesh H1?"},
        {"/////\"10\"", "10: no such signal"},
        {"//\"\"", "\"\": no such channel"},
    };
    for (Case const& test : cases) {
        auto const run = Key(test.key);
        EXPECT_EQ(run.code, 1) << test.key;
        EXPECT_EQ(run.out, "") << test.key;
        EXPECT_EQ(run.err, "paramdb: " + std::string(test.message) + '\n');
    }
}

TEST_F(KeyVerbTest, GivesJson) {
    auto const run = Key("11/1001/3//7", {"--format", "json"});
    EXPECT_EQ(run.code, 0);
    auto const document = nlohmann::ordered_json::parse(run.out);
    EXPECT_EQ(document["key"].dump(), "[11,1001,3,-1,7,-1]");
    EXPECT_EQ(document["short_text"], "1. gear drive [11] / Spectral value [1001] / Mix [3] / (Nil) [-1] / "
                                      "Mesh H1 [7] / (Nil) [-1]");
    EXPECT_EQ(document["elements"].size(), 6U);
    EXPECT_EQ(document["elements"][1].dump(), R"({"element":"Instrument","word":"Instrument","id":1001,)"
                                              R"("name":"Spectral value","is_known":true,"nearest":[]})");
    EXPECT_EQ(document["elements"][3].dump(), R"({"element":"Location","word":"Object","id":null,)"
                                              R"("name":null,"is_known":true,"nearest":[]})");

    auto const miss = Key("idle/3", {"--format", "json"});
    EXPECT_EQ(miss.code, 1);
    auto const unresolved = nlohmann::ordered_json::parse(miss.out);
    EXPECT_TRUE(unresolved["key"].is_null());
    EXPECT_TRUE(unresolved["short_text"].is_null());
    EXPECT_TRUE(unresolved["nice_text"].is_null());
    EXPECT_EQ(unresolved["elements"][0].dump(),
              R"({"element":"Mode","word":"Test step","id":null,"name":"idle","is_known":false,)"
              R"("nearest":[{"id":1,"name":"Idle"},{"id":30,"name":"Idle"}]})");
    EXPECT_EQ(unresolved["elements"][1]["id"], 3);
    EXPECT_EQ(unresolved["elements"][1]["is_known"], false);
}

TEST_F(KeyVerbTest, WrongArguments) {
    auto const none = RunCommand({"key", m_lake});
    EXPECT_EQ(none.code, 2);
    EXPECT_EQ(none.err, "paramdb: a KEY is required behind the files\n");
    auto const bad = Key("11/99999999999");
    EXPECT_EQ(bad.code, 2);
    EXPECT_EQ(bad.out, "");
    EXPECT_EQ(bad.err, "paramdb: key: the number is too large\n"
                       "  11/99999999999\n"
                       "     ^\n"
                       "The key is mode/instrument/channel/location/parameter/signal\n");
    EXPECT_EQ(Key("11", {"--lang", "nl"}).code, 2);
    EXPECT_EQ(RunCommand({"key", File(u8"old.lake", RefusedLake), "11"}).code, 2);
    EXPECT_EQ(RunCommand({"key", File(u8"faulty.lake", FaultyLake), "11"}).code, 1);
}

// What is shown is what a host is told, for keys from all over the results.
TEST_F(KeyVerbTest, AgreesWithTheQueries) {
    ASSERT_EQ(RunCommand({"key", GearboxLake, "11"}).code, 0);
    std::vector<QClavis> keys;
    std::size_t row_count = 0;
    for (auto const& [key, row] : CQtParamInstance().IpParamAndStore()) {
        if (row_count++ % 300 == 0)
            keys.push_back(key);
    }
    ASSERT_GE(keys.size(), 6U);
    for (bool const both : {false, true}) {
        for (QClavis const& key : keys) {
            std::string text;
            for (int const element : key.elements())
                text += (text.empty() ? "" : "/") + std::to_string(element);
            std::vector<std::string> arguments{"key", GearboxLake, text, "--format", "json"};
            if (both)
                arguments.emplace_back("--both");
            auto const run = RunCommand(arguments);
            ASSERT_EQ(run.code, 0) << text << run.err;
            auto const document = nlohmann::json::parse(run.out);
            CQtParamInstance const parameters;
            EXPECT_EQ(document["nice_text"],
                      paramdb::ToUtf8(parameters.FormatClavisTextNice(key, both, L"/").GetString()));
            EXPECT_EQ(
                document["short_text"],
                paramdb::ToUtf8(
                    parameters.FormatClavisText(key, CQtParamInstance::show_id_always, 0x3F).GetString()));
        }
    }
}
