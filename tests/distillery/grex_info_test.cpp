#include <paramdb/distillery/grex_info.h>

#include "derivation_support.h"

#include <cmath>
#include <limits>
#include <map>

using derivation::Random;

namespace {

using Point = CGrexInfo::group_element;
using GrexEntry = CGrexInfo::entry;
using Groups = std::map<CGrexInfo::group_map::key_type, CGrexInfo::group_element>;
using GrexEntries = std::map<QClavis, CGrexInfo::entry>;

Groups GroupsOf(CGrexInfo const& grex) {
    return Groups(grex.Groups().begin(), grex.Groups().end());
}

GrexEntries EntriesOf(CGrexInfo const& grex) {
    return GrexEntries(grex.Entries().begin(), grex.Entries().end());
}
using Messages = std::vector<Message>;

Message Ambiguous() {
    return {8, 1, L"CGrexInfo::Init(): ambiguous keys while trying to expand wildcards\n"};
}

class GrexInfo : public derivation::DerivationTest {
protected:
    void Polygon(int number, std::initializer_list<Point> points) {
        for (Point const& point : points)
            tables.IpPolygonValue.insert({{number, point.x}, QVIpY(point.y)});
    }
    void Concrete(QClavis const& key) { tables.IpParamAndStore.insert({key, QVIpParamAndStore()}); }
    void Pattern(QClavis const& key, QVIpTrackPolygon const& row) {
        tables.IpTrackPolygon.insert({key, row});
    }
    // A row that names a polygon.
    void ByNumber(QClavis const& key, int polygon, int area, int source) {
        Pattern(key, QVIpTrackPolygon(polygon, 1, area, source, 100.0f, 0, 1.0f, 2.0f, 3.0f, 4.0f));
    }
    // A row that is a line from (1, 3) to (2, 4), moved up by the offset.
    void TwoPoints(QClavis const& key, int polygon, int area, int source, float offset) {
        Pattern(key, QVIpTrackPolygon(polygon, 0, area, source, offset, 1, 1.0f, 2.0f, 3.0f, 4.0f));
    }

    CGrexInfo grex{distillery};
};

TEST_F(GrexInfo, EmptyTables) {
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), Groups());
    EXPECT_EQ(EntriesOf(grex), GrexEntries());
    EXPECT_EQ(grex.Group(0), std::vector<Point>());
    EXPECT_EQ(grex.Entry({}), nullptr);
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(GrexInfo, PolygonsAreNumberedFromZeroByAscendingX) {
    Polygon(7, {{30.0f, 1.0f}, {-10.0f, 2.0f}, {20.5f, 3.0f}});
    Polygon(3, {{5.0f, -4.0f}});
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), (Groups{{{3, 0}, {5.0f, -4.0f}},
                                      {{7, 0}, {-10.0f, 2.0f}},
                                      {{7, 1}, {20.5f, 3.0f}},
                                      {{7, 2}, {30.0f, 1.0f}}}));
    EXPECT_EQ(grex.Group(7), (std::vector<Point>{{-10.0f, 2.0f}, {20.5f, 3.0f}, {30.0f, 1.0f}}));
    EXPECT_EQ(grex.Group(3), (std::vector<Point>{{5.0f, -4.0f}}));
    for (int const number : {-1, 0, 2, 4, 6, 8})
        EXPECT_EQ(grex.Group(number), std::vector<Point>()) << number;
    EXPECT_EQ(EntriesOf(grex), GrexEntries());
}

TEST_F(GrexInfo, GroupNumbersOfAnySign) {
    Polygon(-1, {{1.0f, 1.0f}, {2.0f, 2.0f}});
    Polygon(-2, {{3.0f, 3.0f}});
    Polygon(0, {{4.0f, 4.0f}});
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), (Groups{{{-2, 0}, {3.0f, 3.0f}},
                                      {{-1, 0}, {1.0f, 1.0f}},
                                      {{-1, 1}, {2.0f, 2.0f}},
                                      {{0, 0}, {4.0f, 4.0f}}}));
    EXPECT_EQ(grex.Group(-1), (std::vector<Point>{{1.0f, 1.0f}, {2.0f, 2.0f}}));
}

TEST_F(GrexInfo, TheFirstGroupOfAllMayBeMinusOne) {
    Polygon(-1, {{1.0f, 1.0f}, {2.0f, 2.0f}});
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), (Groups{{{-1, 0}, {1.0f, 1.0f}}, {{-1, 1}, {2.0f, 2.0f}}}));
}

