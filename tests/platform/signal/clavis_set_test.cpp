#include <paramdb/platform/signal/clavis_set.h>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <vector>

namespace {

using Values = std::set<int>;
using Pair = std::pair<int, int>;
using Pairs = std::set<Pair>;

CClavis Key(std::array<int, 6> const& elements) {
    return CClavis(elements.data());
}

std::vector<Values> Sets(CClavisSet const& set) {
    std::vector<Values> sets;
    for (unsigned int element = 0; element < 6; ++element)
        sets.push_back(set.ElementSet(element));
    return sets;
}

TEST(CClavisSet, ANewOneIsEmptyAndFitsNothing) {
    CClavisSet const set;
    EXPECT_EQ(Sets(set), std::vector<Values>(6));
    EXPECT_EQ(set.LocaChanSet(), Pairs());
    EXPECT_EQ(set.InstrParamSet(), Pairs());
    EXPECT_FALSE(set.valid());
    EXPECT_FALSE(set.contains(CClavis()));
    EXPECT_FALSE(set & Key({1, 2, 3, 4, 5, 6}));
    EXPECT_FALSE(set.containsLocaChan(-1, -1));
    EXPECT_FALSE(set.containsInstrPar(1, 2));
}

TEST(CClavisSet, ElementSetsAreThoseOfTheKey) {
    CClavisSet set;
    set += Key({10, 11, 12, 13, 14, 15});
    for (unsigned int element = 0; element < 6; ++element) {
        EXPECT_EQ(set.ElementSet(element), Values{static_cast<int>(element) + 10});
        set.ElementSet(element).insert(7);
        EXPECT_TRUE(set.contains(element, 7));
        EXPECT_FALSE(set.contains(element, 8));
    }
    EXPECT_TRUE(set & Key({7, 11, 7, 13, 7, 15}));
}

TEST(CClavisSet, OtherElementsThrow) {
    CClavisSet set;
    CClavisSet const& constant = set;
    for (unsigned int const element : {6u, 7u, std::numeric_limits<unsigned int>::max()}) {
        EXPECT_THROW((void)set.ElementSet(element), std::out_of_range) << element;
        EXPECT_THROW((void)constant.ElementSet(element), std::out_of_range) << element;
        EXPECT_THROW((void)set.contains(element, 1), std::out_of_range) << element;
    }
}

TEST(CClavisSet, InsertWithAndWithoutTheFlag) {
    for (unsigned int element = 0; element < 6; ++element) {
        SCOPED_TRACE(element);
        std::array<int, 6> numbers{1, 2, 3, 4, 5, 6};
        int const value = numbers[element];
        CClavisSet set;
        set.insert(Key(numbers), true);
        numbers[element] = -1;
        set.insert(Key(numbers), false);
        EXPECT_EQ(set.ElementSet(element), Values{value});
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(element), Values{-1});
        numbers[element] = 99;
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(element), (Values{-1, 99})) << "a value goes in beside -1";
        numbers[element] = -1;
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(element), (Values{-1, 99})) << "-1 is in there already";
        for (unsigned int other = 0; other < 6; ++other)
            if (other != element) {
                EXPECT_EQ(set.ElementSet(other), Values{static_cast<int>(other) + 1});
            }
        numbers[element] = 12345;
        EXPECT_TRUE(set.contains(Key(numbers)));
        EXPECT_TRUE(set.contains(element, -12345));
        EXPECT_TRUE(set.valid());
    }
}

TEST(CClavisSet, AddingLeavesOutAndRemovingTakesLiterally) {
    CClavisSet set;
    set += Key({1, -1, 3, -1, 5, -1});
    EXPECT_EQ(Sets(set), (std::vector<Values>{{1}, {}, {3}, {}, {5}, {}}));
    EXPECT_FALSE(set.valid());
    set.insert(CClavis(), true);
    (set += Key({1, 2, 3, 4, 5, 6})) += Key({7, 8, 9, 10, 11, 12});
    set -= Key({-1, 2, -1, 5, 99, 12});
    EXPECT_EQ(Sets(set), (std::vector<Values>{{1, 7}, {-1, 8}, {3, 9}, {-1, 4, 10}, {-1, 5, 11}, {-1, 6}}));
}

