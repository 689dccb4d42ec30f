// The trigger store against its model, on random intervals, positions, numbers and tables.
#include <paramdb/query/trigger_store.h>

#include <array>
#include <bit>
#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <optional>
#include <random>
#include <stdexcept>
#include <tests/distillery/own_distillery.h>
#include <tests/query/trigger_support.h>
#include <vector>

namespace {

using CInterval = CTriggerStore::CInterval;
using CIntervals = CTriggerStore::CIntervals;
using CDimensions = CTriggerStore::CDimensions;
using trigger_model::Same;

class Random {
public:
    explicit Random(unsigned int seed) : m_engine(seed) {}

    unsigned int Below(unsigned int count) { return static_cast<unsigned int>(m_engine() % count); }
    bool Chance() { return Below(2) == 0; }
    std::int64_t Number() {
        auto const bits = m_engine();
        switch (Below(4)) {
        case 0:
            return 0;
        case 1: // 16 bits at one place
            return static_cast<std::int64_t>((bits & 0xFFFF) << (16 * Below(4)));
        default:
            return static_cast<std::int64_t>(bits);
        }
    }
    unsigned int Dim() { return Below(8) == 0 ? static_cast<unsigned int>(m_engine()) : Below(4); }

    // A float of any kind: round ones, fractions, any bits, and what is not finite.
    float Float() {
        switch (Below(8)) {
        case 0:
            return static_cast<float>(static_cast<int>(Below(2001)) - 1000);
        case 1:
            return static_cast<float>(static_cast<int>(Below(2001)) - 1000) * 0.1f;
        case 2:
            return static_cast<float>(Below(1000)) * 0.125f;
        case 3:
            return std::ldexp(1.0f, static_cast<int>(Below(278)) - 149);
        case 4: {
            constexpr float special[] = {0.0f,
                                         -0.0f,
                                         std::numeric_limits<float>::quiet_NaN(),
                                         std::numeric_limits<float>::infinity(),
                                         -std::numeric_limits<float>::infinity(),
                                         std::numeric_limits<float>::max(),
                                         std::numeric_limits<float>::denorm_min(),
                                         2147483648.0f,
                                         -2147483648.0f,
                                         65535.0f,
                                         65536.0f};
            return special[Below(std::size(special))];
        }
        case 5:
            return std::bit_cast<float>(static_cast<std::uint32_t>(m_engine()));
        default:
            return static_cast<float>(Below(100000)) / 97.0f;
        }
    }

    // A position on a boundary of the interval, beside it by one step of a float, or anywhere.
    float Position(CInterval const& interval) {
        if (Below(4) == 0)
            return Float();
        constexpr unsigned int counts[] = {3, 20, 70000, 0x80000000u};
        auto const cells = static_cast<float>(Below(counts[Below(4)]));
        float const edge = interval.start() + (Below(16) == 0 ? -cells : cells) * interval.step();
        constexpr float infinity = std::numeric_limits<float>::infinity();
        switch (Below(4)) {
        case 0:
            return std::nextafter(edge, infinity);
        case 1:
            return std::nextafter(edge, -infinity);
        default:
            return edge;
        }
    }

