#include "tests/tools/check/check_files.h"

namespace {

class SuppressionTest : public CheckTest {};

std::string const Doubled = "<TMode>: {\n1 a\n1 b\n2 c\n2 d\n}\n";

} // namespace

TEST_F(SuppressionTest, ScopesAndCodes) {
    struct Case {
        std::string text;
        Texts codes; // line:column CODE
    };
    Case const cases[] = {
        {Doubled, {"3:1 P204", "5:1 P204"}},
        {"; paramdb: disable P204\n" + Doubled, {}},
        {"; paramdb: disable duplicate-row\n\n; more about it\n" + Doubled, {}},
        {";paramdb:disable p204,P205\n" + Doubled, {"1:23 P193"}},
        {"; paramdb: disable all\n" + Doubled, {}},
        {"; paramdb: disable P204\n<TChannel>: {\n}\n" + Doubled, {"1:20 P193", "6:1 P204", "8:1 P204"}},
        {"<TMode>: {\n1 a\n1 b\n} ; paramdb: disable P204\n", {}},
        {Doubled + "; paramdb: disable-file P204\n", {}},
        {"; paramdb: disable P204 for 2\n" + Doubled, {"4:1 P204"}},
        {"; paramdb: disable P204 for 3..\n" + Doubled, {"1:20 P193", "4:1 P204", "6:1 P204"}},
        {"; paramdb: disable P112\n<x>: 1\n<y>: 2\n", {"3:1 P112"}},
        {"; paramdb: disable-file unknown-key\n<x>: 1\n<y>: 2\n", {}},
        {"; paramdb: disable P112 for 1\n<x>: 1\n", {"1:25 P192", "2:1 P112"}},
        {"; paramdb: disable P204 for 1x\n" + Doubled, {"1:29 P192", "4:1 P204", "6:1 P204"}},
        {"; paramdb: disable P204 for\n" + Doubled, {}},
        {"; paramdb: disable\n", {}},
        {"; paramdb:\n", {"1:3 P192"}},
        {"; paramdb: disable P20 P204\n" + Doubled, {"1:20 P192"}},
        {"; about paramdb: disable P204\n" + Doubled, {"4:1 P204", "6:1 P204"}},
        {"<TMode>: {\n1 \"paramdb: disable P204\"\n1 b\n}\n", {"3:1 P204"}},
        {"; paramdb: disable P105\n<TMode>: {\n1 a\n", {}},
        {"; paramdb: disable P112\n", {"1:20 P193"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(Codes(test.text), test.codes) << test.text;
}

// Many comments that stand together, and many for the rows of one table, take no time to speak of.
TEST_F(SuppressionTest, ManyComments) {
    std::string comments;
    std::string rows;
    for (int row = 0; row < 20000; ++row)
        comments += "; paramdb: disable P204\n";
    EXPECT_EQ(Codes(comments + Doubled), Texts());
    comments.clear();
    for (int row = 0; row < 700; ++row) {
        std::string const key = std::to_string(row);
        comments += "; paramdb: disable P204 for " + key + '\n';
        rows += key + " a\n" + key + " b\n";
    }
    EXPECT_EQ(Codes(comments + "<TMode>: {\n" + rows + "}\n"), Texts());
}

TEST_F(SuppressionTest, AFileSpeaksForItself) {
    Texts const findings = Findings({"; paramdb: disable-file P112\n<x>: 1\n", "<y>: 1\n"});
    EXPECT_EQ(findings, Texts{"1:1:1 P112 nothing looks for the key <y>"});
}

TEST_F(SuppressionTest, IdleOnesAreToldOnlyAfterALoad) {
    auto const run =
        RunCommand({"check", File(u8"old.lake", "; paramdb: disable P204\n<DbDesign.CacheVersion>: 1\n")});
    EXPECT_EQ(run.out.find("P193"), std::string::npos) << run.out;
}