TEST(CClavisSet, IntersectionAndUnionOfAllSets) {
    CClavisSet left, right;
    left.insert(Key({1, -1, 3, 4, 5, 6}), true);
    left += Key({2, -1, 3, 7, -1, 6});
    left.insertLocaChan(1, 2, true);
    left.insertLocaChan(3, -1, true);
    left.insertInstrPar(1, 2, true);
    right += Key({2, 9, 8, 4, -1, 6});
    right.insertLocaChan(3, -1, true);
    right.insertLocaChan(3, 4, true);
    right.insertInstrPar(-1, 2, true);
    CClavisSet both = left;
    both &= right;
    EXPECT_EQ(Sets(both), (std::vector<Values>{{2}, {}, {}, {4}, {}, {6}})) << "-1 is a value like any other";
    EXPECT_EQ(both.LocaChanSet(), (Pairs{{3, -1}}));
    EXPECT_EQ(both.InstrParamSet(), Pairs());
    CClavisSet either = left;
    either |= right;
    EXPECT_EQ(Sets(either), (std::vector<Values>{{1, 2}, {-1, 9}, {3, 8}, {4, 7}, {5}, {6}}));
    EXPECT_EQ(either.LocaChanSet(), (Pairs{{1, 2}, {3, -1}, {3, 4}}));
    EXPECT_EQ(either.InstrParamSet(), (Pairs{{-1, 2}, {1, 2}}));
    CClavisSet const& same = either;
    auto const sets = Sets(either);
    either &= same;
    either |= same;
    EXPECT_EQ(Sets(either), sets);
    EXPECT_EQ(either.LocaChanSet().size(), 3u);
    either.clear();
    EXPECT_EQ(Sets(either), std::vector<Values>(6));
    EXPECT_EQ(either.LocaChanSet(), Pairs());
    EXPECT_EQ(either.InstrParamSet(), Pairs());
}

// Both kinds of pairs follow one rule; each is reached by its own functions.
struct PairFunctions {
    char const* name;
    void (CClavisSet::*insert)(int, int, bool);
    bool (CClavisSet::*contains)(int, int) const;
    Pairs const& (CClavisSet::*pairs)() const noexcept;
    Pairs const& (CClavisSet::*others)() const noexcept;
};

constexpr PairFunctions PairKinds[] = {
    {"location and channel", &CClavisSet::insertLocaChan, &CClavisSet::containsLocaChan,
     &CClavisSet::LocaChanSet, &CClavisSet::InstrParamSet},
    {"instrument and parameter", &CClavisSet::insertInstrPar, &CClavisSet::containsInstrPar,
     &CClavisSet::InstrParamSet, &CClavisSet::LocaChanSet},
};

TEST(CClavisSet, InsertedPairs) {
    struct Case {
        int first, second;
        bool any;
        Pairs after;
    };
    Case const steps[] = {
        {1, 2, false, {{1, 2}}},
        {1, 3, true, {{1, 2}, {1, 3}}},
        {-1, 2, false, {{1, 2}, {1, 3}}},
        {1, -1, false, {{1, 2}, {1, 3}}},
        {-1, -1, false, {{1, 2}, {1, 3}}},
        {-1, 2, true, {{-1, 2}, {1, 3}}},
        {4, 2, true, {{-1, 2}, {1, 3}, {4, 2}}},
        {-1, 2, true, {{-1, 2}, {1, 3}, {4, 2}}},
        {1, -1, true, {{-1, 2}, {1, -1}, {4, 2}}},
        {-1, -1, true, {{-1, -1}}},
        {1, 2, false, {{-1, -1}, {1, 2}}},
        {-1, -1, true, {{-1, -1}, {1, 2}}},
    };
    for (auto const& kind : PairKinds) {
        SCOPED_TRACE(kind.name);
        CClavisSet set;
        for (auto const& [first, second, any, after] : steps) {
            SCOPED_TRACE(testing::Message() << first << ' ' << second << ' ' << any);
            (set.*kind.insert)(first, second, any);
            EXPECT_EQ((set.*kind.pairs)(), after);
        }
        EXPECT_EQ((set.*kind.others)(), Pairs());
        EXPECT_FALSE(set.valid());
        EXPECT_FALSE(set.contains(CClavis()));
    }
}

TEST(CClavisSet, StoredPairsMatchAnyValueOfAHalf) {
    struct Case {
        int first, second;
        bool found;
    };
    Case const cases[] = {{1, 2, true},  {1, 3, false}, {2, 2, false},   {5, 99, true},  {5, -1, true},
                          {99, 6, true}, {-1, 6, true}, {-1, 2, false},  {1, -1, false}, {-1, -1, false},
                          {0, 0, false}, {2, 1, false}, {99, -1, false}, {-1, 99, false}};
    for (auto const& kind : PairKinds) {
        CClavisSet set;
        (set.*kind.insert)(1, 2, false);
        (set.*kind.insert)(5, -1, true);
        (set.*kind.insert)(-1, 6, true);
        for (auto const& [first, second, found] : cases)
            EXPECT_EQ((set.*kind.contains)(first, second), found)
                << kind.name << ' ' << first << ' ' << second;
        (set.*kind.insert)(-1, -1, true);
        for (auto const& [first, second, found] : cases)
            EXPECT_TRUE((set.*kind.contains)(first, second)) << kind.name << ' ' << first << ' ' << second;
    }
}