    trigger_model::Row Row() {
        trigger_model::Row row{{0, 0, 0}, static_cast<int>(Below(5)), Float(), Float(), Float()};
        if (Below(4) != 0)
            row.step = std::fabs(row.step);
        return row;
    }

private:
    std::mt19937_64 m_engine;
};

QVTriggerParams TableRow(trigger_model::Row const& row) {
    return TriggerRow(row.kind, row.start, row.stop, row.step);
}

TEST(TriggerRandom, IntervalsCellsAndPositions) {
    constexpr unsigned int seed = 5707;
    Random random(seed);
    int on_edge = 0; // cells that a boundary has lowered
    for (int round = 0; round < 10000; ++round) {
        auto const row = random.Row();
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round << ": " << row.start << ' '
                                        << row.stop << ' ' << row.step);
        CInterval const interval = TableRow(row);
        auto const model = trigger_model::IntervalOf(row);
        ASSERT_TRUE(Is(interval, model));
        CInterval set;
        set.set(row.start, row.step, row.stop);
        ASSERT_TRUE(Is(set, trigger_model::IntervalSet(row.start, row.step, row.stop)));

        for (int probe = 0; probe < 5; ++probe) {
            float const position = random.Position(interval);
            unsigned int const dim = random.Dim();
            bool const clamp = random.Chance();
            std::int64_t const before = random.Number();
            SCOPED_TRACE(testing::Message() << position << ' ' << dim << ' ' << clamp);
            auto const expected = trigger_model::Cell(model, dim, position, clamp);
            std::int64_t number = before;
            ASSERT_EQ(CTriggerStore::cell(interval, dim, position, number, clamp), expected.has_value());
            ASSERT_EQ(number, expected ? before | *expected : before);
            auto falling = model;
            falling.raising = false;
            on_edge += expected != trigger_model::Cell(falling, dim, position, clamp) ? 1 : 0;

            float answer = 0;
            ASSERT_TRUE(CTriggerStore::position(interval, before, dim, answer));
            int const cells = trigger_model::CellOf(before, dim) + (model.raising ? 1 : 0);
            ASSERT_TRUE(
                Same(answer, trigger_model::PositionOf(cells, 0, model.step, model.start, model.stop)))
                << answer;
        }
    }
    EXPECT_GT(on_edge, 3000) << "boundaries are hit";
}

TEST(TriggerRandom, AllDimensionsAtOnce) {
    constexpr unsigned int seed = 5708;
    Random random(seed);
    int inside = 0;
    for (int round = 0; round < 10000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
        CIntervals intervals;
        CDimensions position;
        std::array<trigger_model::Interval, 4> models;
        std::optional<std::int64_t> expected = 0;
        bool const clamp = random.Below(3) != 0;
        for (unsigned int dim = 0; dim < 4; ++dim) {
            auto const row = random.Row();
            intervals.intervals[dim] = TableRow(row);
            models[dim] = trigger_model::IntervalOf(row);
            position.positions[dim] = random.Position(intervals.intervals[dim]);
            intervals.dimensions[dim] = random.Below(4) != 0;
            position.dimensions[dim] = random.Below(4) != 0;
            if (!intervals.dimensions[dim] || !position.dimensions[dim])
                continue;
            auto const cell = trigger_model::Cell(models[dim], dim, position.positions[dim], clamp);
            expected = expected && cell ? std::optional(*expected | *cell) : std::nullopt;
        }
        inside += expected ? 1 : 0;
        std::int64_t const before = random.Number();
        std::int64_t number = before;
        ASSERT_EQ(CTriggerStore::cell(intervals, position, number, clamp), expected.has_value());
        ASSERT_EQ(number, expected.value_or(before));

        std::int64_t const extent = random.Number();
        ASSERT_TRUE(CTriggerStore::position(intervals, before, extent, position));
        ASSERT_TRUE(position.dimensions.all());
        for (unsigned int dim = 0; dim < 4; ++dim) {
            auto const& [start, stop, step, len, raising] = models[dim];
            ASSERT_TRUE(Same(position.positions[dim],
                             trigger_model::MiddleOrEdge(before, extent, dim, step, start, stop)))
                << dim << ' ' << position.positions[dim];
        }
    }
    EXPECT_GT(inside, 2500);
}

// Numbers of modes, triggers and dimensions, with both limits.
int AnyNumber(Random& random) {
    switch (random.Below(12)) {
    case 0:
        return std::numeric_limits<int>::max();
    case 1:
        return std::numeric_limits<int>::min();
    case 2:
        return std::numeric_limits<int>::max() - 1;
    default:
        return static_cast<int>(random.Below(4)) - 1;
    }
}

// The rows of a trigger up to the first that no dimension belongs to.
struct ModelRows {
    ModelRows(std::vector<trigger_model::Row> const& table, int mode, int trigger) {
        for (auto const& row : trigger_model::RowsOf(table, mode, trigger)) {
            is_empty = false;
            is_broken = row.key[2] < 1 || row.key[2] > 4;
            if (is_broken)
                break;
            good.push_back(row);
            mask |= 1u << (row.key[2] - 1);
        }
    }
    std::vector<trigger_model::Row> good;
    unsigned int mask = 0;
    bool is_empty = true;
    bool is_broken = false;
};

// Whether the call throws what a broken row makes it throw; its result otherwise.
template <class Call>
std::optional<bool> Result(Call call) {
    try {
        return call();
    } catch (std::out_of_range const& error) {
        EXPECT_STREQ(error.what(), "invalid bitset position");
        return std::nullopt;
    }
}

