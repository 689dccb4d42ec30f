#include "tests/support/messages.h"
#include "tools/colour.h"
#include "tools/messages.h"
#include "tools/quiet.h"

#include <gtest/gtest.h>
#include <sstream>
#include <thread>

using namespace paramdb::tools;

TEST(CommandMessages, ShowsEachMessageAtOnceAndCountsIt) {
    std::ostringstream stream;
    MessageCollector const messages(stream);
    PrWin::Output(8, 3, L"row 1 of \u00DCbersicht\n");
    EXPECT_EQ(stream.str(), "row 1 of \u00DCbersicht\n");
    PrWin::Output(16, 1, L"a line without its end");
    PrWin::Output(8, 3, L"again\n");
    EXPECT_EQ(stream.str(), "row 1 of \u00DCbersicht\na line without its endagain\n");
    EXPECT_EQ(messages.Counts(), (MessageCounts{{{8, 3}, 2}, {{16, 1}, 1}}));
}

TEST(CommandMessages, GivesTheSinkBack) {
    MessageLog log;
    std::ostringstream stream;
    {
        MessageCollector const messages(stream);
        PrWin::Output(8, 1, L"inside\n");
    }
    PrWin::Output(8, 1, L"outside\n");
    EXPECT_EQ(stream.str(), "inside\n");
    EXPECT_EQ(log.Take(), (std::vector<Message>{{8, 1, L"outside\n"}}));
}

TEST(CommandMessages, TellsFindingsFromPlainLines) {
    struct Case {
        MessageCounts counts;
        bool findings;
    };
    Case const cases[] = {
        {{}, false},
        {{{{8, 1}, 5}, {{16, 1}, 1}}, false},
        {{{{8, 2}, 1}}, false},
        {{{{8, 1}, 5}, {{16, 3}, 1}}, true},
        {{{{8, 4}, 1}}, true},
    };
    for (Case const& test : cases)
        EXPECT_EQ(HasFindings(test.counts), test.findings);
    EXPECT_EQ(CountOfStyle({{{8, 3}, 2}, {{16, 3}, 5}, {{8, 4}, 1}}, 3), 7U);
}

TEST(CommandMessages, TakesMessagesOfSeveralThreads) {
    std::ostringstream stream;
    MessageCollector const messages(stream);
    auto const work = [] {
        for (int round = 0; round < 500; ++round)
            PrWin::Output(8, 3, L"x\n");
    };
    std::thread first(work);
    std::thread second(work);
    first.join();
    second.join();
    EXPECT_EQ(messages.Counts(), (MessageCounts{{{8, 3}, 1000}}));
    EXPECT_EQ(stream.str().size(), 2000U);
}

TEST(CommandMessages, QuietStreamGetsRefusalsAlone) {
    std::ostringstream stream;
    SetQuiet(stream, true);
    MessageCollector const messages(stream);
    PrWin::Output(8, 1, L"plain\n");
    PrWin::Output(8, 3, L"fault\n");
    PrWin::Output(8, 4, L"refusal\n");
    EXPECT_EQ(stream.str(), "refusal\n");
    EXPECT_EQ(messages.Counts(), (MessageCounts{{{8, 1}, 1}, {{8, 3}, 1}, {{8, 4}, 1}}));
}

TEST(CommandMessages, AreColouredByTheirStyle) {
    std::ostringstream stream;
    SetColoured(stream, true);
    MessageCollector const messages(stream);
    PrWin::Output(8, 1, L"plain\n");
    PrWin::Output(8, 3, L"fault\n");
    PrWin::Output(8, 4, L"refusal\n");
    EXPECT_EQ(stream.str(), "plain\n\x1B[1;35mfault\x1B[0m\n\x1B[1;31mrefusal\x1B[0m\n");
}
