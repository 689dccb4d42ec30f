#include <paramdb/keys/idx8_set.h>

#include <array>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace {

using Values = std::set<int>;
using Pairs = std::set<std::pair<int, int>>;
using Numbers = std::array<int, 8>;

QIdx8 Key(Numbers const& n) {
    return {n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7]};
}

CClavis SixOf(Numbers const& numbers) {
    return CClavis(numbers.data() + 2);
}

// The eight sets, type and bench last.
std::vector<Values> Sets(CQIdx8Set const& set) {
    std::vector<Values> sets;
    for (unsigned int element = 0; element < 8; ++element)
        sets.push_back(set.ElementSet(element));
    return sets;
}

TEST(QIdx8, ElementsInOrder) {
    QIdx8 const unset;
    EXPECT_EQ(unset.elements(), (Numbers{-1, -1, -1, -1, -1, -1, -1, -1}));
    EXPECT_EQ(unset.ToClavis(), CClavis());
    QIdx8 key(1, 2, 3, 4, 5, 6, 7, 8);
    EXPECT_EQ(key.elements(), (Numbers{1, 2, 3, 4, 5, 6, 7, 8}));
    EXPECT_EQ(QIdx8::size(), 8u);
    EXPECT_EQ(key.type(), 1);
    EXPECT_EQ(key.bench(), 2);
    EXPECT_EQ(key.ToClavis(), SixOf(key.elements()));
    EXPECT_EQ(key.tuple(), std::make_tuple(1, 2, 3, 4, 5, 6, 7, 8));
    std::get<1>(key.tuple()) = -5;
    EXPECT_EQ(key.bench(), -5);
    EXPECT_EQ(key[7], 8);
    QIdx8 const copy = key;
    EXPECT_EQ(copy, key);
    key[0] = 0;
    EXPECT_LT(key, copy);
    EXPECT_LT(unset, key);
}

TEST(CQIdx8Set, ANewOneIsEmptyAndFitsNothing) {
    CQIdx8Set const set;
    EXPECT_EQ(Sets(set), std::vector<Values>(8));
    EXPECT_FALSE(set.valid());
    EXPECT_FALSE(set.contains(QIdx8()));
    EXPECT_FALSE(set & QIdx8());
    EXPECT_FALSE(set.contains(CClavis()));
    EXPECT_FALSE(set & CClavis());
}

TEST(CQIdx8Set, TypeAndBenchComeLastAmongTheSets) {
    CQIdx8Set set;
    set += QIdx8(10, 20, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(Sets(set), (std::vector<Values>{{1}, {2}, {3}, {4}, {5}, {6}, {10}, {20}}));
    CQIdx8Set const& constant = set;
    EXPECT_EQ(&set.ElementSet(6), &set.TypeSet());
    EXPECT_EQ(&set.ElementSet(7), &set.BenchSet());
    EXPECT_EQ(&constant.ElementSet(6), &constant.TypeSet());
    EXPECT_EQ(&constant.ElementSet(7), &constant.BenchSet());
    EXPECT_TRUE(set.contains(6, 10));
    EXPECT_FALSE(set.contains(6, 20));
    EXPECT_TRUE(set.contains(7, 20));
    EXPECT_TRUE(set.contains(0, 1));
    EXPECT_FALSE(set.contains(0, 10));
    for (unsigned int element = 0; element < 8; ++element) {
        set.ElementSet(element).insert(77);
        EXPECT_TRUE(set.contains(element, 77)) << element;
        EXPECT_FALSE(set.contains(element, -1)) << element;
        set.ElementSet(element).insert(-1);
        EXPECT_TRUE(set.contains(element, 78)) << element;
        EXPECT_TRUE(set.contains(element, -1)) << element;
    }
    for (unsigned int const element : {8u, 9u, std::numeric_limits<unsigned int>::max()}) {
        EXPECT_THROW((void)set.ElementSet(element), std::out_of_range) << element;
        EXPECT_THROW((void)constant.ElementSet(element), std::out_of_range) << element;
        EXPECT_THROW((void)set.contains(element, 1), std::out_of_range) << element;
    }
}

TEST(CQIdx8Set, AKeyWithoutTypeAddsNone) {
    CQIdx8Set set;
    set += QIdx8(-1, 20, 1, 2, 3, 4, 5, 6);
    EXPECT_EQ(set.TypeSet(), Values());
    EXPECT_EQ(set.BenchSet(), Values{20});
    EXPECT_FALSE(set.valid());
    EXPECT_FALSE(set.contains(QIdx8(-1, 20, 1, 2, 3, 4, 5, 6)));
    EXPECT_TRUE(set.contains(CClavis(std::array{1, 2, 3, 4, 5, 6}.data())));
    (set += QIdx8(9, -1, -1, -1, -1, -1, -1, 7)) += QIdx8();
    EXPECT_EQ(Sets(set), (std::vector<Values>{{1}, {2}, {3}, {4}, {5}, {6, 7}, {9}, {20}}));
    EXPECT_TRUE(set.valid());
    EXPECT_TRUE(set.contains(QIdx8(9, 20, 1, 2, 3, 4, 5, 7)));
}

TEST(CQIdx8Set, ASixPartKeySaysNothingOfTypeAndBench) {
    CQIdx8Set set;
    CClavis const key(std::array{1, 2, 3, 4, 5, 6}.data());
    CQIdx8Set const& result = (set += key);
    EXPECT_EQ(&result, &set);
    EXPECT_EQ(Sets(set), (std::vector<Values>{{1}, {2}, {3}, {4}, {5}, {6}, {}, {}}));
    EXPECT_TRUE(set.contains(key));
    EXPECT_TRUE(set & key);
    EXPECT_FALSE(set.contains(CClavis()));
    EXPECT_FALSE(set.contains(QIdx8(-1, -1, 1, 2, 3, 4, 5, 6)));
    EXPECT_FALSE(set.valid());
}

TEST(CQIdx8Set, InsertWithAndWithoutTheFlag) {
    for (std::size_t element = 0; element < 8; ++element) {
        SCOPED_TRACE(element);
        unsigned int const number = static_cast<unsigned int>((element + 6) % 8);
        Numbers numbers{1, 2, 3, 4, 5, 6, 7, 8};
        numbers[element] = -1;
        CQIdx8Set set;
        set.insert(Key(numbers), false);
        EXPECT_EQ(set.ElementSet(number), Values());
        EXPECT_FALSE(set.valid());
        numbers[element] = 40;
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(number), Values{40});
        numbers[element] = -1;
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(number), Values{-1});
        numbers[element] = 41;
        set.insert(Key(numbers), false);
        EXPECT_EQ(set.ElementSet(number), (Values{-1, 41})) << "a value goes in beside -1";
        numbers[element] = -1;
        set.insert(Key(numbers), true);
        EXPECT_EQ(set.ElementSet(number), (Values{-1, 41})) << "-1 is in there already";
        for (int const value :
             {-1, 0, 41, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
            numbers[element] = value;
            EXPECT_TRUE(set.contains(Key(numbers))) << value;
            EXPECT_TRUE(set & Key(numbers)) << value;
        }
        EXPECT_TRUE(set.valid());
        std::size_t const other = (element + 1) % 8;
        numbers[other] = 0;
        EXPECT_FALSE(set.contains(Key(numbers)));
        EXPECT_FALSE(set & Key(numbers));
    }
}

