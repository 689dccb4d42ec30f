#include <paramdb/distillery/inheritance_walk.h>

#include "derivation_support.h"

#include <algorithm>
#include <numeric>
#include <set>

using derivation::Random;
using paramdb::InheritanceWalk;

namespace {

constexpr std::size_t None = InheritanceWalk::NoChannel;
using Chain = std::vector<std::size_t>;
using Flags = std::vector<unsigned int>;

// What a run gives, in a form that can be compared.
struct Outcome {
    Chain bases;
    Flags flags;
    std::vector<Chain> cycles;
    bool operator==(Outcome const&) const = default;
};

void PrintTo(Outcome const& outcome, std::ostream* out) {
    *out << "bases " << testing::PrintToString(outcome.bases) << " flags "
         << testing::PrintToString(outcome.flags) << " cycles " << testing::PrintToString(outcome.cycles);
}

Outcome RunWith(InheritanceWalk& walk, Chain const& parents, Flags const& flags) {
    Outcome outcome;
    Chain starts(parents.size());
    std::iota(starts.begin(), starts.end(), std::size_t{0});
    auto const& results =
        walk.Run(starts, parents, flags, [&outcome](Chain const& cycle) { outcome.cycles.push_back(cycle); });
    for (auto const& [base, all_flags] : results) {
        outcome.bases.push_back(base);
        outcome.flags.push_back(all_flags);
    }
    return outcome;
}

Outcome RunOnce(Chain const& parents, Flags const& flags) {
    InheritanceWalk walk;
    return RunWith(walk, parents, flags);
}

// Each channel walks its own line, up to the first channel that it has seen.
Outcome WalkEachLine(Chain const& parents, Flags const& flags) {
    Outcome outcome;
    std::set<std::size_t> in_cycles;
    for (std::size_t start = 0; start < parents.size(); ++start) {
        Chain line;
        std::size_t channel = start;
        unsigned int all_flags = 0;
        while (channel != None && std::ranges::count(line, channel) == 0) {
            line.push_back(channel);
            all_flags |= flags[channel];
            channel = parents[channel];
        }
        outcome.bases.push_back(line.back());
        outcome.flags.push_back(all_flags);
        if (channel != None && in_cycles.count(channel) == 0) {
            Chain const cycle(std::ranges::find(line, channel), line.end());
            in_cycles.insert(cycle.begin(), cycle.end());
            outcome.cycles.push_back(cycle);
        }
    }
    return outcome;
}

TEST(InheritanceWalk, NoChannels) {
    EXPECT_EQ(RunOnce({}, {}), (Outcome{{}, {}, {}}));
}

struct WalkCase {
    char const* name;
    Chain parents;
    Flags flags;
    Outcome outcome;
};

TEST(InheritanceWalk, Cases) {
    WalkCase const cases[] = {
        {"one alone", {None}, {5}, {{0}, {5}, {}}},
        {"no parents", {None, None, None}, {1, 2, 4}, {{0, 1, 2}, {1, 2, 4}, {}}},
        {"up the numbers", {1, 2, 3, None}, {1, 2, 4, 8}, {{3, 3, 3, 3}, {15, 14, 12, 8}, {}}},
        {"down the numbers", {None, 0, 1, 2}, {1, 2, 4, 8}, {{0, 0, 0, 0}, {1, 3, 7, 15}, {}}},
        {"flags shared", {1, None}, {3, 6}, {{1, 1}, {7, 6}, {}}},
        {"two trees",
         {2, 2, None, 4, None, 4},
         {1, 2, 4, 8, 16, 32},
         {{2, 2, 2, 4, 4, 4}, {5, 6, 4, 24, 16, 48}, {}}},
        {"all 32 flags", {1, None}, {0x80000000u, 0x7FFFFFFFu}, {{1, 1}, {0xFFFFFFFFu, 0x7FFFFFFFu}, {}}},
        {"itself", {0}, {4}, {{0}, {4}, {{0}}}},
        {"each itself", {0, 1}, {1, 2}, {{0, 1}, {1, 2}, {{0}, {1}}}},
        {"a pair", {1, 0}, {1, 2}, {{1, 0}, {3, 3}, {{0, 1}}}},
        {"a ring of three", {1, 2, 0}, {1, 2, 4}, {{2, 0, 1}, {7, 7, 7}, {{0, 1, 2}}}},
        {"the other way round", {2, 0, 1}, {1, 2, 4}, {{1, 2, 0}, {7, 7, 7}, {{0, 2, 1}}}},
        {"a tail into itself", {1, 1}, {1, 2}, {{1, 1}, {3, 2}, {{1}}}},
        {"a tail into a pair", {1, 2, 3, 2}, {1, 2, 4, 8}, {{3, 3, 3, 2}, {15, 14, 12, 12}, {{2, 3}}}},
        {"tails into different places",
         {1, 2, 0, 0, 1, 2, 3},
         {1, 2, 4, 8, 16, 32, 64},
         {{2, 0, 1, 2, 0, 1, 2}, {7, 7, 7, 15, 23, 39, 79}, {{0, 1, 2}}}},
        {"the first to come tells where it begins",
         {3, 3, 1, 2},
         {1, 2, 4, 8},
         {{1, 2, 3, 1}, {15, 14, 14, 14}, {{3, 2, 1}}}},
        {"two rings and a tree",
         {1, 0, None, 2, 5, 4},
         {1, 2, 4, 8, 16, 32},
         {{1, 0, 2, 2, 5, 4}, {3, 3, 4, 12, 48, 48}, {{0, 1}, {4, 5}}}},
    };
    for (WalkCase const& walk : cases) {
        SCOPED_TRACE(walk.name);
        EXPECT_EQ(RunOnce(walk.parents, walk.flags), walk.outcome);
        EXPECT_EQ(WalkEachLine(walk.parents, walk.flags), walk.outcome);
    }
}

TEST(InheritanceWalk, AVeryLongLine) {
    constexpr std::size_t count = 200'000;
    Chain parents;
    for (std::size_t channel = 0; channel < count; ++channel)
        parents.push_back(channel + 1 < count ? channel + 1 : None);
    Flags flags(count, 0);
    flags.back() = 4;
    flags[count / 2] = 1;
    Outcome const outcome = RunOnce(parents, flags);
    EXPECT_EQ(outcome.bases, Chain(count, count - 1));
    EXPECT_EQ(std::ranges::count(outcome.flags, 5u), static_cast<std::ptrdiff_t>(count / 2 + 1));
    EXPECT_EQ(std::ranges::count(outcome.flags, 4u), static_cast<std::ptrdiff_t>(count / 2 - 1));
    EXPECT_TRUE(outcome.cycles.empty());
}

TEST(InheritanceWalk, AVeryLongRing) {
    constexpr std::size_t count = 200'000;
    Chain parents;
    Chain ring;
    for (std::size_t channel = 0; channel < count; ++channel) {
        parents.push_back((channel + 1) % count);
        ring.push_back(channel);
    }
    Flags flags(count, 0);
    flags[77] = 6;
    Outcome const outcome = RunOnce(parents, flags);
    for (std::size_t channel = 0; channel < count; ++channel)
        ASSERT_EQ(outcome.bases[channel], (channel + count - 1) % count);
    EXPECT_EQ(outcome.flags, Flags(count, 6));
    EXPECT_EQ(outcome.cycles, std::vector<Chain>{ring});
}

TEST(InheritanceWalk, EachRunStartsAnew) {
    InheritanceWalk walk;
    EXPECT_EQ(RunWith(walk, {1, 0, 0}, {1, 2, 4}), (Outcome{{1, 0, 1}, {3, 3, 7}, {{0, 1}}}));
    EXPECT_EQ(RunWith(walk, {None}, {0}), (Outcome{{0}, {0}, {}}));
    EXPECT_EQ(RunWith(walk, {1, 2, 3, None}, {0, 0, 0, 2}), (Outcome{{3, 3, 3, 3}, {2, 2, 2, 2}, {}}));
    EXPECT_EQ(RunWith(walk, {1, 0}, {1, 2}), (Outcome{{1, 0}, {3, 3}, {{0, 1}}}));
    EXPECT_EQ(RunWith(walk, {}, {}), (Outcome{{}, {}, {}}));
}

TEST(InheritanceWalk, RandomParentsAgainstAWalkOfEachLine) {
    InheritanceWalk walk;
    std::size_t cycles = 0;
    std::size_t without = 0;
    for (unsigned seed = 0; seed < 20'000; ++seed) {
        Random random(seed);
        int const count = random.Between(1, 14);
        int const roots = random.Between(1, 6);
        Chain parents;
        Flags flags;
        for (int channel = 0; channel < count; ++channel) {
            parents.push_back(random.OneIn(roots) ? None
                                                  : static_cast<std::size_t>(random.Between(0, count - 1)));
            flags.push_back(random.OneIn(2) ? 0u : 1u << random.Between(0, 31));
        }
        Outcome const expected = WalkEachLine(parents, flags);
        ASSERT_EQ(RunWith(walk, parents, flags), expected)
            << "seed " << seed << ", parents " << testing::PrintToString(parents);
        cycles += expected.cycles.size();
        without += expected.cycles.empty() ? 1 : 0;
    }
    EXPECT_GT(cycles, 5000u);
    EXPECT_GT(without, 5000u);
}

} // namespace
