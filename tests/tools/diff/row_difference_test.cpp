#include "tests/tools/diff/row_samples.h"
#include "tools/diff/row_difference.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <set>

using namespace paramdb::tools;

namespace {

// A difference in words: "+7", "-7", "7>8:2,6" by the counts of the rows and the columns that differ.
std::vector<std::string> Words(RowTable const& a, RowTable const& b) {
    auto const count = [](RowTable const& table, std::size_t row) {
        return std::to_string(std::get<std::uint32_t>(table.Value(row, 2)));
    };
    std::vector<std::string> words;
    for (RowDifference const& row : CompareTables(a, b)) {
        if (row.change == RowChange::Added) {
            words.push_back("+" + count(b, row.row_b));
        } else if (row.change == RowChange::Removed) {
            words.push_back("-" + count(a, row.row_a));
        } else {
            std::string text = count(a, row.row_a) + ">" + count(b, row.row_b);
            for (std::size_t column = 0; column < 32; ++column)
                if ((row.columns >> column & 1U) != 0)
                    text += (text.find(':') == text.npos ? ":" : ",") + std::to_string(column);
            words.push_back(text);
        }
    }
    return words;
}

// By itself: each key with the rows that it has, as text.
using Model = std::map<std::string, std::multiset<std::string>>;

std::string TextOf(SampleRow const& row) {
    return std::to_string(row.count) + "/" + std::to_string(row.total) + "/" +
           std::string(row.note.begin(), row.note.end());
}

Model ModelOf(std::vector<SampleRow> const& rows) {
    Model model;
    for (SampleRow const& row : rows)
        model[std::to_string(row.id) + "/" + std::string(row.part.begin(), row.part.end())].insert(
            TextOf(row));
    return model;
}

DifferenceCounts CountsOf(Model a, Model b) {
    DifferenceCounts counts;
    std::set<std::string> keys;
    for (Model const* const model : {&a, &b})
        for (auto const& [key, rows] : *model)
            keys.insert(key);
    for (std::string const& key : keys) {
        auto& in_a = a[key];
        auto& in_b = b[key];
        for (auto row = in_a.begin(); row != in_a.end();) {
            auto const same = in_b.find(*row);
            if (same == in_b.end()) {
                ++row;
            } else {
                in_b.erase(same);
                row = in_a.erase(row);
            }
        }
        if (in_a.size() == 1 && in_b.size() == 1)
            ++counts.changed;
        else
            counts += {in_b.size(), in_a.size(), 0};
    }
    return counts;
}

// A number below the limit.
unsigned int Draw(std::mt19937& random, unsigned int limit) {
    return static_cast<unsigned int>(random() % limit);
}

std::vector<SampleRow> RandomRows(std::mt19937& random, bool unique_keys) {
    std::vector<SampleRow> rows;
    std::set<std::pair<int, std::wstring>> keys;
    for (unsigned int count = Draw(random, 12); count > 0; --count) {
        SampleRow row{static_cast<int>(Draw(random, 4)) - 1,
                      std::wstring(Draw(random, 3), L'k'),
                      Draw(random, 3),
                      static_cast<std::int64_t>(Draw(random, 2)),
                      0,
                      0,
                      Draw(random, 2) == 0 ? L"a" : L"b"};
        if (keys.emplace(row.id, row.part).second || !unique_keys)
            rows.push_back(std::move(row));
    }
    return rows;
}

void ExpectCounts(DifferenceCounts const& found, DifferenceCounts const& expected) {
    EXPECT_EQ(found.added, expected.added);
    EXPECT_EQ(found.removed, expected.removed);
    EXPECT_EQ(found.changed, expected.changed);
}

} // namespace