TEST(CQIdx8Set, InsertTypeAndBenchAlone) {
    struct Case {
        int type, bench;
        bool any;
        Values types, benches;
    };
    Case const steps[] = {
        {-1, -1, false, {}, {}},
        {1, -1, false, {1}, {}},
        {2, 5, true, {1, 2}, {5}},
        {-1, 6, false, {1, 2}, {5, 6}},
        {-1, 7, true, {-1}, {5, 6, 7}},
        {3, -1, true, {-1, 3}, {-1}},
        {-1, -1, true, {-1, 3}, {-1}},
        {-1, 8, true, {-1, 3}, {-1, 8}},
        {-2, -3, false, {-2, -1, 3}, {-3, -1, 8}},
    };
    CQIdx8Set set;
    for (auto const& [type, bench, any, types, benches] : steps) {
        SCOPED_TRACE(testing::Message() << type << ' ' << bench << ' ' << any);
        set.insertTypeBench(type, bench, any);
        EXPECT_EQ(set.TypeSet(), types);
        EXPECT_EQ(set.BenchSet(), benches);
        EXPECT_TRUE(set.ElementSet(0).empty());
    }
}

TEST(CQIdx8Set, RemovingTakesElementsLiterally) {
    CQIdx8Set set;
    set.insert(QIdx8(), true);
    set += QIdx8(1, 2, 3, 4, 5, 6, 7, 8);
    CQIdx8Set const& result = (set -= QIdx8(-1, 2, 3, -1, 99, 6, -1, 8));
    EXPECT_EQ(&result, &set);
    EXPECT_EQ(Sets(set), (std::vector<Values>{{-1}, {4}, {-1, 5}, {-1}, {7}, {-1}, {1}, {-1}}));
}

TEST(CQIdx8Set, IntersectionAndUnionSetBySet) {
    CQIdx8Set left, right;
    left.insert(QIdx8(-1, 2, 3, 4, 5, 6, 7, 8), true);
    left.insertLocaChan(1, 2, true);
    left.insertInstrPar(3, 4, true);
    right += QIdx8(1, 2, 3, 40, 5, 60, 7, 80);
    right.insertTypeBench(9, 9, true);
    right.insertLocaChan(1, 2, true);
    right.insertInstrPar(3, 5, true);
    CQIdx8Set both = left;
    EXPECT_EQ(&(both &= right), &both);
    EXPECT_EQ(Sets(both), (std::vector<Values>{{3}, {}, {5}, {}, {7}, {}, {}, {2}}));
    EXPECT_EQ(both.LocaChanSet(), (Pairs{{1, 2}}));
    EXPECT_EQ(both.InstrParamSet(), Pairs());
    CQIdx8Set either = left;
    EXPECT_EQ(&(either |= right), &either);
    EXPECT_EQ(Sets(either),
              (std::vector<Values>{{3}, {4, 40}, {5}, {6, 60}, {7}, {8, 80}, {-1, 1, 9}, {2, 9}}));
    EXPECT_EQ(either.InstrParamSet(), (Pairs{{3, 4}, {3, 5}}));
    CQIdx8Set const& same = either;
    auto const sets = Sets(either);
    either &= same;
    either |= same;
    EXPECT_EQ(Sets(either), sets);
}

