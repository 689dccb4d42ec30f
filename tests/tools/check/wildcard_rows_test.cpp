#include <paramdb/query/param_instance.h>

#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <algorithm>
#include <array>
#include <random>
#include <set>

namespace {

class WildcardRowsTest : public CheckTest {};

using Key = std::array<int, 6>;

std::string KeyText(Key const& key) {
    std::string text;
    for (int const element : key)
        text += std::to_string(element) + ' ';
    return text;
}

std::string Tables(std::vector<Key> const& keys, std::vector<Key> const& rows) {
    std::vector<std::string> key_rows;
    for (Key const& key : keys)
        key_rows.push_back(KeyText(key) + "1 0 0 0 1");
    std::vector<std::string> polygon_rows;
    for (Key const& key : rows)
        polygon_rows.push_back(KeyText(key) + "-1 0 3 -1 0 0 0 0 0 0");
    return TableText("TIpParamAndStore", key_rows) + TableText("TIpTrackPolygon", polygon_rows);
}

} // namespace

TEST_F(WildcardRowsTest, Rows) {
    struct Case {
        std::vector<Key> keys;
        std::vector<Key> rows;
        Texts findings;
    };
    std::string const none = "P440 no key of <TIpParamAndStore> matches this row";
    std::string const another = ": another row matches as well and comes first";
    std::string const wider = ": a row with more wildcards matches as well and comes first";
    Case const cases[] = {
        {{{1, 1, 1, 1, 1, 1}, {2, 1, 1, 1, 1, 1}}, {{1, -1, -1, -1, 1, -1}, {2, -1, -1, -1, 1, -1}}, {}},
        {{{1, 1, 1, 1, 1, 1}}, {{1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 2, 1}}, {"6:1 " + none}},
        {{}, {{-1, -1, -1, -1, -1, -1}}, {"4:1 " + none}},
        // -1 in a key is a value as any other.
        {{{-1, 1, 1, 1, 1, 1}},
         {{2, -1, -1, -1, 1, -1}, {-1, -1, -1, -1, 2, -1}},
         {"5:1 " + none, "6:1 " + none}},
        {{{-1, 1, 1, 1, 1, 1}}, {{-1, 1, 1, 1, 1, 1}}, {}},
        {{{1, 1, 1, 1, 1, 1}, {1, 1, 1, 2, 1, 1}, {2, 1, 1, 1, 1, 1}},
         {{1, 1, -1, -1, 1, -1}, {-1, 1, -1, 1, 1, -1}},
         {"7:1 P441 the row does not count for 1 key that it matches" + another}},
        {{{1, 1, 1, 1, 1, 1}, {1, 1, 1, 2, 1, 1}, {2, 1, 1, 1, 1, 1}},
         {{-1, 1, -1, -1, 1, -1}, {1, 1, -1, -1, 1, -1}},
         {"8:1 P442 the row does not count for any key" + wider}},
        // The wider row comes later where its wildcard is in a later element.
        {{{1, 1, 1, 1, 1, 1}, {1, 1, 1, 1, 1, 2}},
         {{-1, 1, 1, 1, 1, 1}, {1, -1, -1, -1, 1, -1}},
         {"7:1 P441 the row does not count for 1 key that it matches" + another}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(RuleFindings(Tables(test.keys, test.rows)), test.findings);
    EXPECT_EQ(
        RuleFindings(TableText("TIpTrackPolygon", {KeyText({9, 9, 9, 9, 9, 9}) + "-1 0 3 -1 0 0 0 0 0 0"})),
        Texts());
}

// Every key against every row; what the load expands must agree.
TEST_F(WildcardRowsTest, RandomRows) {
    std::size_t told = 0;
    for (unsigned seed = 1; seed <= 80; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        auto const keys_of = [&](std::size_t count, int lowest, int values) {
            std::set<Key> keys;
            while (keys.size() < count) {
                Key key{};
                for (int& element : key)
                    element = lowest + static_cast<int>(random() % static_cast<unsigned>(values));
                keys.insert(key);
            }
            return std::vector<Key>(keys.begin(), keys.end());
        };
        std::vector<Key> const keys = keys_of(20, 0, 2);
        std::vector<Key> const rows = keys_of(12, -1, 3);
        auto const matches = [](Key const& row, Key const& key) {
            for (std::size_t place = 0; place < key.size(); ++place)
                if (row[place] != -1 && row[place] != key[place])
                    return false;
            return true;
        };
        auto const wildcards = [](Key const& row) { return std::count(row.begin(), row.end(), -1); };
        Texts expected;
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::size_t wins = 0;
            std::size_t losses = 0;
            std::size_t first_winner = 0;
            for (Key const& key : keys) {
                if (!matches(rows[row], key))
                    continue;
                std::size_t winner = 0;
                while (!matches(rows[winner], key))
                    ++winner;
                if (winner == row)
                    ++wins;
                else if (losses++ == 0)
                    first_winner = winner;
            }
            std::string const begin = std::to_string(keys.size() + 4 + row) + ":1 ";
            if (wins + losses == 0)
                expected.push_back(begin + "P440 no key of <TIpParamAndStore> matches this row");
            else if (losses > 0) {
                bool const is_wider = wildcards(rows[first_winner]) > wildcards(rows[row]);
                std::string const count =
                    wins == 0
                        ? "any key"
                        : std::to_string(losses) + (losses == 1 ? " key" : " keys") + " that it matches";
                expected.push_back(begin + (is_wider ? "P442" : "P441") + " the row does not count for " +
                                   count + ": " + (is_wider ? "a row with more wildcards" : "another row") +
                                   " matches as well and comes first");
            }
        }
        EXPECT_EQ(RuleFindings(Tables(keys, rows)), expected);
        told += expected.size();
        std::size_t const matched =
            static_cast<std::size_t>(std::count_if(keys.begin(), keys.end(), [&](Key const& key) {
                return std::any_of(rows.begin(), rows.end(),
                                   [&](Key const& row) { return matches(row, key); });
            }));
        EXPECT_EQ(CQtParamInstance().GroupInfo().Entries().size(), matched);
    }
    EXPECT_GT(told, 200U);
}
