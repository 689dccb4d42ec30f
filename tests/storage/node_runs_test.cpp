#include <paramdb/storage/node_runs.h>

#include <cstddef>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace {

class Number : private paramdb::NodeLinks {
public:
    explicit Number(int number) : value(number) {}
    int value;

private:
    friend class paramdb::NodeList<Number>;
    friend class paramdb::NodePosition<Number>;
};

using List = paramdb::NodeList<Number>;
using Runs = paramdb::NodeRuns<Number>;

class NodeRunsTest : public testing::Test {
protected:
    std::vector<List::iterator> Fill(int count) {
        std::vector<List::iterator> positions;
        for (int number = 0; number < count; ++number)
            positions.push_back(list.emplace(list.end(), number));
        return positions;
    }
    static std::vector<List::iterator> Walk(Runs const& runs) {
        std::vector<List::iterator> positions;
        for (List::iterator const position : runs)
            positions.push_back(position);
        EXPECT_EQ(positions.size(), runs.size());
        return positions;
    }

    paramdb::NodePool pool{sizeof(Number), alignof(Number)};
    List list{pool};
};

TEST_F(NodeRunsTest, NoRunsHaveNoNodes) {
    Runs const runs;
    EXPECT_EQ(runs.size(), 0U);
    EXPECT_EQ(runs.begin(), runs.end());
    EXPECT_TRUE(runs.All().empty());
}

TEST_F(NodeRunsTest, NodesOfManyBlocksComeBackInOrder) {
    auto const positions = Fill(20000);
    Runs runs;
    for (auto const position : positions)
        runs.push_back(position);
    EXPECT_EQ(Walk(runs), positions);
    EXPECT_EQ(runs.All(), positions);
}

TEST_F(NodeRunsTest, AVectorThatWasAskedForChangesWithTheRuns) {
    auto const positions = Fill(10);
    Runs runs;
    runs.push_back(positions[4]);
    auto const& all = runs.All();
    runs.push_back(positions[5]);
    runs.push_back(positions[1]);
    EXPECT_EQ(&runs.All(), &all);
    EXPECT_EQ(all, (std::vector{positions[4], positions[5], positions[1]}));
    runs.clear();
    EXPECT_TRUE(all.empty());
    EXPECT_TRUE(Walk(runs).empty());
    runs.push_back(positions[9]);
    EXPECT_EQ(runs.All(), std::vector{positions[9]});
}

TEST_F(NodeRunsTest, ACopyHasTheSamePositionsAndItsOwnVector) {
    auto const positions = Fill(3);
    Runs runs;
    for (auto const position : positions)
        runs.push_back(position);
    auto const* const vector = &runs.All();
    Runs const copy(runs);
    runs.clear();
    EXPECT_EQ(Walk(copy), positions);
    EXPECT_EQ(copy.All(), positions);
    EXPECT_NE(&copy.All(), vector);
}

// Whatever is put together in whatever order, also the end of a list and null, it is as in a vector.
TEST_F(NodeRunsTest, AnyPositionsAreKeptAsInAVector) {
    auto positions = Fill(300);
    positions.push_back(list.end());
    positions.emplace_back();
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        Runs runs;
        std::vector<List::iterator> expected;
        std::size_t place = random() % positions.size();
        for (int step = 0; step < 200; ++step) {
            place = random() % 8 == 0 ? random() % positions.size() : (place + 1) % positions.size();
            runs.push_back(positions[place]);
            expected.push_back(positions[place]);
            if (random() % 64 == 0) {
                ASSERT_EQ(runs.All(), expected);
            }
        }
        ASSERT_EQ(Walk(runs), expected);
        ASSERT_EQ(runs.All(), expected);
    }
}

} // namespace
