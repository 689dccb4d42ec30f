#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/catalogue.h>

#include "tests/support/messages.h"
#include "tests/tools/command_run.h"
#include "tests/tools/sample_lake.h"

namespace {

using DumpVerbTest = CommandTest;

std::string const Modes = "<-\t<TMode>\n"
                          "   1:\t1 | Idle\n"
                          "   2:\t2 | Warm up\n"
                          "   3:\t3 | Pr\xC3\xBC"
                          "fen\n"
                          "   4:\t11 | 1. gear drive\n"
                          "->\t<TMode>\n";
std::string const Speeds = "<-\t<TRotorSpeed>\n"
                           "   1:\t1 1 | 0.1 1 10\n"
                           "   2:\t1 2 | 0.282609 13 46\n"
                           "   3:\t2 1 | inf 1 1\n"
                           "->\t<TRotorSpeed>\n";

} // namespace

TEST_F(DumpVerbTest, PrintsTablesInTheOrderAskedFor) {
    std::string const name = File(u8"a.lake", SampleLake);
    auto const run = RunCommand({"dump", "--table", "RotorSpeed", name, "-t", "<TMode>", "--table=TMode"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, Speeds + Modes + Modes);
}

TEST_F(DumpVerbTest, PrintsAllTablesAsTheLibraryDoes) {
    auto const run = RunCommand({"dump", File(u8"a.lake", SampleLake)});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_TRUE(run.out.starts_with(Modes + "<-\t<TChannel>\n->\t<TChannel>\n")) << run.out;
    MessageLog log;
    for (paramdb::CatalogueEntry const& entry : CQtParamInstance().Entries())
        entry.table->DumpTable(0);
    std::string expected;
    for (Message const& message : log.Take())
        expected += paramdb::ToUtf8(message.text);
    EXPECT_EQ(run.out, expected);
}

TEST_F(DumpVerbTest, TheLimitShowsOneRowMore) {
    std::string const name = File(u8"a.lake", SampleLake);
    struct Case {
        std::string limit;
        std::string out;
    };
    std::string const end = "->\t<TMode>\n";
    std::string const cut = "... more ...\n" + end;
    auto const rows = [](int count) {
        std::size_t size = 0;
        for (int line = 0; line <= count; ++line)
            size = Modes.find('\n', size) + 1;
        return Modes.substr(0, size);
    };
    Case const cases[] = {
        {"0", Modes},         {"1", rows(2) + cut}, {"2", rows(3) + cut},
        {"3", rows(4) + cut}, {"4", Modes},         {"2147483647", Modes},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand({"dump", name, "-t", "Mode", "--limit", test.limit});
        EXPECT_EQ(run.code, 0) << test.limit;
        EXPECT_EQ(run.out, test.out) << test.limit;
    }
}

TEST_F(DumpVerbTest, MessagesOfTheLoadGoToStandardError) {
    auto const run = RunCommand({"dump", File(u8"faulty.lake", FaultyLake), "--table", "Trigger"});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "<-\t<TTrigger>\n   1:\t1 | Speed 1\n->\t<TTrigger>\n");
    EXPECT_NE(run.err.find("<TTrigger>"), std::string::npos) << run.err;
}

TEST_F(DumpVerbTest, WrongArguments) {
    std::string const name = File(u8"a.lake", SampleLake);
    struct Case {
        std::vector<std::string> arguments;
        std::string message;
    };
    std::string const help = "Run with --help for more information.\n";
    Case const cases[] = {
        {{"dump"}, "FILE is required\n" + help},
        {{"dump", name, "--table", "Moode", "-t", "Mode", "-t", "qqqq"},
         "paramdb: Moode: no such table; did you mean <TMode>?\n"
         "paramdb: qqqq: no such table; `paramdb tables FILE...` lists them\n"},
        // A wrong table is told before any file is read.
        {{"dump", Name(u8"missing.lake"), "--table", "Moode"},
         "paramdb: Moode: no such table; did you mean <TMode>?\n"},
    };
    for (Case const& test : cases) {
        auto const run = RunCommand(test.arguments);
        EXPECT_EQ(run.code, 2) << test.message;
        EXPECT_EQ(run.out, "") << test.message;
        EXPECT_EQ(run.err, test.message);
    }
    for (char const* const limit : {"-1", "x", "1.5", "0x1", "2147483648"}) {
        auto const run = RunCommand({"dump", name, "--limit", limit});
        EXPECT_EQ(run.code, 2) << limit;
        EXPECT_EQ(run.out, "") << limit;
        EXPECT_EQ(run.err, std::string("--limit: ") + limit + " is no number from 0 to 2147483647\n" + help);
    }
}

TEST_F(DumpVerbTest, NothingOfARefusedLoad) {
    auto const run = RunCommand({"dump", File(u8"old.lake", RefusedLake)});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.err.find("999.0"), std::string::npos) << run.err;
}

TEST_F(DumpVerbTest, TheHelpTellsOfTheLimit) {
    auto const run = RunCommand({"dump", "--help"});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("Print N + 1 rows of each table at most, then \"... more ...\"; 0 for all rows"),
              std::string::npos)
        << run.out;
}

TEST_F(DumpVerbTest, GivesTheSinkBack) {
    MessageLog log;
    RunCommand({"dump", File(u8"a.lake", SampleLake)});
    EXPECT_TRUE(log.Take().empty());
    PrWin::Output(8, 1, L"later\n");
    EXPECT_EQ(log.Take().size(), 1U);
}
