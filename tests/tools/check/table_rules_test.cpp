#include "tests/tools/check/check_files.h"

namespace {

class TableRulesTest : public CheckTest {};

} // namespace

TEST_F(TableRulesTest, Rows) {
    struct Case {
        std::string text;
        Texts findings;
    };
    Case const cases[] = {
        {"<TBaseOrder>: {\n\t1 0.5\n\t2 .5\n\t3 1e3\n\t4 0x1p3\n\t5 inf\n}\n", {}},
        // A short line takes from a line that was left out as well.
        {"<TRotorSpeed>: {\n1 1 0.5 1 2\n1 2 0.25 7 x\n1 3\n}\n",
         {"0:3:12 P205 the row is left out: \"x\" is not a whole number of 32 bits, as the column "
          "denominator takes it",
          "0:4:4 P208 the row has only 2 of 5 fields; the line before gives ratio = 0.25, numerator = 7, "
          "denominator = "
          "2"}},
        {"<TRotorSpeed>: {\n1 1 0.5\n}\n",
         {"0:2:8 P208 the row has only 3 of 5 fields; without a line before it stays numerator = 0, "
          "denominator = 0"}},
        {"<TMode>: {\n1 \"Idle\"\n1 \"Idle\"\n1 \"Idle\" x\n}\n",
         {"0:3:1 P204 the row is left out: <TMode> has the key 1 already, in the same words",
          "0:4:1 P204 the row is left out: <TMode> has the key 1 already",
          "0:4:10 P209 the row has all its 2 fields before this, which is not read"}},
        // The one table with several rows to a key.
        {"<TSensorGroupList>: {\n1 2 0\n1 2 0\n1 3 0\n}\n", {}},
        {"<TSensorGroupList>: {\n1 2 0\n\n}\n",
         {"0:3:1 P203 the blank line is read as a row of <TSensorGroupList> with the key 1"}},
        // A comment behind a row that was left out half read.
        {"<TRotorSpeed>: {\n1 1 0.5 1 2\n1 2 x\n; note\n}\n",
         {"0:3:5 P205 the row is left out: \"x\" is not a number of double precision, as the column ratio "
          "takes it",
          "0:4:1 P203 the comment is read as a row of <TRotorSpeed> with the key 1/2"}},
        {"<TMode>: {\n1 \"a\" \"b:\" c: d\n}\n",
         {"0:2:13 P201 the colon makes a key of this line, so that <TMode> has no such row"}},
        {"<TMode>: {\n1 : 2\n}\n",
         {"0:2:3 P201 the colon makes a key of this line, so that <TMode> has no such row"}},
        {"<TMode>: {\n\"1 \"Idle\n}\n",
         {"0:2:1 P205 the row is left out: \"1 is not a whole number of 32 bits, as the column mode takes "
          "it"}},
        // Nothing is told of sections that no table reads.
        {"<TMode>: {\nx\n}\n<TMode>: {\n}\n",
         {"0:1:1 P116 1 line of this section will not be read: a later section has its key"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Findings({test.text}), test.findings) << test.text;
}

TEST_F(TableRulesTest, HintsKnowUsualMistakes) {
    struct Case {
        std::string row;
        std::string hint;
    };
    Case const cases[] = {
        {"// note", "a comment begins with a semicolon and stands outside of the section"},
        {"1 0,5", "a decimal point is a point, and blanks stand between fields"},
        {"1 \"0.5\"", "see whether a field before it is missing"},
        {"1 a", "the columns are gear base_order"},
        {"1 2 ; note", "a row takes no comment behind it"},
    };
    for (Case const& test : cases) {
        auto const run =
            RunCommand({"check", File(u8"row.lake", LakeVersion + "<TBaseOrder>: {\n" + test.row + "\n}\n")});
        EXPECT_NE(run.out.find("  hint: " + test.hint + '\n'), std::string::npos) << run.out;
    }
}

TEST_F(TableRulesTest, RowsOfARefusedFile) {
    auto const run = RunCommand(
        {"check", File(u8"old.lake", "<DbDesign.CacheVersion>: 200\n<TMode>: {\n1 a\n1 b\n2\nx y\n}\n")});
    EXPECT_EQ(run.code, 2);
    for (char const* const code :
         {":1:26: error P102 ", ":4:1: warning P204 ", ":5:2: warning P208 ", ":6:1: error P205 "})
        EXPECT_NE(run.out.find(code), std::string::npos) << code << '\n' << run.out;
}

// Every message of the load about a row belongs to a finding, also where lines read alike.
TEST_F(TableRulesTest, MessagesAreExplained) {
    std::string text = "<TBaseOrder>: {\n";
    for (int row = 0; row < 50; ++row)
        text += row % 3 == 0   ? "x 1\n"
                : row % 3 == 1 ? std::to_string(row) + " y\n"
                               : std::to_string(row) + " 1\n";
    text += "}\n<TMode>: {\n1 " + std::string(200, 'a') + "\n1 " + std::string(200, 'a') + "\nx\n}\n";
    Texts const codes = Codes(text);
    EXPECT_EQ(codes.size(), 34U + 3U);
    for (std::string const& code : codes)
        EXPECT_EQ(code.find("P191"), std::string::npos) << code;
}
