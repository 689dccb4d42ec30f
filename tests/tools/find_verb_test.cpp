#include "tests/tools/command_run.h"
#include "tests/tools/names_lake.h"
#include "tests/tools/sample_lake.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

class FindVerbTest : public CommandTest {
protected:
    CommandRun Find(std::string const& text) { return RunCommand({"find", "--", m_lake, text}); }

    std::string m_lake = File(u8"a.lake", NamesLake);
};

} // namespace

TEST_F(FindVerbTest, FindsInAllTables) {
    auto const run = Find("GEAR");
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, "Kind                   Id  Name           Table\n"
                       "mode                   11  1. gear drive  <TMode>\n"
                       "mode                   12  1. gear coast  <TMode>\n"
                       "physmode                1  Gear 1         <TPhysMode>\n"
                       "errorgroup              1  Gear: bad      <TErrorGroup>\n"
                       "            1001/1/10/4/7  Gear whine     <TClavisUserNames>\n"
                       "             Report/Title  Gearbox        <TAuxStrings>\n");
}

TEST_F(FindVerbTest, Finds) {
    struct Case {
        char const* text;
        char const* out;
    };
    Case const cases[] = {
        {"g1", "Kind  Id  Name   Table\n"
               "      11  G1_UP  <TModeTranslate>\n"},
        {"1*R?VE", "Kind  Id  Name           Table\n"
                   "mode  11  1. gear drive  <TMode>\n"},
        {"r\xC3\xBC", "Kind  Id  Name    Table\n"
                      "mode   3  Pr\xC3\x9C"
                      "fen  <TMode>\n"},
        {"t/o", "Kind      Id  Name          Table\n"
                "location   5  Input/output  <TLocation>\n"},
        {"-", ""},
        {"input u", ""}, // a unit
        {"O1", ""},      // a definition
    };
    for (Case const& test : cases) {
        auto const run = Find(test.text);
        bool const is_found = *test.out != '\0';
        EXPECT_EQ(run.code, is_found ? 0 : 1) << test.text;
        EXPECT_EQ(run.err.empty(), is_found) << test.text;
        EXPECT_EQ(run.out, test.out) << test.text;
    }
    // The star finds every name, also the two that are empty.
    std::string const all = Find("*").out;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1 + 38);
}

TEST_F(FindVerbTest, OffersTheNearest) {
    struct Case {
        char const* text;
        char const* message;
    };
    Case const cases[] = {
        {"Diferential", "Diferential: no such name; did you mean \"Differential\"?"},
        {"Idel", "Idel: no such name; did you mean \"Idle\"?"}, // which two modes have
        {"1. gaer cost", "1. gaer cost: no such name; did you mean \"1. gear coast\"?"},
        {"torqe", "torqe: no such name; did you mean \"torque\"?"}, // a word of a name
        {"Turbocharger", "Turbocharger: no such name"},
        {"\x1B[2J", "\xEF\xBF\xBD[2J: no such name"},
    };
    for (Case const& test : cases) {
        auto const run = Find(test.text);
        EXPECT_EQ(run.code, 1) << test.text;
        EXPECT_EQ(run.out, "") << test.text;
        EXPECT_EQ(run.err, "paramdb: " + std::string(test.message) + '\n');
    }
}

TEST_F(FindVerbTest, GivesJson) {
    auto const run = RunCommand({"find", m_lake, "gear?w", "--format", "json"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(run.out).dump(),
              R"({"found":[{"kind":null,"id":null,"name":"Gear whine","table":"<TClavisUserNames>",)"
              R"("column":"value_1","key":"1001/1/10/4/7"}],"nearest":[]})");
    auto const mode = RunCommand({"find", m_lake, "coast", "--format", "json"});
    EXPECT_EQ(nlohmann::ordered_json::parse(mode.out).dump(),
              R"({"found":[{"kind":"mode","id":12,"name":"1. gear coast","table":"<TMode>",)"
              R"("column":"name","key":"12"}],"nearest":[]})");
    auto const miss = RunCommand({"find", m_lake, "Idel", "--format", "json"});
    EXPECT_EQ(miss.code, 1);
    EXPECT_EQ(nlohmann::ordered_json::parse(miss.out).dump(), R"({"found":[],"nearest":["Idle"]})");
}

TEST_F(FindVerbTest, WrongArguments) {
    auto const none = RunCommand({"find", m_lake});
    EXPECT_EQ(none.code, 2);
    EXPECT_EQ(none.err, "paramdb: a TEXT is required behind the files\n");
    auto const empty = RunCommand({"find", m_lake, ""});
    EXPECT_EQ(empty.code, 2);
    EXPECT_EQ(empty.err, "paramdb: the TEXT is empty; * finds every name\n");
    EXPECT_EQ(RunCommand({"find", Name(u8"none.lake"), "Idle"}).code, 2);
    EXPECT_EQ(RunCommand({"find", File(u8"old.lake", RefusedLake), "Idle"}).code, 2);
    EXPECT_EQ(RunCommand({"find", File(u8"faulty.lake", FaultyLake), "Idle"}).code, 1);
}
