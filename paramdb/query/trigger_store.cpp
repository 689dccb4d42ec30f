#include <paramdb/platform/numeric/truncate.h>
#include <paramdb/query/trigger_store.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace {

constexpr unsigned int BitsPerDimension = 16;
constexpr int LastCell = 0xFFFF;

constexpr int Fixed = 1; // kinds of rows
constexpr int ClosedAtTop = 2;
constexpr int ClosedAtBottom = 3;

using Table = std::remove_cvref_t<decltype(std::declval<CQtParamInstance const&>().TriggerParam())>;

// The rows of one trigger.
class Rows {
public:
    Rows(CQtParamInstance const& parameters, int mode, int trigger)
        : Rows(parameters.TriggerParam(), parameters.VirtMode2BaseMode(mode), trigger) {}

    auto begin() const { return m_begin; }
    auto end() const { return m_end; }
    bool empty() const { return m_begin == m_end; }

private:
    Rows(Table const& table, int mode, int trigger)
        : m_begin(table.lower_bound({mode, trigger, 0})), m_end(Behind(table, mode, trigger)) {}

    // The first row of the next trigger; behind the highest number there is no other in this mode.
    static Table::const_iterator Behind(Table const& table, int mode, int trigger) {
        constexpr int lowest = std::numeric_limits<int>::min();
        constexpr int highest = std::numeric_limits<int>::max();
        if (trigger < highest)
            return table.lower_bound({mode, trigger + 1, 0});
        return mode < highest ? table.lower_bound({mode + 1, lowest, lowest}) : table.end();
    }

    Table::const_iterator m_begin;
    Table::const_iterator m_end;
};

// The row of one dimension; null without.
QVTriggerParams const* FindRow(CQtParamInstance const& parameters, int mode, int trigger, unsigned int dim) {
    Table const& table = parameters.TriggerParam();
    auto const row = table.find({parameters.VirtMode2BaseMode(mode), trigger, static_cast<int>(dim + 1)});
    return row != table.end() ? &row->second : nullptr;
}

// The dimension of a row.
unsigned int Dimension(QIdx3 const& key) {
    int const dimension = key[2];
    if (dimension < 1 || dimension > static_cast<int>(CTriggerStore::dimensions_d))
        throw std::out_of_range("invalid bitset position");
    return static_cast<unsigned int>(dimension) - 1;
}

// As processors divide, also by 0.
float Quotient(float dividend, float divisor) {
    using Limits = std::numeric_limits<float>;
    if (divisor != 0)
        return dividend / divisor;
    if (dividend == 0 || std::isnan(dividend))
        return Limits::quiet_NaN();
    return std::signbit(dividend) == std::signbit(divisor) ? Limits::infinity() : -Limits::infinity();
}

unsigned int CellCount(float from, float to, float step) {
    float const width = to - from;
    float const count = Quotient(width, step);
    return static_cast<unsigned int>(numeric::Truncate32(count));
}

// Without its fraction; the nearest limit of 32 bits for what they do not hold, the lowest for a NaN.
int TruncateToLimits(float value) {
    constexpr float limit = 2147483648.0f;
    if (value >= limit)
        return std::numeric_limits<int>::max();
    return value >= -limit ? static_cast<int>(value) : std::numeric_limits<int>::min();
}

// The cell of a position without regard to the end of the field.
int CellIndex(CTriggerStore::CInterval const& interval, float position) {
    float const distance = position - interval.start();
    float const cells = Quotient(distance, interval.step());
    int const index = TruncateToLimits(cells);
    float const boundary = static_cast<float>(index) * interval.step();
    float const above = boundary - distance;
    bool const is_in_lower_cell = interval.raising() && above == 0.0f;
    return is_in_lower_cell && index > std::numeric_limits<int>::min() ? index - 1 : index;
}

// The 16 bits of a dimension with their sign. Numbers have room for four dimensions.
std::int16_t CellOf(std::int64_t number, unsigned int dim) {
    return static_cast<std::int16_t>(number >> (dim % CTriggerStore::dimensions_d * BitsPerDimension));
}

// So many cells from the lower end of an interval.
float PositionOf(float cells, float step, float start, float stop) {
    float const distance = cells * step;
    return distance + std::min(start, stop);
}

// The cells between the lower end of an interval and the middle of a cell, or the far edge of an extent.
float CellsTo(std::int64_t number, std::int64_t extent, unsigned int dim) {
    std::int16_t const length = CellOf(extent, dim);
    auto const cell = static_cast<std::int16_t>(CellOf(number, dim) + length);
    return static_cast<float>(cell) + (length == 0 ? 0.5f : 0.0f);
}

} // namespace

CTriggerStore::CInterval::CInterval(float start, float step, unsigned int len, bool raising)
    : m_start(start), m_len(len), m_step(step), m_stop(static_cast<float>(len) * step), m_raising(raising) {}

