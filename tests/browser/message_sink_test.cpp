#include "tools/browser/message_sink.h"

#include <map>
#include <tests/browser/browser_test.h>
#include <tests/support/messages.h>
#include <thread>

namespace paramdb::browser {
namespace {

class BrowserMessageSink : public testing::Test {
protected:
    std::vector<Message> arrived;
    int calls = 0;
    std::optional<MessageSink> sink{std::in_place, [this](std::vector<Message> messages) {
                                        ++calls;
                                        arrived.insert(arrived.end(), messages.begin(), messages.end());
                                    }};
};

TEST_F(BrowserMessageSink, HandsOverFromTheEventLoopAllAtOnce) {
    PrWin::Output(8, 1, L"plain\n");
    PrWin::Output(8, 3, L"two\nlines\r\n");
    PrWin::Output(2, 4, L"");
    EXPECT_EQ(calls, 0);
    Settle();
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(arrived,
              (std::vector<Message>{
                  {8, 1, QStringLiteral("plain")}, {8, 3, QStringLiteral("two\nlines")}, {2, 4, QString()}}));
    EXPECT_EQ(sink->Count(), 3U);
    EXPECT_EQ(sink->CountOfStyle(3), 1U);
    EXPECT_EQ(sink->CountOfStyle(2), 0U);
}

TEST_F(BrowserMessageSink, FlushesAtOnceAndForgetsWithReset) {
    PrWin::Output(8, 1, L"first\n");
    sink->Flush();
    EXPECT_EQ(calls, 1);
    PrWin::Output(8, 1, L"second\n");
    sink->Reset();
    Settle();
    EXPECT_EQ(arrived, (std::vector<Message>{{8, 1, QStringLiteral("first")}}));
    EXPECT_EQ(sink->Count(), 0U);
    PrWin::Output(8, 1, L"third\n");
    Settle();
    EXPECT_EQ(arrived.size(), 2U);
}

TEST_F(BrowserMessageSink, KeepsAMillionMessagesFromFillingTheMemory) {
    for (std::size_t number = 0; number < MessageSink::Limit + 1000; ++number)
        PrWin::Output(8, 3, L"fault\n");
    Settle();
    EXPECT_EQ(arrived.size(), MessageSink::Limit);
    EXPECT_EQ(sink->CountOfStyle(3), MessageSink::Limit + 1000);
}

TEST_F(BrowserMessageSink, LosesNothingOfManyThreads) {
    constexpr int thread_count = 4;
    constexpr int message_count = 2000;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < thread_count; ++thread)
        threads.emplace_back([thread] {
            for (int number = 0; number < message_count; ++number)
                PrWin::Output(thread, number, L"x\n");
        });
    while (arrived.size() < thread_count * message_count / 2)
        Settle();
    for (std::thread& thread : threads)
        thread.join();
    Settle();
    std::map<int, int> next; // by thread, in the order in which each gave them
    for (Message const& message : arrived)
        EXPECT_EQ(message.style, next[message.category]++);
    EXPECT_EQ(arrived.size(), static_cast<std::size_t>(thread_count * message_count));
}

TEST_F(BrowserMessageSink, BringsBackTheSinkOfBefore) {
    sink.reset();
    MessageLog log;
    sink.emplace([](std::vector<Message>) {});
    PrWin::Output(8, 1, L"to the browser\n");
    sink.reset();
    PrWin::Output(8, 1, L"to the log\n");
    EXPECT_EQ(log.Take(), (std::vector<::Message>{{8, 1, L"to the log\n"}}));
}

} // namespace
} // namespace paramdb::browser
