#include "tests/tools/command_run.h"
#include "tests/tools/names_lake.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

class IdVerbTest : public CommandTest {
protected:
    CommandRun Ask(std::vector<std::string> const& words) {
        std::vector<std::string> arguments{"id", m_lake};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return RunCommand(arguments);
    }

    std::string m_lake = File(u8"a.lake", NamesLake);
};

} // namespace

TEST_F(IdVerbTest, TellsIds) {
    struct Case {
        std::vector<std::string> words;
        char const* out;
    };
    Case const cases[] = {
        {{"mode", "1. gear drive"}, "11\n"},
        {{"mode", "Pr\xC3\x9C"
                  "fen"},
         "3\n"},
        {{"mode", "Idle"}, "30\n 1\n"}, // the row that was read first comes first
        {{"mode", ""}, "20\n"},
        {{"location", "4"}, "6\n"},
        {{"signal", "Input speed"}, "10\n"},
        {{"sensorconfig", "Standard"}, "1\n"},
        {{"trigger", "Speed"}, "1\n"},
        {{"polygon", "Limit"}, "5\n"},
        {{"parameter", "Level"}, "9\n"},
        {{"parameter", "Mesh H1"},
         "Parameter  Instrument\n"
         "        7  1001 Spectral value\n"
         "        8  2001 Track\n"},
        {{"parameter", "Mesh H1", "--instrument", "2001"}, "8\n"},
        {{"parameter", "Mesh H1", "-i", "Spectral value"}, "7\n"},
    };
    for (Case const& test : cases) {
        auto const run = Ask(test.words);
        EXPECT_EQ(run.code, 0) << test.words[1];
        EXPECT_EQ(run.err, "") << test.words[1];
        EXPECT_EQ(run.out, test.out) << test.words[1];
    }
}

TEST_F(IdVerbTest, OffersTheNearest) {
    struct Case {
        std::vector<std::string> words;
        char const* message;
    };
    Case const cases[] = {
        {{"mode", "idle"}, "idle: no such mode; did you mean 1 Idle or 30 Idle?"},
        {{"mode", "PR\xC3\xBC"
                  "FEN"},
         "PR\xC3\xBC"
         "FEN: no such mode; did you mean 3 Pr\xC3\x9C"
         "fen?"},
        {{"mode", "gear"}, "gear: no such mode; did you mean 11 1. gear drive or 12 1. gear coast?"},
        {{"mode", "Turbine"}, "Turbine: no such mode"},
        {{"channel", ""}, "\"\": no such channel"},
        {{"parameter", "Mesh H2", "-i", "1001"},
         "Mesh H2: no such parameter of instrument 1001 Spectral value; did you mean 7 Mesh H1?"},
        {{"parameter", "Level", "-i", "2001"}, "Level: no such parameter of instrument 2001 Track"},
        {{"parameter", "Level", "-i", "17"}, "Level: no such parameter of instrument 17"},
        {{"parameter", "Level", "-i", "1002"},
         "1002: no such instrument; did you mean 1001 Spectral value or 2001 Track?"},
        {{"parameter", "Level", "-i", "Trakc"}, "Trakc: no such instrument; did you mean 2001 Track?"},
    };
    for (Case const& test : cases) {
        auto const run = Ask(test.words);
        EXPECT_EQ(run.code, 1) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, "paramdb: " + std::string(test.message) + '\n');
    }
}

TEST_F(IdVerbTest, GivesJson) {
    auto const parameters = Ask({"parameter", "Mesh H1", "--format", "json"});
    EXPECT_EQ(parameters.code, 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(parameters.out).dump(),
              R"({"kind":"parameter","name":"Mesh H1","found":[)"
              R"({"id":7,"instrument":{"id":1001,"name":"Spectral value"}},)"
              R"({"id":8,"instrument":{"id":2001,"name":"Track"}}],"nearest":[]})");
    auto const mode = Ask({"mode", "Warm up", "--format", "json"});
    EXPECT_EQ(nlohmann::ordered_json::parse(mode.out).dump(),
              R"({"kind":"mode","name":"Warm up","found":[{"id":2}],"nearest":[]})");
    auto const miss = Ask({"mode", "warmup", "--format", "json"});
    EXPECT_EQ(miss.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(miss.out).dump(),
              R"({"kind":"mode","name":"warmup","found":[],"nearest":[{"id":2,"name":"Warm up"}]})");
    // What is no UTF-8 is replaced.
    auto const odd = Ask({"mode", "\xFF", "--format", "json"});
    EXPECT_EQ(odd.code, 1);
    EXPECT_EQ(nlohmann::json::parse(odd.out)["name"], "\xEF\xBF\xBD");
}

TEST_F(IdVerbTest, WrongArguments) {
    struct Case {
        std::vector<std::string> words;
        std::string message;
    };
    Case const cases[] = {
        {{"mode"}, "a KIND and a NAME are required behind the files"},
        {{"chanel", "Mix"}, "chanel: no such kind; did you mean channel?"},
        {{"mode", "Idle", "-i", "1001"}, "--instrument goes with the kind parameter alone"},
    };
    for (Case const& test : cases) {
        auto const run = Ask(test.words);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, "paramdb: " + test.message + '\n');
    }
    EXPECT_EQ(RunCommand({"id", "mode", "Idle", m_lake}).err,
              "paramdb: Idle: no such kind; the files stand before it\n");
    EXPECT_EQ(RunCommand({"id", File(u8"old.lake", RefusedLake), "mode", "Idle"}).code, 2);
    EXPECT_EQ(RunCommand({"id", File(u8"faulty.lake", FaultyLake), "mode", "Idle"}).code, 1);
}

// Of the two files the later one counts.
TEST_F(IdVerbTest, MergesFiles) {
    std::string const other = File(u8"b.lake", "<TMode>: {\n5 \"Warm up\"\n}\n");
    auto const run = RunCommand({"id", m_lake, other, "mode", "Warm up"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.out, "5\n");
}
