#include <paramdb/distillery/row_names.h>
#include <paramdb/tables/system_rows.h>
#include <paramdb/tables/unique_vector_map.h>

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <tests/distillery/derivation_support.h>
#include <tests/support/extremes.h>
#include <thread>
#include <utility>
#include <vector>

namespace {

using NamedParameters = CDbUniqueMap<QIdx1, QVInstrumentParam>;
using ParameterNames = CRowNames<NamedParameters>;

std::pair<QIdx1, QVInstrumentParam> NamedParameter(int id, std::wstring_view name) {
    return {id, QVInstrumentParam(1, name, 0, 0u, 0u)};
}

TEST(RowNames, OfAnEmptyTable) {
    NamedParameters const table;
    ParameterNames const names(table);
    for (int const id : {-1, 0, 1, Lowest, Highest})
        EXPECT_EQ(names.Name(id), L"");
}

TEST(RowNames, EachIdHasTheNameOfItsRow) {
    NamedParameters table;
    std::wstring const longest(199, L'n');
    table.insert(NamedParameter(Lowest, L"lowest"));
    table.insert(NamedParameter(-1, L""));
    table.insert(NamedParameter(0, longest));
    table.insert(NamedParameter(7, L"seven \u20AC"));
    table.insert(NamedParameter(Highest, L"h"));
    ParameterNames const names(table);
    EXPECT_EQ(names.Name(Lowest), L"lowest");
    EXPECT_EQ(names.Name(-1), L"");
    EXPECT_EQ(names.Name(0), longest);
    EXPECT_EQ(names.Name(7), L"seven \u20AC");
    EXPECT_EQ(names.Name(Highest), L"h");
    for (int const id : {Lowest + 1, -2, 1, 6, 8, Highest - 1})
        EXPECT_EQ(names.Name(id), L"") << id;
}

TEST(RowNames, FollowEveryChangeOfTheTable) {
    NamedParameters table;
    ParameterNames const names(table);
    using NamesOfAll = std::vector<std::wstring>;
    auto const all = [&names] {
        NamesOfAll texts;
        for (int id = 0; id < 4; ++id)
            texts.emplace_back(names.Name(id));
        return texts;
    };
    EXPECT_EQ(all(), (NamesOfAll{L"", L"", L"", L""}));
    table.insert(NamedParameter(2, L"two"));
    EXPECT_EQ(all(), (NamesOfAll{L"", L"", L"two", L""}));
    table.insert(NamedParameter(0, L"zero"));
    EXPECT_FALSE(table.insert(NamedParameter(2, L"other")).second); // the key is taken
    EXPECT_EQ(all(), (NamesOfAll{L"zero", L"", L"two", L""}));
    table.erase(table.find(2));
    table.insert(NamedParameter(2, L"2")); // as many rows as before
    EXPECT_EQ(all(), (NamesOfAll{L"zero", L"", L"2", L""}));
    table.erase(table.begin());
    EXPECT_EQ(all(), (NamesOfAll{L"", L"", L"2", L""}));
    table.clear();
    EXPECT_EQ(all(), (NamesOfAll{L"", L"", L"", L""}));
    {
        NamedParameters::Filler filler(table);
        filler.Add(3, NamedParameter(3, L"three").second);
        filler.Add(1, NamedParameter(1, L"one").second);
        filler.Finish();
    }
    EXPECT_EQ(all(), (NamesOfAll{L"", L"one", L"", L"three"}));
}

TEST(RowNames, RandomTablesAgainstAMap) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        SCOPED_TRACE(seed);
        derivation::Random random(seed);
        NamedParameters table;
        ParameterNames const names(table);
        std::map<int, std::wstring> model;
        int const factor = random.Pick(std::vector<int>{1, 1, 3, 10'000'000});
        auto const any_id = [&] { return random.Between(-50, 150) * factor; };
        for (int round = 0; round < 3; ++round) {
            for (int rows = random.Between(0, 60); rows > 0; --rows) {
                int const id = any_id();
                std::wstring const name(static_cast<std::size_t>(random.Between(0, 40)),
                                        static_cast<wchar_t>(L'a' + rows % 26));
                table.insert(NamedParameter(id, name));
                model.try_emplace(id, name);
            }
            for (int sought = 0; sought < 60; ++sought) {
                int const id = any_id();
                ASSERT_EQ(names.Name(id), model.contains(id) ? model[id] : L"") << id;
            }
        }
    }
}

// The first questions come from all threads at once.
TEST(RowNames, SeveralThreads) {
    NamedParameters table;
    for (int id = 0; id < 500; ++id)
        table.insert(NamedParameter(id, std::to_wstring(id)));
    ParameterNames const names(table);
    std::vector<int> wrong(8);
    std::vector<std::thread> threads;
    for (int& count : wrong)
        threads.emplace_back([&names, &count] {
            for (int id = 0; id < 500; ++id)
                count += names.Name(id) == std::to_wstring(id) ? 0 : 1;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(8));
}

} // namespace
