#include <paramdb/storage/node_list.h>

#include <gtest/gtest.h>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

class Counted : private paramdb::NodeLinks {
public:
    explicit Counted(int number) : value(number) {
        if (number < 0)
            throw std::invalid_argument("negative");
        ++Alive;
    }
    Counted(Counted const& other) : NodeLinks(other), value(other.value) { ++Alive; }
    Counted& operator=(Counted const&) = default;
    ~Counted() { --Alive; }

    int value;
    inline static int Alive = 0;

private:
    friend class paramdb::NodeList<Counted>;
    friend class paramdb::NodePosition<Counted>;
    friend class paramdb::NodePosition<Counted const>;
};

using CountedList = paramdb::NodeList<Counted>;
using Values = std::vector<int>;

class NodeListTest : public testing::Test {
protected:
    ~NodeListTest() override {
        list.clear();
        other.clear();
        EXPECT_EQ(Counted::Alive, 0);
    }

    static void Fill(CountedList& target, Values const& values) {
        for (int const value : values)
            target.emplace_back(value);
    }
    static Values Forwards(CountedList const& source) {
        Values values;
        for (Counted const& number : source)
            values.push_back(number.value);
        EXPECT_EQ(values.size(), source.size());
        return values;
    }
    static Values Backwards(CountedList& source) {
        Values values;
        for (auto position = source.end(); position != source.begin();)
            values.push_back((--position)->value);
        return values;
    }

    paramdb::NodePool pool{sizeof(Counted)};
    CountedList list{pool};
    CountedList other{pool};
};

} // namespace

TEST_F(NodeListTest, AFreshListIsEmpty) {
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(list.begin(), list.end());
}

TEST_F(NodeListTest, EmplacePutsANodeBeforeThePosition) {
    Fill(list, {1, 2});
    EXPECT_EQ(list.emplace(list.begin(), 0)->value, 0);
    EXPECT_EQ(list.emplace(list.end(), 9)->value, 9);
    EXPECT_EQ(list.emplace(std::prev(list.end()), 5)->value, 5);
    EXPECT_EQ(Forwards(list), (Values{0, 1, 2, 5, 9}));
    EXPECT_EQ(Backwards(list), (Values{9, 5, 2, 1, 0}));
    EXPECT_EQ(list.front().value, 0);
    EXPECT_EQ(std::as_const(list).front().value, 0);
}

TEST_F(NodeListTest, AConstructorThatThrowsLeavesTheList) {
    Fill(list, {1, 2});
    EXPECT_THROW(list.emplace(list.begin(), -1), std::invalid_argument);
    EXPECT_EQ(Forwards(list), (Values{1, 2}));
    list.emplace_back(3);
    EXPECT_EQ(Forwards(list), (Values{1, 2, 3}));
}

TEST_F(NodeListTest, EraseGivesThePositionBehind) {
    Fill(list, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(list.erase(list.begin())->value, 2);
    EXPECT_EQ(list.erase(std::prev(list.end())), list.end());
    list.erase(std::next(list.begin()), std::prev(list.end()));
    EXPECT_EQ(Forwards(list), (Values{2, 5}));
    EXPECT_EQ(Backwards(list), (Values{5, 2}));
    list.erase(list.end(), list.end());
    list.erase(list.begin(), list.end());
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(Counted::Alive, 0);
}

TEST_F(NodeListTest, PositionsStayValid) {
    Fill(list, {1, 2, 3});
    auto const second = std::next(list.begin());
    list.erase(list.begin());
    list.emplace(list.end(), 4);
    list.emplace(second, 8);
    EXPECT_EQ(second->value, 2);
    EXPECT_EQ(CountedList::position(*second), second);
    EXPECT_EQ(std::prev(second)->value, 8);
    EXPECT_EQ(std::next(second)->value, 3);
}

TEST_F(NodeListTest, ANodeKnowsWhetherItStandsInAList) {
    Fill(list, {1});
    Counted const outside(2);
    Counted const copy(list.front());
    EXPECT_TRUE(CountedList::stands_in_list(list.front()));
    EXPECT_FALSE(CountedList::stands_in_list(outside));
    EXPECT_FALSE(CountedList::stands_in_list(copy));
}

TEST_F(NodeListTest, AssignmentLeavesANodeInItsPlace) {
    Fill(list, {1, 2, 3});
    Counted const outside(7);
    *std::next(list.begin()) = outside;
    list.front() = *std::prev(list.end());
    EXPECT_EQ(Forwards(list), (Values{3, 7, 3}));
    EXPECT_EQ(Backwards(list), (Values{3, 7, 3}));
}

TEST_F(NodeListTest, SpliceBackMovesAllNodes) {
    Fill(list, {1, 2});
    Fill(other, {3, 4});
    auto const third = other.begin();
    list.splice_back(other);
    EXPECT_EQ(Forwards(list), (Values{1, 2, 3, 4}));
    EXPECT_EQ(Backwards(list), (Values{4, 3, 2, 1}));
    EXPECT_EQ(std::next(list.begin(), 2), third);
    EXPECT_TRUE(other.empty());
    EXPECT_EQ(other.begin(), other.end());
    list.splice_back(other);
    EXPECT_EQ(Forwards(list), (Values{1, 2, 3, 4}));
    other.splice_back(list);
    EXPECT_EQ(Forwards(other), (Values{1, 2, 3, 4}));
    EXPECT_TRUE(list.empty());
}

TEST_F(NodeListTest, ClearDestroysAllNodes) {
    Fill(list, {1, 2, 3});
    Fill(other, {4});
    list.clear();
    EXPECT_EQ(Counted::Alive, 1);
    list.clear();
    Fill(list, {5});
    EXPECT_EQ(Forwards(list), Values{5});
}

TEST_F(NodeListTest, IteratorsBehaveAsIterators) {
    Fill(list, {1, 2, 3});
    auto position = list.begin();
    EXPECT_EQ(position++->value, 1);
    EXPECT_EQ((*position--).value, 2);
    EXPECT_EQ((++position)->value, 2);
    EXPECT_EQ((--position)->value, 1);
    CountedList::const_iterator const constant = position;
    EXPECT_EQ(constant, std::as_const(list).begin());
    EXPECT_EQ(CountedList::iterator(), CountedList::iterator());
    EXPECT_NE(CountedList::iterator(), list.end());
    static_assert(std::bidirectional_iterator<CountedList::iterator>);
    static_assert(!std::is_convertible_v<CountedList::const_iterator, CountedList::iterator>);
}