TEST_F(GrexInfo, AKeyTakesAreaSourceAndPolygonOfTheRowThatMatches) {
    Concrete({1, 2, 3, 4, 5, 6});
    ByNumber({1, 2, 3, 4, 5, 6}, 9, 501, 77);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex), (GrexEntries{{{1, 2, 3, 4, 5, 6}, {501, 77, 9}}}));
    ASSERT_NE(grex.Entry({1, 2, 3, 4, 5, 6}), nullptr);
    EXPECT_EQ(*grex.Entry({1, 2, 3, 4, 5, 6}), (GrexEntry{501, 77, 9}));
    EXPECT_EQ(grex.Entry({1, 2, 3, 4, 5, 7}), nullptr);
    EXPECT_EQ(GroupsOf(grex), Groups()); // the number need not be one of a polygon
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(GrexInfo, EachElementMayBeAWildcard) {
    for (std::size_t element = 0; element < 6; ++element) {
        SCOPED_TRACE(element);
        tables.IpTrackPolygon.Clear();
        tables.IpParamAndStore.Clear();
        QClavis const key(1, 2, 3, 4, 5, 6);
        QClavis other = key;
        other[element] = 50;
        QClavis elsewhere = key;
        elsewhere[(element + 1) % 6] = 50;
        for (auto const& concrete : {key, other, elsewhere})
            Concrete(concrete);
        QClavis pattern = key;
        pattern[element] = -1;
        ByNumber(pattern, 8, 1, 2);
        grex.Init();
        EXPECT_EQ(EntriesOf(grex), (GrexEntries{{key, {1, 2, 8}}, {other, {1, 2, 8}}}));
    }
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(GrexInfo, MinusOneInAConcreteKeyIsAValue) {
    Concrete({-1, 2, 3, 4, 5, 6});
    Concrete({1, -1, 3, 4, 5, 6});
    ByNumber({1, 2, 3, 4, 5, 6}, 1, 1, 1);
    ByNumber({-1, 2, 3, 4, 5, 6}, 2, 2, 2);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex), (GrexEntries{{{-1, 2, 3, 4, 5, 6}, {2, 2, 2}}}));
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(GrexInfo, OfSeveralRowsTheFirstStaysAndEachOtherIsReported) {
    Concrete({1, 1, 1, 1, 1, 1});
    Concrete({2, 1, 1, 1, 1, 1});
    ByNumber({-1, -1, -1, -1, -1, -1}, 10, 1, 1);
    ByNumber({-1, 1, -1, -1, -1, -1}, 11, 2, 2);
    ByNumber({1, -1, -1, -1, -1, -1}, 12, 3, 3);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex),
              (GrexEntries{{{1, 1, 1, 1, 1, 1}, {1, 1, 10}}, {{2, 1, 1, 1, 1, 1}, {1, 1, 10}}}));
    EXPECT_EQ(messages.Take(), (Messages{Ambiguous(), Ambiguous(), Ambiguous()}));
}

TEST_F(GrexInfo, RowsOfTheSameMeaningAreAmbiguousToo) {
    Concrete({1, 1, 1, 1, 1, 1});
    ByNumber({-1, 1, 1, 1, 1, 1}, 10, 1, 1);
    ByNumber({1, 1, 1, 1, 1, 1}, 10, 1, 1);
    grex.Init();
    EXPECT_EQ(grex.Entries().size(), 1u);
    EXPECT_EQ(messages.Take(), (Messages{Ambiguous()}));
}

TEST_F(GrexInfo, ATwoPointDefinitionMakesAGroupForEachKeyThatItMatches) {
    Polygon(4, {{0.0f, 0.0f}, {9.0f, 9.0f}});
    Concrete({1, 1, 1, 1, 1, 1});
    Concrete({2, 1, 1, 1, 1, 1});
    TwoPoints({-1, 1, 1, 1, 1, 1}, 4, 7, 8, 0.5f);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex),
              (GrexEntries{{{1, 1, 1, 1, 1, 1}, {7, 8, 5}}, {{2, 1, 1, 1, 1, 1}, {7, 8, 6}}}));
    std::vector<Point> const line{{1.0f, 3.5f}, {2.0f, 4.5f}};
    EXPECT_EQ(grex.Group(5), line);
    EXPECT_EQ(grex.Group(6), line);
    EXPECT_EQ(grex.Group(4), (std::vector<Point>{{0.0f, 0.0f}, {9.0f, 9.0f}}));
    EXPECT_EQ(grex.Groups().size(), 6u);
    EXPECT_EQ(messages.Take(), Messages());
}

TEST_F(GrexInfo, WithoutPolygonTheFirstNewGroupIsZero) {
    Concrete({1, 1, 1, 1, 1, 1});
    TwoPoints({-1, -1, -1, -1, -1, -1}, 99, 0, 0, 0.0f);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex), (GrexEntries{{{1, 1, 1, 1, 1, 1}, {0, 0, 0}}}));
    EXPECT_EQ(GroupsOf(grex), (Groups{{{0, 0}, {1.0f, 3.0f}}, {{0, 1}, {2.0f, 4.0f}}}));
}

