#include "tests/tools/check/check_files.h"
#include "tests/tools/check/table_text.h"

#include <map>
#include <random>
#include <set>

namespace {

class PolygonPointsTest : public CheckTest {};

} // namespace

TEST_F(PolygonPointsTest, Polygons) {
    struct Case {
        std::string text;
        Texts findings;
    };
    std::string const line_begin = "-1 -1 -1 -1 7 -1 -1 0 3 5 0 ";
    Case const cases[] = {
        {TableText("TIpPolygonValue", {"1 0 1", "1 1 2", "2 5 1", "2 6 1"}), {}},
        {TableText("TIpPolygonValue", {"1 0 1", "2 5 1", "2 6 1", "3 1.5 1"}),
         {"2:1 P430 polygon 1 has no other point than this",
          "5:1 P430 polygon 3 has no other point than this"}},
        {TableText("TIpPolygonValue", {"-1 0 1"}), {"2:1 P430 polygon -1 has no other point than this"}},
        {TableText("TIpPolygon", {"1 0 Edge", "2 0 None"}) + TableText("TIpPolygonValue", {"1 0 1"}),
         {"3:1 P431 the polygon has no points", "6:1 P430 polygon 1 Edge has no other point than this"}},
        {TableText("TIpPolygon", {"1 0 Edge"}), {}},
        {TableText("TIpPolygonValue", {"1 3 1", "2 7 1", "1 1.5 2", "2 6 1", "1 2 2", "1 4 2"}),
         {"4:3 P432 x = 1.5 comes behind 3 in polygon 1, whose points count in the order of x",
          "5:3 P432 x = 6 comes behind 7 in polygon 2, whose points count in the order of x"}},
        // Rows that do not count: a duplicate and one that cannot be read.
        {TableText("TIpPolygonValue", {"1 3 1", "1 4 1", "1 3 2", "1 x", "1 5 1"}), {}},
        {TableText("TIpTrackPolygon", {line_begin + "1 1 2 0 0"}), {}},
        {TableText("TIpTrackPolygon", {line_begin + "0 2 1 0 0"}), {}},
        {TableText("TIpTrackPolygon", {line_begin + "1 2 2 0 0"}),
         {"2:33 P433 the line of two points ends at x = 2, which is not above its start at 2"}},
        {TableText("TIpTrackPolygon", {line_begin + "1 2.5 -1e3 0 0"}),
         {"2:35 P433 the line of two points ends at x = -1000, which is not above its start at 2.5"}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(RuleFindings(test.text), test.findings) << test.text;
}

TEST_F(PolygonPointsTest, RandomPoints) {
    std::size_t told = 0;
    for (unsigned seed = 1; seed <= 100; ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::vector<std::string> rows;
        std::vector<std::pair<int, int>> points;
        std::set<std::pair<int, int>> keys;
        for (int row = 0; row < 12; ++row) {
            int const polygon = static_cast<int>(random() % 5U);
            int const x = static_cast<int>(random() % 30U);
            if (!keys.insert({polygon, x}).second)
                continue;
            points.emplace_back(polygon, x);
            rows.push_back(std::to_string(polygon) + ' ' + std::to_string(x) + " 1");
        }
        std::multiset<std::string> expected;
        for (std::size_t row = 0; row < points.size(); ++row) {
            auto const& [polygon, x] = points[row];
            std::string const line = std::to_string(row + 2) + ':';
            std::size_t count = 0;
            for (auto const& other : points)
                count += other.first == polygon ? 1U : 0U;
            if (count == 1)
                expected.insert(line + "1 P430");
            for (std::size_t before = row; before-- > 0;) {
                if (points[before].first != polygon)
                    continue;
                if (points[before].second > x)
                    expected.insert(line + "3 P432");
                break;
            }
        }
        std::multiset<std::string> found;
        for (std::string const& finding : RuleFindings(TableText("TIpPolygonValue", rows)))
            found.insert(finding.substr(0, finding.find(' ') + 5));
        EXPECT_EQ(found, expected);
        told += expected.size();
    }
    EXPECT_GT(told, 200U);
}
