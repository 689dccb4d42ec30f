#include <paramdb/tables/load_progress.h>

#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

namespace {

using Call = std::tuple<std::wstring, std::size_t, std::size_t>;

void WaitForTheNextCall() {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
}

TEST(LoadProgress, CallsNowAndThen) {
    std::vector<Call> calls;
    paramdb::LoadProgress const note = [&](wchar_t const* step, std::size_t done, std::size_t total) {
        calls.emplace_back(step, done, total);
    };
    paramdb::ProgressScope const scope(note);
    paramdb::BeginProgress(L"read", 10);
    paramdb::AdvanceProgress(3);
    EXPECT_TRUE(calls.empty());
    WaitForTheNextCall();
    paramdb::AdvanceProgress(4);
    EXPECT_EQ(calls, (std::vector<Call>{{L"read", 7, 10}}));
    paramdb::AdvanceProgress(1);
    EXPECT_EQ(calls.size(), 1u);
    WaitForTheNextCall();
    paramdb::AdvanceProgress(100);
    paramdb::BeginProgress(L"derive", 2);
    WaitForTheNextCall();
    paramdb::AdvanceProgress(1);
    EXPECT_EQ(calls, (std::vector<Call>{{L"read", 7, 10}, {L"read", 10, 10}, {L"derive", 1, 2}}));
}

TEST(LoadProgress, WithoutScopeOrCallbackNothingHappens) {
    paramdb::BeginProgress(L"read", 10);
    paramdb::AdvanceProgress(3);
    paramdb::LoadProgress const none;
    paramdb::ProgressScope const scope(none);
    WaitForTheNextCall();
    paramdb::AdvanceProgress(3);
}

TEST(LoadProgress, InnerScopeGivesWayToTheOuterOne) {
    int outer_calls = 0;
    paramdb::LoadProgress const outer = [&](wchar_t const*, std::size_t, std::size_t) { ++outer_calls; };
    paramdb::LoadProgress const inner = [](wchar_t const*, std::size_t, std::size_t) { FAIL(); };
    paramdb::ProgressScope const scope(outer);
    paramdb::BeginProgress(L"read", 1);
    { paramdb::ProgressScope const nested(inner); }
    WaitForTheNextCall();
    paramdb::AdvanceProgress(1);
    EXPECT_EQ(outer_calls, 1);
}

TEST(LoadProgress, RowsAreCountedInLots) {
    std::size_t last_done = 0;
    paramdb::LoadProgress const note = [&](wchar_t const*, std::size_t done, std::size_t) {
        last_done = done;
    };
    paramdb::ProgressScope const scope(note);
    paramdb::BeginProgress(L"read", 5000);
    WaitForTheNextCall();
    {
        paramdb::RowProgress rows;
        for (int row = 0; row < 1023; ++row)
            rows.AddRow();
        EXPECT_EQ(last_done, 0u);
        rows.AddRow();
        EXPECT_EQ(last_done, 1024u);
        rows.AddRow();
        WaitForTheNextCall();
    }
    EXPECT_EQ(last_done, 1025u);
}

} // namespace