TEST_F(GrexInfo, NewNumbersFollowTheHighestWhateverItIs) {
    Polygon(-5, {{0.0f, 0.0f}});
    Concrete({1, 1, 1, 1, 1, 1});
    TwoPoints({-1, -1, -1, -1, -1, -1}, 0, 0, 0, 0.0f);
    grex.Init();
    EXPECT_EQ(grex.Entry({1, 1, 1, 1, 1, 1})->group, -4);
    EXPECT_EQ(grex.Group(-4).size(), 2u);
}

TEST_F(GrexInfo, PointsNeedNotAscend) {
    Concrete({1, 1, 1, 1, 1, 1});
    Pattern({1, 1, 1, 1, 1, 1}, QVIpTrackPolygon(0, 0, 0, 0, -2.0f, 1, 9.0f, -9.0f, 1.0f, 2.0f));
    grex.Init();
    EXPECT_EQ(grex.Group(0), (std::vector<Point>{{9.0f, -1.0f}, {-9.0f, 0.0f}}));
}

TEST_F(GrexInfo, TheSumIsOfSinglePrecision) {
    Concrete({1, 1, 1, 1, 1, 1});
    Pattern({1, 1, 1, 1, 1, 1},
            QVIpTrackPolygon(0, 0, 0, 0, 1.0f, 1, 0.0f, 0.0f, 16777216.0f, std::ldexp(1.0f, -25)));
    grex.Init();
    EXPECT_EQ(grex.Group(0), (std::vector<Point>{{0.0f, 16777216.0f}, {0.0f, 1.0f}}));
}

TEST_F(GrexInfo, OnlyModeOneIsATwoPointDefinition) {
    for (int const mode : {0, 2, -1, 3, 257}) {
        tables.IpTrackPolygon.Clear();
        tables.IpParamAndStore.Clear();
        Concrete({1, 1, 1, 1, 1, 1});
        Pattern({1, 1, 1, 1, 1, 1}, QVIpTrackPolygon(6, 0, 2, 3, 0.0f, mode, 1.0f, 2.0f, 3.0f, 4.0f));
        grex.Init();
        EXPECT_EQ(EntriesOf(grex), (GrexEntries{{{1, 1, 1, 1, 1, 1}, {2, 3, 6}}})) << mode;
        EXPECT_EQ(GroupsOf(grex), Groups()) << mode;
    }
}

TEST_F(GrexInfo, AnAmbiguousTwoPointDefinitionMakesItsGroupAllTheSame) {
    Concrete({1, 1, 1, 1, 1, 1});
    Concrete({2, 1, 1, 1, 1, 1});
    ByNumber({-1, -1, -1, -1, -1, -1}, 42, 1, 1);
    TwoPoints({-1, 1, -1, -1, -1, -1}, 0, 2, 2, 1.0f);
    TwoPoints({2, -1, -1, -1, -1, -1}, 0, 3, 3, 2.0f);
    grex.Init();
    EXPECT_EQ(EntriesOf(grex),
              (GrexEntries{{{1, 1, 1, 1, 1, 1}, {1, 1, 42}}, {{2, 1, 1, 1, 1, 1}, {1, 1, 42}}}));
    EXPECT_EQ(GroupsOf(grex), (Groups{{{0, 0}, {1.0f, 4.0f}},
                                      {{0, 1}, {2.0f, 5.0f}},
                                      {{1, 0}, {1.0f, 4.0f}},
                                      {{1, 1}, {2.0f, 5.0f}},
                                      {{2, 0}, {1.0f, 5.0f}},
                                      {{2, 1}, {2.0f, 6.0f}}}));
    EXPECT_EQ(messages.Take(), (Messages{Ambiguous(), Ambiguous(), Ambiguous()}));
}

TEST_F(GrexInfo, NumbersBehindTheHighestOfAllWrapAround) {
    constexpr int highest = std::numeric_limits<int>::max();
    constexpr int lowest = std::numeric_limits<int>::min();
    Polygon(highest, {{0.0f, 0.0f}});
    Polygon(lowest + 1, {{8.0f, 8.0f}});
    Concrete({1, 1, 1, 1, 1, 1});
    Concrete({2, 1, 1, 1, 1, 1});
    TwoPoints({-1, -1, -1, -1, -1, -1}, 0, 0, 0, 0.0f);
    grex.Init();
    EXPECT_EQ(grex.Entry({1, 1, 1, 1, 1, 1})->group, lowest);
    EXPECT_EQ(grex.Entry({2, 1, 1, 1, 1, 1})->group, lowest + 1);
    EXPECT_EQ(grex.Group(lowest), (std::vector<Point>{{1.0f, 3.0f}, {2.0f, 4.0f}}));
    // The point that is there stays.
    EXPECT_EQ(grex.Group(lowest + 1), (std::vector<Point>{{8.0f, 8.0f}, {2.0f, 4.0f}}));
    EXPECT_EQ(grex.Group(highest), (std::vector<Point>{{0.0f, 0.0f}}));
}

