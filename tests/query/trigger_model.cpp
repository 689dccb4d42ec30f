#include "trigger_model.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace trigger_model {
namespace {

float Rounded(double value) {
    return static_cast<float>(value);
}
double Wide(float value) {
    return value;
}

// A division that is defined for a divisor of 0 too: that counts as a tiny number with its sign.
double Ratio(double dividend, double divisor) {
    if (divisor != 0)
        return dividend / divisor;
    return dividend == 0 ? std::nan("") : dividend * std::copysign(HUGE_VAL, divisor);
}

// The low 32 bits of a whole number without its fraction; 0 for what 64 bits do not hold.
unsigned int Count(float from, float to, float step) {
    double const whole = std::trunc(Wide(Rounded(Ratio(Wide(Rounded(Wide(to) - Wide(from))), Wide(step)))));
    if (!(std::fabs(whole) < std::ldexp(1.0, 63)) && whole != -std::ldexp(1.0, 63))
        return 0;
    double const low = std::fmod(whole, std::ldexp(1.0, 32)); // exact, with the sign of the number
    return static_cast<unsigned int>(low < 0 ? low + std::ldexp(1.0, 32) : low);
}

} // namespace

Interval IntervalSet(float start, float step, float stop) {
    Interval interval{start, stop, step, Count(start, stop, step), true};
    if (std::isnan(start) || std::isnan(stop) || stop < start)
        interval = {stop, start, step, interval.len, false};
    return interval;
}

Interval IntervalOf(Row const& row) {
    Interval interval = IntervalSet(row.start, row.step, row.stop);
    interval.len = Count(interval.start, interval.stop, interval.step);
    return interval;
}

std::optional<std::int64_t> Cell(Interval const& interval, unsigned int dim, float position, bool clamp) {
    double const lowest = -2147483648.0;
    double const distance = Rounded(Wide(position) - Wide(interval.start));
    double const cells = Rounded(Ratio(distance, Wide(interval.step)));
    double index = std::isnan(cells) ? lowest : std::min(std::max(std::trunc(cells), lowest), 2147483647.0);
    double const boundary = Rounded(Wide(Rounded(index)) * Wide(interval.step));
    // Two floats are equal exactly if their difference is 0; infinite ones have none.
    if (interval.raising && boundary == distance && std::isfinite(distance))
        index = std::max(index - 1, lowest);
    if (clamp)
        index = std::min(std::max(index, 0.0), 65535.0);
    if (!(index >= 0 && index <= 65535))
        return std::nullopt;
    std::int64_t number = 0;
    bool const upper = dim % 2 == 1;
    for (int bit = 15; bit >= 0; --bit) {
        bool const is_set = std::fmod(std::floor(std::ldexp(index, -bit)), 2.0) == 1.0;
        if (bit == 15 && upper && is_set)
            number = -1; // all bits above
        number = number * 2 + (is_set ? 1 : 0);
    }
    return upper ? number * 65536 : number;
}

int CellOf(std::int64_t number, unsigned int dim) {
    int result = 0;
    for (unsigned int bit = 0; bit < 16; ++bit) {
        std::uint64_t const mask = std::uint64_t{1} << (dim % 4 * 16 + bit);
        bool const is_set = (static_cast<std::uint64_t>(number) & mask) != 0;
        int const weight = bit == 15 ? -32768 : 1 << bit;
        result += is_set ? weight : 0;
    }
    return result;
}

float PositionOf(int cells, int halves, float step, float start, float stop) {
    double const width = Rounded((cells + 0.5 * halves) * Wide(step));
    return Rounded(width + Wide(stop < start ? stop : start));
}

float MiddleOrEdge(std::int64_t number, std::int64_t extent, unsigned int dim, float step, float start,
                   float stop) {
    int const length = CellOf(extent, dim);
    int sum = CellOf(number, dim) + length;
    if (sum > 32767)
        sum -= 65536;
    if (sum < -32768)
        sum += 65536;
    return PositionOf(sum, length == 0 ? 1 : 0, step, start, stop);
}

std::vector<Row> RowsOf(std::vector<Row> const& table, int mode, int trigger) {
    using Place = std::tuple<std::int64_t, std::int64_t, std::int64_t>;
    Place const from{mode, trigger, 0};
    Place const to{mode, std::int64_t{trigger} + 1, 0};
    std::vector<Row> rows;
    for (Row const& row : table) {
        Place const place{row.key[0], row.key[1], row.key[2]};
        if (!(place < from) && place < to)
            rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end(),
              [](Row const& left, Row const& right) { return left.key < right.key; });
    return rows;
}

bool Same(float left, float right) {
    return left == right || (std::isnan(left) && std::isnan(right));
}

} // namespace trigger_model
