#include <paramdb/platform/sea/pr_win.h>

#include <atomic>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace {

using Message = std::tuple<int, int, std::wstring>;

// Puts the sink before a test back after it.
class PrWinTest : public testing::Test {
protected:
    void SetUp() override { m_before = PrWin::SetSink({}); }
    void TearDown() override { PrWin::SetSink(m_before); }

    PrWin::Sink Collect() {
        return [this](int category, int style, std::wstring const& text) {
            m_messages.emplace_back(category, style, text);
        };
    }

    std::vector<Message> m_messages;

private:
    PrWin::Sink m_before;
};

TEST_F(PrWinTest, MessagesReachTheSink) {
    PrWin::SetSink(Collect());
    PrWin::Output(8, 3, L"bad\n");
    PrWin::Output(16, 1, L"");
    EXPECT_EQ(m_messages, (std::vector<Message>{{8, 3, L"bad\n"}, {16, 1, L""}}));
}

TEST_F(PrWinTest, SetSinkReturnsTheOneBefore) {
    EXPECT_FALSE(PrWin::SetSink(Collect()));
    PrWin::Sink const first = PrWin::SetSink([](int, int, std::wstring const&) {});
    ASSERT_TRUE(first);
    PrWin::Output(8, 1, L"to the second");
    first(1, 2, L"to the first");
    EXPECT_EQ(m_messages, (std::vector<Message>{{1, 2, L"to the first"}}));
    EXPECT_TRUE(PrWin::SetSink({}));
    EXPECT_FALSE(PrWin::SetSink({}));
}

TEST_F(PrWinTest, WithoutASinkTextGoesToStandardError) {
    testing::internal::CaptureStderr();
    PrWin::Output(8, 3, std::wstring(L"H\u00F6lder \0 ok\n", 13));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string("H\xC3\xB6lder \0 ok\n", 14).substr(0, 14));
}

TEST_F(PrWinTest, ASinkMayComeBack) {
    PrWin::SetSink([this](int category, int style, std::wstring const& text) {
        PrWin::SetSink(Collect());
        PrWin::Output(category + 1, style, text + L" again");
    });
    PrWin::Output(8, 3, L"once");
    PrWin::Output(8, 3, L"twice");
    EXPECT_EQ(m_messages, (std::vector<Message>{{9, 3, L"once again"}, {8, 3, L"twice"}}));
}

TEST_F(PrWinTest, AnExceptionOfTheSinkPassesThrough) {
    PrWin::SetSink([](int, int, std::wstring const&) { throw std::runtime_error("full"); });
    EXPECT_THROW(PrWin::Output(8, 3, L"x"), std::runtime_error);
}

TEST_F(PrWinTest, ManyThreadsAtOnce) {
    std::atomic<int> count = 0;
    PrWin::Sink const counting = [&count](int, int, std::wstring const&) { ++count; };
    PrWin::SetSink(counting);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&counting] {
            for (int j = 0; j < 1000; ++j) {
                PrWin::Output(8, 1, L"line\n");
                PrWin::SetSink(counting);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 4000);
}

} // namespace
