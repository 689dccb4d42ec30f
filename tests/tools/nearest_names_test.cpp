#include "tools/case_fold.h"
#include "tools/nearest_names.h"

#include <algorithm>
#include <chrono>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace paramdb::tools;

namespace {

using Texts = std::vector<std::string>;

// The whole grid, straight from what an edit is.
std::size_t PlainDistance(std::wstring const& from, std::wstring const& to) {
    std::vector<std::vector<std::size_t>> grid(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = 0; i <= from.size(); ++i) {
        for (std::size_t j = 0; j <= to.size(); ++j) {
            if (i == 0 || j == 0) {
                grid[i][j] = i + j;
                continue;
            }
            std::size_t const differs = from[i - 1] != to[j - 1] ? 1 : 0;
            grid[i][j] = std::min({grid[i - 1][j] + 1, grid[i][j - 1] + 1, grid[i - 1][j - 1] + differs});
            if (i > 1 && j > 1 && from[i - 1] == to[j - 2] && from[i - 2] == to[j - 1])
                grid[i][j] = std::min(grid[i][j], grid[i - 2][j - 2] + 1);
        }
    }
    return grid[from.size()][to.size()];
}

std::wstring RandomText(std::mt19937& random, std::size_t longest, wchar_t letters) {
    std::wstring text;
    for (auto length = random() % (longest + 1); length > 0; --length)
        text += static_cast<wchar_t>(L'a' + static_cast<wchar_t>(random()) % letters);
    return text;
}

// All names in the order in which they are near, by the rules of the header.
std::vector<std::size_t> PlainNearest(std::wstring const& sought,
                                      std::vector<std::wstring_view> const& names) {
    struct Candidate {
        std::size_t distance;
        std::size_t place;
        bool holds;
    };
    std::wstring const wanted = FoldCase(sought);
    std::size_t const limit = std::clamp<std::size_t>((wanted.size() + 2) / 3, 1, 8);
    std::vector<Candidate> candidates;
    std::size_t nearest = limit;
    for (std::size_t place = 0; place < names.size(); ++place) {
        std::wstring const name = FoldCase(names[place]);
        std::size_t const distance = PlainDistance(wanted, name);
        bool const holds = wanted.size() >= 3 && name.find(wanted) != std::wstring::npos;
        bool const is_near = distance <= limit && distance < std::max(wanted.size(), name.size());
        if (wanted.empty() || name.empty() || (!is_near && !holds))
            continue;
        candidates.push_back({distance, place, holds});
        nearest = std::min(nearest, distance);
    }
    std::erase_if(candidates, [&](Candidate const& candidate) {
        return nearest == 0 ? candidate.distance > 0 : !candidate.holds && candidate.distance > nearest + 1;
    });
    std::ranges::stable_sort(candidates, {}, &Candidate::distance);
    std::vector<std::size_t> places;
    for (std::size_t index = 0; index < std::min<std::size_t>(candidates.size(), 3); ++index)
        places.push_back(candidates[index].place);
    return places;
}

} // namespace

TEST(NearestNames, Distance) {
    struct Case {
        std::wstring from;
        std::wstring to;
        std::size_t distance;
    };
    Case const cases[] = {
        {L"", L"", 0},         {L"abc", L"abc", 0},   {L"", L"abc", 3},
        {L"abc", L"", 3},      {L"abc", L"abd", 1},   {L"abc", L"acb", 1},
        {L"abcd", L"badc", 2}, {L"ca", L"abc", 3},    {L"kitten", L"sitting", 3},
        {L"a", L"A", 1},       {L"idle", L"idel", 1},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(EditDistance(test.from, test.to, 10), test.distance) << testing::PrintToString(test.from);
        EXPECT_EQ(EditDistance(test.to, test.from, 10), test.distance);
        EXPECT_EQ(EditDistance(test.from, test.to, std::numeric_limits<std::size_t>::max() - 1),
                  test.distance);
    }
    EXPECT_EQ(EditDistance(L"kitten", L"sitting", 2), 3U);
    EXPECT_EQ(EditDistance(L"kitten", L"sitting", 0), 1U);
    EXPECT_EQ(EditDistance(L"abcd", L"badc", 1), 2U);
    EXPECT_EQ(EditDistance(L"", L"abcdef", 3), 4U);
}

TEST(NearestNames, DistanceAgreesWithAPlainModel) {
    constexpr unsigned seed = 31;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    for (int round = 0; round < 20000; ++round) {
        std::wstring const from = RandomText(random, 12, 3);
        std::wstring const to = RandomText(random, 12, 3);
        std::size_t const limit = random() % 14;
        ASSERT_EQ(EditDistance(from, to, limit), std::min(PlainDistance(from, to), limit + 1))
            << testing::PrintToString(from) << ' ' << testing::PrintToString(to) << ' ' << limit;
    }
}