TEST(CClavisSet, CheckForCompleteness) {
    struct Case {
        Values set, reference;
        bool is_complete;
    };
    Case const cases[] = {
        {{1, 2}, {1, 2}, true}, {{1, 2, 3}, {1, 3}, true}, {{1, 2}, {1, 3}, false}, {{-1}, {1}, true},
        {{-1, 5}, {1}, true},   {{1}, {-1}, false},        {{1}, {-1, 1}, false},   {{}, {1}, false},
        {{}, {}, true},         {{4}, {}, true},           {{-1}, {-1}, true},      {{-2}, {-2}, true},
    };
    for (auto const& [before, reference, is_complete] : cases) {
        SCOPED_TRACE(testing::PrintToString(before) + testing::PrintToString(reference));
        Values set = before;
        EXPECT_EQ(CClavisSet::CheckForCompleteness(set, reference), is_complete);
        EXPECT_EQ(set, is_complete ? Values{-1} : before);
    }
    Values same{3, 4};
    EXPECT_TRUE(CClavisSet::CheckForCompleteness(same, same));
    EXPECT_EQ(same, Values{-1});
}

TEST(CClavisSet, EverySetIsCheckedAlsoBehindOneThatFails) {
    CClavisSet reference;
    for (unsigned int element = 0; element < 6; ++element)
        reference.ElementSet(element) = {1, 2};
    for (unsigned int failing = 0; failing < 6; ++failing) {
        SCOPED_TRACE(failing);
        CClavisSet set;
        for (unsigned int element = 0; element < 6; ++element)
            set.ElementSet(element) = {1, 2, 3};
        set.ElementSet(failing) = {1};
        set.insertLocaChan(1, 2, true);
        EXPECT_FALSE(set.completeness_check(reference));
        for (unsigned int element = 0; element < 6; ++element)
            EXPECT_EQ(set.ElementSet(element), element == failing ? Values{1} : Values{-1});
        EXPECT_EQ(set.LocaChanSet(), (Pairs{{1, 2}}));
        set.ElementSet(failing).insert(2);
        EXPECT_TRUE(set.completeness_check(reference));
        EXPECT_EQ(Sets(set), std::vector<Values>(6, Values{-1}));
    }
}

// A model that keeps all it was given in plain lists and searches them from end to end.
class Model {
public:
    void Insert(std::array<int, 6> const& key, bool any) {
        for (std::size_t i = 0; i < 6; ++i) {
            if (key[i] == -1 && (!any || Has(i, -1)))
                continue;
            if (key[i] == -1)
                m_lists[i].clear();
            m_lists[i].push_back(key[i]);
        }
    }
    void Remove(std::array<int, 6> const& key) {
        for (std::size_t i = 0; i < 6; ++i)
            m_lists[i].erase(std::remove(m_lists[i].begin(), m_lists[i].end(), key[i]), m_lists[i].end());
    }
    void Combine(Model const& other, bool unite) {
        for (std::size_t i = 0; i < 6; ++i) {
            std::vector<int> result = unite ? m_lists[i] : std::vector<int>();
            for (int const value : other.m_lists[i])
                if (Has(i, value) != unite)
                    result.push_back(value);
            m_lists[i] = result;
        }
    }
    bool Fits(std::array<int, 6> const& key) const {
        int fitting = 0;
        for (std::size_t i = 0; i < 6; ++i)
            fitting += Has(i, key[i]) || Has(i, -1) ? 1 : 0;
        return fitting == 6;
    }
    std::vector<Values> Sets() const {
        std::vector<Values> sets;
        for (auto const& list : m_lists)
            sets.emplace_back(list.begin(), list.end());
        return sets;
    }

private:
    bool Has(std::size_t i, int value) const {
        return std::count(m_lists[i].begin(), m_lists[i].end(), value) > 0;
    }
    std::array<std::vector<int>, 6> m_lists;
};

TEST(CClavisSetRandom, SameAsTheModel) {
    constexpr unsigned int seed = 2201;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    std::array<CClavisSet, 2> sets;
    std::array<Model, 2> models;
    for (int step = 0; step < 6000; ++step) {
        SCOPED_TRACE(step);
        std::array<int, 6> key{};
        for (int& element : key)
            element = static_cast<int>(random() % 6) - 2;
        std::size_t const index = random() % 2;
        CClavisSet& set = sets[index];
        Model& model = models[index];
        switch (random() % 8) {
        case 0:
            set.insert(Key(key), true);
            model.Insert(key, true);
            break;
        case 1:
            set.insert(Key(key), false);
            model.Insert(key, false);
            break;
        case 2:
        case 3:
            set += Key(key);
            model.Insert(key, false);
            break;
        case 4:
        case 5:
            set -= Key(key);
            model.Remove(key);
            break;
        case 6:
            set |= sets[1 - index];
            model.Combine(models[1 - index], true);
            break;
        default:
            set &= sets[1 - index];
            model.Combine(models[1 - index], false);
        }
        ASSERT_EQ(Sets(set), model.Sets());
        for (int& element : key)
            element = static_cast<int>(random() % 6) - 2;
        ASSERT_EQ(set.contains(Key(key)), model.Fits(key));
        ASSERT_EQ(set & Key(key), model.Fits(key));
    }
}

} // namespace
