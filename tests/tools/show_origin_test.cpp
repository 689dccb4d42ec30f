// `paramdb show --origin`.
#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

#include <nlohmann/json.hpp>

namespace {

class ShowOriginTest : public CommandTest {
protected:
    std::string const m_first = File(u8"first.lake", SampleLake);
    std::string const m_second =
        File(u8"se\u00FC,cond.lake", "; names\n\n<TMode>: {\n\t7 \"Seven\"\n\t2 \"Two\"\n}\n");
};

} // namespace

TEST_F(ShowOriginTest, AsText) {
    auto const one = RunCommand({"show", m_first, "RotorSpeed", "--origin"});
    EXPECT_EQ(one.code, 0);
    EXPECT_EQ(one.err, "");
    EXPECT_EQ(one.out, "physical_mode  rotor |              ratio  numerator  denominator | origin\n"
                       "            1      1 |                0.1          1           10 | " +
                           m_first +
                           ":10\n"
                           "            1      2 | 0.2826086956521739         13           46 | " +
                           m_first +
                           ":11\n"
                           "            2      1 |                inf          1            1 | " +
                           m_first + ":12\n");
    auto const two = RunCommand({"show", m_first, m_second, "Mode", "2", "--origin"});
    EXPECT_EQ(two.out, "mode | name | origin\n   2 | Two  | " + m_second + ":5\n");
}

TEST_F(ShowOriginTest, AsJson) {
    auto const run = RunCommand({"show", m_first, m_second, "Mode", "--origin", "--format", "json"});
    nlohmann::json const expected = {
        {{"mode", 2}, {"name", "Two"}, {"origin", {{"file", m_second}, {"line", 5}}}},
        {{"mode", 7}, {"name", "Seven"}, {"origin", {{"file", m_second}, {"line", 4}}}}};
    EXPECT_EQ(nlohmann::json::parse(run.out), expected) << run.out;
}

TEST_F(ShowOriginTest, AsCsv) {
    auto const run = RunCommand({"show", m_second, m_first, "Mode", "1..2", "--origin", "--format", "csv"});
    // The version comes with the second file.
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, "mode,name,file,line\r\n1,Idle," + m_first + ",4\r\n2,Warm up," + m_first + ",5\r\n");
    auto const quoted = RunCommand({"show", m_first, m_second, "Mode", "2", "--origin", "--format", "csv"});
    EXPECT_EQ(quoted.out, "mode,name,file,line\r\n2,Two,\"" + m_second + "\",5\r\n");
}

TEST_F(ShowOriginTest, ColumnsOfTextsArePadded) {
    auto const run = RunCommand({"show", m_first, "Mode", "1..3", "--origin"});
    EXPECT_EQ(run.out, "mode | name    | origin\n   1 | Idle    | " + m_first + ":4\n   2 | Warm up | " +
                           m_first +
                           ":5\n   3 | Pr\xC3\xBC"
                           "fen  | " +
                           m_first + ":6\n");
}