TEST(NearestNames, Suggests) {
    std::vector<std::wstring_view> const names{L"Idle",          L"Warm up",       L"",  L"1. gear drive",
                                               L"1. gear coast", L"2. gear drive", L"R", L"Idle hum"};
    using Places = std::vector<std::size_t>;
    struct Case {
        std::wstring sought;
        Places places;
    };
    Case const cases[] = {
        {L"idle", {0}},
        {L"IDEL", {0}},
        {L"Idl", {0, 7}},
        {L"warmup", {1}},
        {L"1. GEAR DRIVE", {3}},
        {L"1. gear drives", {3, 5}},
        {L"3. gear drive", {3, 5}},
        {L"gear", {3, 4, 5}}, // a part of them
        {L"coast", {4}},
        {L"Turbine", {}},
        {L"", {}},
        {L"S", {}},
        {L"r", {6}},
        {L"drive", {3, 5}},
    };
    for (Case const& test : cases)
        EXPECT_EQ(NearestNames(test.sought, names), test.places) << testing::PrintToString(test.sought);
    EXPECT_EQ(NearestNames(L"Idle", std::vector<std::wstring_view>{}), Places());
}

TEST(NearestNames, SuggestionsAgreeWithAPlainModel) {
    constexpr unsigned seed = 47;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::size_t suggestions = 0;
    for (int round = 0; round < 3000; ++round) {
        std::vector<std::wstring> texts;
        for (int count = 0; count < 12; ++count)
            texts.push_back(RandomText(random, 9, 4));
        std::vector<std::wstring_view> const names(texts.begin(), texts.end());
        std::wstring sought = RandomText(random, 7, 4);
        if (random() % 2 == 0 && !texts[3].empty()) { // like a name
            sought = texts[3];
            sought[random() % sought.size()] = L'A';
        }
        auto const expected = PlainNearest(sought, names);
        suggestions += expected.size();
        ASSERT_EQ(NearestNames(sought, names), expected)
            << testing::PrintToString(sought) << " among " << testing::PrintToString(texts);
    }
    EXPECT_GT(suggestions, 1500U);
}

// Names that are all alike leave little to skip.
TEST(NearestNames, ManyNamesTakeNoTime) {
    std::vector<std::wstring> texts;
    for (int number = 0; number < 100000; ++number)
        texts.push_back(L"Order track " + std::to_wstring(number) + L" of the mesh");
    std::vector<std::wstring_view> const names(texts.begin(), texts.end());
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(NearestNames(L"order trakc 77777 of teh mesh", names),
              (std::vector<std::size_t>{77777, 7777, 17777}));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)); // also under a sanitizer
}

TEST(NearestNames, Ids) {
    std::vector<NamedId> const rows{
        {-2147483647 - 1, L"lowest"}, {-1, L"minus one"}, {3, L""}, {4, L"four"}, {8, L"eight"},
        {2147483647, L"highest"}};
    auto const shown = [&](int sought) { return DidYouMean(NearestIds(sought, rows)); };
    EXPECT_EQ(shown(6), "; did you mean 4 four, 8 eight or -1 minus one?");
    EXPECT_EQ(shown(3), "; did you mean 4 four, -1 minus one or 8 eight?");
    EXPECT_EQ(shown(2147483646), "; did you mean 2147483647 highest, 8 eight or 4 four?");
    EXPECT_EQ(shown(-2147483647), "; did you mean -2147483648 lowest, -1 minus one or 4 four?");
    EXPECT_TRUE(NearestIds(1, std::vector<NamedId>{}).empty());
}

TEST(NearestNames, IdsByTheirNames) {
    std::vector<NamedId> const rows{{5, L"Mesh H1"}, {6, L"Mesh H2"}, {7, L"Level"}};
    EXPECT_EQ(DidYouMean(NearestNames(L"mesh h2", rows)), "; did you mean 6 Mesh H2?");
    EXPECT_EQ(DidYouMean(NearestNames(L"Mesh H3", rows)), "; did you mean 5 Mesh H1 or 6 Mesh H2?");
    EXPECT_EQ(DidYouMean(NearestNames(L"none of them", rows)), "");
}

TEST(NearestNames, Texts) {
    EXPECT_EQ(DidYouMean(Texts{}), "");
    EXPECT_EQ(DidYouMean(Texts{"a"}), "; did you mean a?");
    EXPECT_EQ(DidYouMean(Texts{"a", "b"}), "; did you mean a or b?");
    EXPECT_EQ(DidYouMean(Texts{"a", "b", "c"}), "; did you mean a, b or c?");
    EXPECT_EQ(DidYouMean(std::vector<NamedId>{{-1, L"a\tb"}}), "; did you mean -1 a\xEF\xBF\xBD"
                                                               "b?");
}
