// Const members of one lake in several threads at once.
#include <paramdb/storage/lake.h>

#include "lake_support.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr int Tables = 20;
constexpr int RowsOfATable = 50;

std::string Text() {
    std::string text = "<V>: 216\n";
    for (int table = 0; table < Tables; ++table) {
        text += "<T" + std::to_string(table) + ">: {\n";
        for (int row = 0; row < RowsOfATable; ++row)
            text += std::to_string(table) + " " + std::to_string(row) + " \"a: b\"\n";
        text += "key: " + std::to_string(table) + "\n} ; note\n";
    }
    return text;
}

/// Runs the reader in some threads that begin together.
template <class Reader>
void InThreads(Reader const& reader) {
    constexpr int count = 4;
    std::atomic<int> waiting = count;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < count; ++thread)
        threads.emplace_back([&waiting, &reader] {
            --waiting;
            while (waiting > 0)
                std::this_thread::yield();
            reader();
        });
    for (std::thread& thread : threads)
        thread.join();
}

} // namespace

TEST(LakeThreads, EveryThreadSeesTheSameTexts) {
    CLake lake;
    lake_support::ReadText(lake, Text());
    CLake const& constant = lake;
    std::atomic<int> texts = 0;
    std::atomic<std::wstring const*> first = nullptr;
    InThreads([&] {
        for (CLake::CNode const& node : constant) {
            std::wstring const all = node.key() + node.value() + node.comment();
            texts += static_cast<int>(all.size());
            if (!(node.key_text() == node.key()) || !(node.value_text() == node.value()))
                texts += 1'000'000;
        }
        std::wstring const* expected = nullptr;
        std::wstring const* const value = &constant[L"<V>"].position->value();
        if (!first.compare_exchange_strong(expected, value) && expected != value)
            texts += 1'000'000;
    });
    std::size_t length = 0;
    for (CLake::CNode const& node : constant)
        length += node.key().size() + node.value().size() + node.comment().size();
    EXPECT_EQ(texts, 4 * static_cast<int>(length));
}

TEST(LakeThreads, LookupsRunSideBySide) {
    CLake lake;
    lake_support::ReadText(lake, Text());
    lake[L"<T3>"].position->push_back(L"last");
    CLake const& constant = lake;
    std::atomic<int> found = 0;
    InThreads([&] {
        for (int table = 0; table < Tables; ++table) {
            std::wstring const number = std::to_wstring(table);
            auto const proxy = constant[L"<T" + number + L">"];
            CLake::CNode const& section = *proxy.position;
            if (proxy.found() && section[L"key"].number() == table &&
                section.find(L"x") == section.section_end() &&
                section.find_value(number + L" 49 \"a: b\"") == 49)
                ++found;
        }
        if (!constant[L"<T20>"].found() && constant[L"<V>"].number() == 216 && !constant.empty() &&
            constant[L"<T3>"].position->find_value(L"last") == 50)
            ++found;
    });
    EXPECT_EQ(found, 4 * (Tables + 1));
}

TEST(LakeThreads, CopyingAndMergingOnlyReadTheSource) {
    CLake lake;
    lake_support::ReadText(lake, Text());
    std::atomic<std::size_t> nodes = 0;
    InThreads([&] {
        CLake const copy(lake);
        CLake merged;
        merged.merge(lake);
        CLake assigned;
        assigned = lake;
        for (CLake::CNode const& node : static_cast<CLake const&>(lake))
            nodes += node.value().empty() ? 0U : 1U;
        nodes += copy.size() + merged.size() + assigned.size();
    });
    // Every line but the root has a value.
    EXPECT_EQ(nodes, 4 * (3 * lake.size() + 2 + lake.size() - 1));
}

TEST(LakeThreads, EveryThreadSeesTheSameVectorOfRows) {
    CLake lake;
    lake_support::ReadText(lake, Text());
    CLake const& constant = lake;
    std::atomic<CLake::CNode::unnamed_vector::const_pointer> first = nullptr;
    std::atomic<int> rows = 0;
    InThreads([&] {
        CLake::CNode const& section = *constant[L"<T7>"].position;
        rows += static_cast<int>(section.end_unnamed() - section.begin_unnamed());
        CLake::CNode::unnamed_vector::const_pointer expected = nullptr;
        auto const mine = &*section.begin_unnamed();
        if (!first.compare_exchange_strong(expected, mine)) {
            EXPECT_EQ(mine, expected);
        }
    });
    EXPECT_EQ(rows, 4 * RowsOfATable);
}