TEST(RowDifferenceTest, TellsWhatDiffers) {
    struct Case {
        char const* name;
        std::vector<SampleRow> a;
        std::vector<SampleRow> b;
        std::vector<std::string> words;
    };
    SampleRow const one{1, L"a", 1};
    SampleRow const two{2, L"a", 2};
    SampleRow const three{3, L"a", 3};
    for (Case const& sample : std::vector<Case>{
             {"nothing", {}, {}, {}},
             {"the same", {one, two}, {one, two}, {}},
             {"another order", {one, two, three}, {three, one, two}, {}},
             {"added", {two}, {one, two, three}, {"+1", "+3"}},
             {"removed", {one, two, three}, {two}, {"-1", "-3"}},
             {"added to nothing", {}, {two, one}, {"+1", "+2"}},
             {"removed to nothing", {two, one}, {}, {"-1", "-2"}},
             {"a new key", {one}, {two}, {"-1", "+2"}},
             {"changed", {one, two}, {one, {2, L"a", 9}}, {"2>9:2"}},
             {"all columns", {{1, L"", 1, 1, 1, 1, L"a"}}, {{1, L"", 2, 2, 2, 2, L"b"}}, {"1>2:2,3,4,5,6"}},
             {"a text", {{1, L"", 1, 0, 0, 0, L"a"}}, {{1, L"", 1, 0, 0, 0, L"A"}}, {"1>1:6"}},
             {"the sign of 0", {{1, L"", 1, 0, 0.0f, -0.0}}, {{1, L"", 1, 0, -0.0f, 0.0}}, {}},
             {"key by text", {{1, L"a", 1}}, {{1, L"b", 2}}, {"-1", "+2"}},
             {"in key order", {one, three}, {{0, L"", 4}, {1, L"a", 5}, two}, {"+4", "1>5:2", "+2", "-3"}},
             {"equal keys in another order", {{1, L"", 1}, {1, L"", 2}}, {{1, L"", 2}, {1, L"", 1}}, {}},
             {"one more of a key",
              {{1, L"", 1}, {1, L"", 2}},
              {{1, L"", 1}, {1, L"", 2}, {1, L"", 1}},
              {"+1"}},
             {"one less of a key", {{1, L"", 1}, {1, L"", 1}}, {{1, L"", 1}}, {"-1"}},
             {"one other of a key",
              {{1, L"", 1}, {1, L"", 2}, {1, L"", 3}},
              {{1, L"", 3}, {1, L"", 4}, {1, L"", 1}},
              {"2>4:2"}},
             {"two others of a key",
              {{1, L"", 1}, {1, L"", 3}, {1, L"", 2}},
              {{1, L"", 4}, {1, L"", 3}, {1, L"", 5}},
              {"-1", "-2", "+4", "+5"}},
             {"one becomes two", {{1, L"", 1}}, {{1, L"", 2}, {1, L"", 3}}, {"-1", "+2", "+3"}},
         }) {
        SCOPED_TRACE(sample.name);
        EXPECT_EQ(Words(SampleTable(sample.a), SampleTable(sample.b)), sample.words);
    }
}

TEST(RowDifferenceTest, AgreesWithAModel) {
    for (unsigned int seed = 0; seed < 4000; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        bool const unique_keys = seed % 2 == 0;
        auto const a = RandomRows(random, unique_keys);
        auto b = RandomRows(random, unique_keys);
        auto const table_a = SampleTable(a);
        auto const table_b = SampleTable(b);
        auto const rows = CompareTables(table_a, table_b);
        ExpectCounts(paramdb::tools::CountsOf(rows), CountsOf(ModelOf(a), ModelOf(b)));

        // What a diff says, done to A, gives B.
        std::vector<std::size_t> kept;
        std::vector<SampleRow> made;
        for (std::size_t row = 0; row < table_a.size(); ++row)
            kept.push_back(row);
        RowTable result(SampleColumns());
        auto const add = [&result](RowTable const& table, std::size_t row) {
            std::vector<FieldValue> fields;
            for (std::size_t column = 0; column < 7; ++column)
                fields.push_back(table.Value(row, column));
            result.Add(fields);
        };
        for (RowDifference const& row : rows) {
            if (row.change != RowChange::Added)
                std::erase(kept, row.row_a);
            if (row.change != RowChange::Removed)
                add(table_b, row.row_b);
        }
        for (std::size_t const row : kept)
            add(table_a, row);
        result.Sort();
        EXPECT_TRUE(CompareTables(result, table_b).empty());

        // And back.
        auto const back = CompareTables(table_b, table_a);
        auto const counts = paramdb::tools::CountsOf(back);
        auto const there = paramdb::tools::CountsOf(rows);
        ExpectCounts(counts, {there.removed, there.added, there.changed});
        for (RowDifference const& row : rows)
            EXPECT_EQ(std::ranges::count_if(
                          back,
                          [&row](RowDifference const& other) {
                              return row.change == RowChange::Changed
                                         ? other.change == RowChange::Changed && other.row_a == row.row_b &&
                                               other.row_b == row.row_a && other.columns == row.columns
                                     : row.change == RowChange::Added
                                         ? other.change == RowChange::Removed && other.row_a == row.row_b
                                         : other.change == RowChange::Added && other.row_b == row.row_a;
                          }),
                      1);

        // The order of rows does not count.
        std::shuffle(b.begin(), b.end(), random);
        EXPECT_TRUE(CompareTables(table_b, SampleTable(b)).empty());
    }
}
