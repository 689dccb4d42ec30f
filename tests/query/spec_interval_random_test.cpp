#include <paramdb/query/spec_interval.h>

#include "spec_interval_support.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using namespace spec_interval_support;

// Step by step, with every rounding written out.
struct BandModel {
    float base_order;
    double ratio;

    struct Bands {
        int result;
        bool written;
        float lower, upper;
    };
    Bands Range(Entry const& entry, float distance, float speed) const {
        bool any[4];
        std::size_t place = 0;
        for (auto const term : {0, 1, 2, 3}) {
            auto const value = [term](Position const& p) {
                float const terms[] = {p.frequency(), p.order(), p.harmonic(), p.modulation()};
                return terms[term];
            };
            any[place++] = !(value(entry.lower()) == 0.0f && value(entry.upper()) == 0.0f);
        }
        auto const [frequency, order, harmonic, modulation] = any;
        if (harmonic && base_order == 0.0f)
            return {2, false, 0, 0};
        if ((harmonic || modulation) && ratio == 0.0)
            return {3, false, 0, 0};
        if (order && frequency && ratio == 0.0)
            return {5, false, 0, 0};
        double scale = speed;
        if (entry.lower().domain() == entry.upper().domain() && entry.lower().domain() != 3)
            scale = 1.0;
        float bounds[2];
        for (int side = 0; side < 2; ++side) {
            Position const& d = side == 0 ? entry.lower() : entry.upper();
            float volatile turned = d.harmonic() * base_order;
            turned = turned + d.modulation();
            float volatile shift = static_cast<float>(d.lines());
            shift = shift * distance;
            double volatile sum = static_cast<double>(turned) * ratio;
            sum = sum + static_cast<double>(d.order());
            sum = sum * scale;
            sum = sum + static_cast<double>(d.frequency());
            sum = sum + static_cast<double>(shift);
            bounds[side] = static_cast<float>(sum);
        }
        bool const bad = bounds[0] < 0.0f || bounds[1] < 0.0f || bounds[0] > bounds[1];
        return {bad ? 6 : 0, true, bounds[0], bounds[1]};
    }

    // By floor and remainder in double, in which every float is exact.
    static unsigned int Line(float position) {
        if (std::isnan(position))
            return 0x80000000u;
        double const value = position;
        if (value >= 2147483647.0)
            return 0x7FFFFFFFu;
        double const below = std::floor(value);
        double const rest = value - below;
        auto line = static_cast<std::int64_t>(below);
        if (rest > 0.5 || (rest == 0.5 && line % 2 != 0))
            ++line;
        return static_cast<unsigned int>(line);
    }

    int Lines(Entry const& entry, Interval& interval, unsigned int count, float distance, float speed) const {
        if (std::isnan(distance) || distance <= 0.0f)
            return 4;
        Bands bands = Range(entry, distance, speed);
        if (bands.result != 0)
            return bands.result;
        unsigned int const end = count == 0 ? HighestLine : count - 1;
        unsigned int const first = Line(bands.lower / distance);
        unsigned int last = Line(bands.upper / distance);
        if (first > end)
            return 1;
        if (last > end) {
            last = end;
            bands.upper = static_cast<float>(last) * distance;
        }
        interval.start = bands.lower;
        interval.stop = bands.upper;
        interval.first = first;
        interval.last = last;
        return 0;
    }
};
TEST(SpecIntervalRandom, SameAsTheModel) {
    constexpr std::uint32_t seed = 5601;
    RandomNumbers random(seed);
    Drive drive;
    int results[7] = {};
    for (int round = 0; round < 60000; ++round) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << " round " << round);
        float const base_order = random.Float();
        double const ratio = double{random.Float()} * (random.Below(2) == 0 ? 1.0 : 1.0 / 3.0);
        drive.Set(ratio, base_order);
        CQtSpecInterval const calculation = drive.Loaded();
        BandModel const model{base_order, std::fabs(ratio)};
        Entry const entry(random.AnyPosition(), random.AnyPosition());
        float const distance = random.Below(10) == 0 ? random.Float() : 0.01f + random.Ordinary() / 100.0f;
        float const speed = random.Float();
        unsigned int const count = random.Below(10) == 0 ? random.Below(3) - 2 : random.Below(100000);

        float lower = -77;
        float upper = -78;
        BandModel::Bands const expected = model.Range(entry, distance, speed);
        ASSERT_EQ(calculation.FrequencyRange(entry, distance, speed, lower, upper), expected.result);
        ASSERT_TRUE(Same(lower, expected.written ? expected.lower : -77.0f));
        ASSERT_TRUE(Same(upper, expected.written ? expected.upper : -78.0f));

        Interval interval{-1, -2, 3, 4};
        Interval wanted = interval;
        int const result = model.Lines(entry, wanted, count, distance, speed);
        ASSERT_EQ(calculation.IndexRange(entry, interval, count, distance, speed), result);
        ASSERT_TRUE(Same(interval.start, wanted.start));
        ASSERT_TRUE(Same(interval.stop, wanted.stop));
        ASSERT_EQ(interval.first, wanted.first);
        ASSERT_EQ(interval.last, wanted.last);
        ++results[result];
    }
    for (int const count : results)
        EXPECT_GT(count, 50) << "every result must have come";
}

} // namespace