TEST(TriggerRandom, Tables) {
    constexpr unsigned int seed = 5709;
    Random random(seed);
    OwnDistillery own;
    CTriggerStore const store(own.instance());
    int found = 0, broken = 0;
    for (int round = 0; round < 1500; ++round) {
        own.tables().TriggerParam.clear();
        std::vector<trigger_model::Row> table;
        for (unsigned int count = random.Below(30); count > 0; --count) {
            auto row = random.Row();
            row.key = {AnyNumber(random), AnyNumber(random),
                       random.Below(8) == 0 ? AnyNumber(random) : static_cast<int>(random.Below(4)) + 1};
            if (own.tables()
                    .TriggerParam.insert({{row.key[0], row.key[1], row.key[2]}, TableRow(row)})
                    .second)
                table.push_back(row);
        }
        for (int query = 0; query < 20; ++query) {
            int const mode = AnyNumber(random);
            int const trigger = AnyNumber(random);
            SCOPED_TRACE(testing::Message()
                         << "seed " << seed << " round " << round << ": " << mode << ' ' << trigger);
            ASSERT_EQ(own.instance().VirtMode2BaseMode(mode), mode);
            ModelRows const model(table, mode, trigger);
            std::optional<bool> const expected =
                model.is_broken ? std::nullopt : std::optional(!model.is_empty);
            (model.is_broken ? broken : found) += model.is_empty ? 0 : 1;

            unsigned int mask = 99;
            ASSERT_EQ(Result([&] { return store.dimensions(mode, trigger, mask); }), expected);
            ASSERT_EQ(mask, model.mask);

            std::vector<int> varying;
            for (auto const& row : model.good)
                if (row.kind != 1)
                    varying.push_back(row.key[2] - 1);
            int dimension = -2;
            bool const answers = Result([&] {
                                     dimension = store.dimension(mode, trigger);
                                     return true;
                                 }).has_value();
            ASSERT_EQ(answers, !model.is_broken || varying.size() > 1);
            if (answers) {
                ASSERT_EQ(dimension, varying.size() == 1 ? varying[0] : -1);
            }

            CIntervals intervals;
            CDimensions position;
            std::int64_t const number = random.Number();
            std::int64_t const extent = random.Number();
            ASSERT_EQ(Result([&] { return store.field(mode, trigger, intervals); }), expected);
            ASSERT_EQ(Result([&] { return store.position(mode, trigger, number, extent, position); }),
                      expected);
            ASSERT_EQ(intervals.dimensions.to_ulong(), model.mask);
            ASSERT_EQ(position.dimensions.to_ulong(), model.mask);
            for (auto const& row : model.good) {
                auto const dim = static_cast<unsigned int>(row.key[2] - 1);
                ASSERT_TRUE(Is(intervals.intervals[dim], trigger_model::IntervalOf(row)));
                ASSERT_TRUE(
                    Same(position.positions[dim],
                         trigger_model::MiddleOrEdge(number, extent, dim, row.step, row.start, row.stop)));
            }

            unsigned int const dim = random.Below(6) - 1;
            trigger_model::Row const* exact = nullptr;
            for (auto const& row : table)
                if (row.key == std::array{mode, trigger, static_cast<int>(dim + 1)})
                    exact = &row;
            CInterval interval;
            ASSERT_EQ(store.field(mode, trigger, dim, interval), exact != nullptr);
            float place = 4711;
            bool const has_place = exact != nullptr && (exact->kind == 2 || exact->kind == 3);
            ASSERT_EQ(store.position(mode, trigger, number, dim, place), has_place);
            if (exact != nullptr) {
                ASSERT_TRUE(Is(interval, trigger_model::IntervalOf(*exact)));
            }
            float expected_place = 4711;
            if (has_place)
                expected_place =
                    trigger_model::PositionOf(trigger_model::CellOf(number, dim) + (exact->kind == 2 ? 1 : 0),
                                              0, exact->step, exact->start, exact->stop);
            ASSERT_TRUE(Same(place, expected_place)) << place << ' ' << expected_place;
        }
    }
    EXPECT_GT(found, 2000);
    EXPECT_GT(broken, 200);
}

} // namespace