CTriggerStore::CInterval::CInterval(QVTriggerParams const& row) {
    set(row.get<"start">(), row.get<"step">(), row.get<"stop">());
    m_len = CellCount(m_start, m_stop, m_step);
}

void CTriggerStore::CInterval::clear() {
    bool const raising = m_raising;
    *this = CInterval();
    m_raising = raising;
}

void CTriggerStore::CInterval::set(float start, float step, float stop) {
    m_start = start;
    m_len = CellCount(start, stop, step);
    m_step = step;
    m_stop = stop;
    m_raising = stop >= start;
    if (!m_raising)
        std::swap(m_start, m_stop);
}

int CTriggerStore::dimension(int mode, int trigger) const {
    int result = -1;
    for (auto const& [key, row] : Rows(*m_parameters, mode, trigger)) {
        auto const dim = static_cast<int>(Dimension(key));
        if (row.get<"kind">() == Fixed)
            continue;
        if (result != -1)
            return -1;
        result = dim;
    }
    return result;
}

bool CTriggerStore::dimensions(int mode, int trigger, unsigned int& mask) const {
    mask = 0;
    for (auto const& [key, row] : Rows(*m_parameters, mode, trigger))
        mask |= 1u << Dimension(key);
    return mask != 0;
}

bool CTriggerStore::field(int mode, int trigger, CIntervals& intervals) const {
    intervals.dimensions.reset();
    Rows const rows(*m_parameters, mode, trigger);
    for (auto const& [key, row] : rows) {
        unsigned int const dim = Dimension(key);
        intervals.dimensions.set(dim);
        intervals.intervals[dim] = row;
    }
    return !rows.empty();
}

bool CTriggerStore::field(int mode, int trigger, unsigned int dim, CInterval& interval) const {
    QVTriggerParams const* const row = FindRow(*m_parameters, mode, trigger, dim);
    if (row == nullptr)
        return false;
    interval = *row;
    return true;
}

bool CTriggerStore::cell(CInterval const& interval, unsigned int dim, float position, std::int64_t& number,
                         bool clamp) {
    int index = CellIndex(interval, position);
    if (clamp)
        index = std::clamp(index, 0, LastCell);
    if (index < 0 || index > LastCell)
        return false;
    // In 32 bits, which have room for two dimensions.
    unsigned int const shift = dim % 2 * BitsPerDimension;
    number |= static_cast<std::int32_t>(static_cast<std::uint32_t>(index) << shift);
    return true;
}

bool CTriggerStore::cell(CIntervals const& intervals, CDimensions const& position, std::int64_t& number,
                         bool clamp) {
    std::int64_t result = 0;
    auto const both = intervals.dimensions & position.dimensions;
    for (unsigned int dim = 0; dim < dimensions_d; ++dim)
        if (both[dim] && !cell(intervals.intervals[dim], dim, position.positions[dim], result, clamp))
            return false;
    number = result;
    return true;
}

bool CTriggerStore::position(CInterval const& interval, std::int64_t number, unsigned int dim,
                             float& position) {
    int const cells = CellOf(number, dim) + (interval.raising() ? 1 : 0);
    position = PositionOf(static_cast<float>(cells), interval.step(), interval.start(), interval.stop());
    return true;
}

bool CTriggerStore::position(CIntervals const& intervals, std::int64_t number, std::int64_t extent,
                             CDimensions& position) {
    position.dimensions.set();
    for (unsigned int dim = 0; dim < dimensions_d; ++dim) {
        CInterval const& interval = intervals.intervals[dim];
        position.positions[dim] =
            PositionOf(CellsTo(number, extent, dim), interval.step(), interval.start(), interval.stop());
    }
    return true;
}

bool CTriggerStore::position(int mode, int trigger, std::int64_t number, unsigned int dim,
                             float& position) const {
    QVTriggerParams const* const row = FindRow(*m_parameters, mode, trigger, dim);
    if (row == nullptr)
        return false;
    int const kind = row->get<"kind">();
    if (kind != ClosedAtTop && kind != ClosedAtBottom)
        return false;
    int const cells = CellOf(number, dim) + (kind == ClosedAtTop ? 1 : 0);
    position =
        PositionOf(static_cast<float>(cells), row->get<"step">(), row->get<"start">(), row->get<"stop">());
    return true;
}

bool CTriggerStore::position(int mode, int trigger, std::int64_t number, std::int64_t extent,
                             CDimensions& position) const {
    position.dimensions.reset();
    Rows const rows(*m_parameters, mode, trigger);
    for (auto const& [key, row] : rows) {
        unsigned int const dim = Dimension(key);
        position.dimensions.set(dim);
        position.positions[dim] = PositionOf(CellsTo(number, extent, dim), row.get<"step">(),
                                             row.get<"start">(), row.get<"stop">());
    }
    return !rows.empty();
}