TEST(CQIdx8Set, PairsCopiesAndClearing) {
    CQIdx8Set set;
    set.insert(QIdx8(1, 2, 3, 4, 5, 6, 7, 8), false);
    set.insertLocaChan(10, -1, true);
    set.insertInstrPar(20, 21, false);
    set.InstrParamSet().insert({22, -1});
    CQIdx8Set const copy = set;
    CQIdx8Set assigned;
    assigned.insertTypeBench(99, 99, true);
    assigned = set;
    set.clear();
    EXPECT_EQ(Sets(set), std::vector<Values>(8));
    EXPECT_EQ(set.LocaChanSet(), Pairs());
    EXPECT_EQ(set.InstrParamSet(), Pairs());
    for (CQIdx8Set const* const kept : {&copy, static_cast<CQIdx8Set const*>(&assigned)}) {
        EXPECT_EQ(Sets(*kept), (std::vector<Values>{{3}, {4}, {5}, {6}, {7}, {8}, {1}, {2}}));
        EXPECT_TRUE(kept->containsLocaChan(10, 77));
        EXPECT_FALSE(kept->containsLocaChan(11, 77));
        EXPECT_TRUE(kept->containsInstrPar(20, 21));
        EXPECT_TRUE(kept->containsInstrPar(22, 5));
        EXPECT_FALSE(kept->containsInstrPar(20, 22));
    }
}

TEST(CQIdx8Set, EverySetIsCheckedForCompleteness) {
    CQIdx8Set reference;
    for (unsigned int element = 0; element < 8; ++element)
        reference.ElementSet(element) = {1, 2};
    for (unsigned int failing = 0; failing < 8; ++failing) {
        SCOPED_TRACE(failing);
        CQIdx8Set set;
        for (unsigned int element = 0; element < 8; ++element)
            set.ElementSet(element) = {0, 1, 2};
        set.ElementSet(failing) = {2};
        EXPECT_FALSE(set.completeness_check(reference));
        for (unsigned int element = 0; element < 8; ++element)
            EXPECT_EQ(set.ElementSet(element), element == failing ? Values{2} : Values{-1}) << element;
        set.ElementSet(failing) = {-1, 2};
        EXPECT_TRUE(set.completeness_check(reference));
        EXPECT_EQ(Sets(set), std::vector<Values>(8, Values{-1}));
        EXPECT_TRUE(set.completeness_check(set));
    }
}

// The model asks the definition for every value there is: a set is a table of what is in it.
TEST(CQIdx8SetRandom, SameAsTheModel) {
    constexpr unsigned int seed = 2202;
    constexpr int low = -2;
    constexpr std::size_t count = 6;
    std::mt19937 random(seed);
    using Table = std::array<std::array<bool, count>, 8>;
    auto const slot = [](int value) { return static_cast<std::size_t>(value - low); };
    CQIdx8Set set;
    Table model{};
    for (int step = 0; step < 6000; ++step) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step);
        Numbers numbers{};
        for (int& number : numbers)
            number = static_cast<int>(random() % count) + low;
        unsigned int const operation = static_cast<unsigned int>(random() % 5);
        switch (operation) {
        case 0:
            set.insert(Key(numbers), true);
            break;
        case 1:
            set.insert(Key(numbers), false);
            break;
        case 2:
            set += Key(numbers);
            break;
        default:
            set -= Key(numbers);
        }
        for (std::size_t element = 0; element < 8; ++element) {
            auto& in = model[element];
            int const value = numbers[element];
            if (operation > 2)
                in[slot(value)] = false;
            else if (value != -1)
                in[slot(value)] = true;
            else if (operation == 0 && !in[slot(-1)]) {
                in = {};
                in[slot(-1)] = true;
            }
            for (int probe = low; probe < low + static_cast<int>(count); ++probe) {
                unsigned int const place = static_cast<unsigned int>((element + 6) % 8);
                ASSERT_EQ(set.ElementSet(place).count(probe) == 1, in[slot(probe)])
                    << element << ' ' << probe;
                ASSERT_EQ(set.contains(place, probe), in[slot(probe)] || in[slot(-1)]);
            }
        }
        for (int& number : numbers)
            number = static_cast<int>(random() % count) + low;
        int six = 0;
        int all = 0;
        for (std::size_t element = 0; element < 8; ++element) {
            int const fits = model[element][slot(numbers[element])] || model[element][slot(-1)] ? 1 : 0;
            all += fits;
            six += element < 2 ? 0 : fits;
        }
        ASSERT_EQ(set.contains(Key(numbers)), all == 8);
        ASSERT_EQ(set & Key(numbers), all == 8);
        ASSERT_EQ(set & SixOf(numbers), six == 6);
    }
}

} // namespace