TEST_F(GrexInfo, InitTwiceGivesTheSame) {
    Polygon(4, {{0.0f, 0.0f}, {9.0f, 9.0f}});
    Concrete({1, 1, 1, 1, 1, 1});
    Concrete({2, 1, 1, 1, 1, 1});
    TwoPoints({-1, -1, -1, -1, -1, -1}, 0, 1, 2, 0.0f);
    ByNumber({2, -1, -1, -1, -1, -1}, 4, 3, 4);
    grex.Init();
    auto const groups = GroupsOf(grex);
    auto const entries = EntriesOf(grex);
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), groups);
    EXPECT_EQ(EntriesOf(grex), entries);
    EXPECT_EQ(messages.Take(), (Messages{Ambiguous(), Ambiguous()}));
    tables.IpParamAndStore.Clear();
    tables.IpPolygonValue.Clear();
    grex.Init();
    EXPECT_EQ(GroupsOf(grex), Groups());
    EXPECT_EQ(EntriesOf(grex), GrexEntries());
}

// Every concrete key against every row.
struct PlainGrex {
    Groups groups;
    GrexEntries entries;
    std::size_t ambiguous = 0;

    explicit PlainGrex(CParamTables const& tables) {
        for (auto const& [key, row] : tables.IpPolygonValue) {
            int points = 0;
            while (groups.count({key.number(), points}) > 0)
                ++points;
            groups[{key.number(), points}] = {key.position(), std::get<0>(row.tuple())};
        }
        int next = 0;
        for (auto const& [place, point] : groups)
            next = place.first + 1;
        for (auto const& [key, stored] : tables.IpParamAndStore)
            for (auto const& [pattern, row] : tables.IpTrackPolygon) {
                if (!pattern.ToClavis().Matches(key.ToClavis()))
                    continue;
                auto const [polygon, second, area, source, offset, mode, x1, x2, y1, y2] = row.tuple();
                int group = polygon;
                if (mode == 1) {
                    group = next++;
                    groups[{group, 0}] = {x1, y1 + offset};
                    groups[{group, 1}] = {x2, y2 + offset};
                }
                if (entries.count(key) > 0)
                    ++ambiguous;
                else
                    entries[key] = {area, source, group};
            }
    }
};

TEST_F(GrexInfo, RandomTablesAgainstAllPairs) {
    std::size_t matched = 0;
    std::size_t ambiguous = 0;
    std::size_t made = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Random random(seed);
        tables.IpPolygonValue.Clear();
        tables.IpParamAndStore.Clear();
        tables.IpTrackPolygon.Clear();
        for (int points = random.Between(0, 12); points > 0; --points)
            Polygon(random.Between(-2, 4),
                    {{static_cast<float>(random.Between(-3, 3)), static_cast<float>(random.Between(0, 9))}});
        int const highest = random.Between(0, 2);
        auto const key = [&] {
            int elements[6];
            for (int& element : elements)
                element = random.Between(-1, highest);
            return QClavis(CClavis(elements));
        };
        for (int keys = random.Between(0, 30); keys > 0; --keys)
            Concrete(key());
        int const wildcards = random.Between(1, 3);
        for (int rows = random.Between(0, 15); rows > 0; --rows) {
            QClavis pattern = key();
            for (std::size_t element = 0; element < 6; ++element)
                if (random.OneIn(wildcards))
                    pattern[element] = -1;
            auto const number = [&random] { return static_cast<float>(random.Between(-20, 20)) / 4; };
            Pattern(pattern, QVIpTrackPolygon(random.Between(0, 5), random.Between(0, 1),
                                              random.Between(0, 9), random.Between(0, 9), number(),
                                              random.Between(-1, 2), number(), number(), number(), number()));
        }
        PlainGrex const expected(tables);
        grex.Init();
        ASSERT_EQ(GroupsOf(grex), expected.groups) << "seed " << seed;
        ASSERT_EQ(EntriesOf(grex), expected.entries) << "seed " << seed;
        ASSERT_EQ(messages.Take(), Messages(expected.ambiguous, Ambiguous())) << "seed " << seed;
        matched += expected.entries.size();
        ambiguous += expected.ambiguous;
        made += expected.groups.size() - tables.IpPolygonValue.size();
    }
    EXPECT_GT(matched, 10000u);
    EXPECT_GT(ambiguous, 10000u);
    EXPECT_GT(made, 5000u);
}

} // namespace
