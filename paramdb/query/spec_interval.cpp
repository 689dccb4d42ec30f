#include <paramdb/query/spec_interval.h>

#include <cmath>
#include <limits>

namespace {

using Definition = QVSpecIntervalEntry::Definition;

// The line nearest to a position, the even one of two. What 32 bits with sign do not hold saturates, and what
// is no number counts as the lowest.
unsigned int NearestLine(float position) {
    constexpr float limit = 2147483648.0f;
    float const line = std::nearbyint(position);
    std::int32_t index = std::numeric_limits<std::int32_t>::min();
    if (line >= limit)
        index = std::numeric_limits<std::int32_t>::max();
    else if (line >= -limit)
        index = static_cast<std::int32_t>(line);
    return static_cast<unsigned int>(index);
}

} // namespace

void CQtSpecInterval::LoadTransformParams(int mode, int a, int b) {
    mode = m_instance->VirtMode2BaseMode(mode);
    if (mode == m_mode && a == m_a && b == m_b)
        return;
    m_mode = mode;
    m_a = a;
    m_b = b;
    m_assembly_ratio = std::fabs(m_instance->FrequencyRatioToGeneratingRotor(mode, a, b));
    m_base_order = m_instance->BaseOrder(mode, b);
}

CQtSpecInterval::index_range_result_t CQtSpecInterval::FrequencyRange(QVSpecIntervalEntry const& entry,
                                                                      float line_distance, float speed,
                                                                      float& lower, float& upper) const {
    Definition const& low = entry.lower();
    Definition const& high = entry.upper();
    bool const has_harmonic = low.harmonic() != 0 || high.harmonic() != 0;
    bool const has_modulation = low.modulation() != 0 || high.modulation() != 0;
    bool const has_order = low.order() != 0 || high.order() != 0;
    bool const has_frequency = low.frequency() != 0 || high.frequency() != 0;
    if (has_harmonic && m_base_order == 0)
        return range_no_base_order;
    if ((has_harmonic || has_modulation) && m_assembly_ratio == 0)
        return range_no_assembly_ratio;
    if (has_order && has_frequency && m_assembly_ratio == 0)
        return range_no_ratio_for_mixed;

    // A band that is wholly of one kind stays what it is.
    bool const is_mixed = low.domain() != high.domain() || low.domain() == QVSpecIntervalEntry::MixedDomain;
    double const scale = is_mixed ? double{speed} : 1.0;
    // The steps are rounded to float and double as they stand: results are compared between machines.
    auto const bound = [&](Definition const& position) {
        float const turns = position.harmonic() * m_base_order + position.modulation();
        float const lines = static_cast<float>(position.lines()) * line_distance;
        double const orders = double{turns} * m_assembly_ratio + double{position.order()};
        return static_cast<float>(orders * scale + double{position.frequency()} + double{lines});
    };
    lower = bound(low);
    upper = bound(high);
    return lower < 0 || upper < 0 || lower > upper ? range_negative : range_success;
}

CQtSpecInterval::index_range_result_t CQtSpecInterval::IndexRange(QVSpecIntervalEntry const& entry,
                                                                  IndexInterval& interval,
                                                                  unsigned int line_count,
                                                                  float line_distance, float speed) const {
    if (!(0 < line_distance))
        return range_no_line_distance;
    float lower = 0;
    float upper = 0;
    index_range_result_t const result = FrequencyRange(entry, line_distance, speed, lower, upper);
    if (result != range_success)
        return result;

    unsigned int const last_line = line_count - 1;
    unsigned int const first = NearestLine(lower / line_distance);
    unsigned int last = NearestLine(upper / line_distance);
    if (first > last_line)
        return range_beyond_spectrum;
    if (last > last_line) {
        last = last_line;
        upper = static_cast<float>(last) * line_distance;
    }
    interval = {lower, upper, first, last};
    return range_success;
}

std::uint64_t CQtSpecInterval::InvertIndexIntervalCollection(std::vector<IndexInterval>& intervals) {
    if (intervals.size() < 2)
        return intervals.size();
    // There are never more pieces than intervals taken, so no piece lands on an interval still to come.
    std::size_t piece = 0;
    for (std::size_t taken = 1; taken < intervals.size(); ++taken) {
        IndexInterval const cut = intervals[taken];
        bool const keeps_start = intervals[piece].first <= cut.first;
        bool const keeps_end = intervals[piece].last > cut.last;
        if (keeps_start && keeps_end) {
            intervals[piece + 1] = intervals[piece];
            ++piece;
        }
        if (keeps_start) {
            IndexInterval& before = intervals[keeps_end ? piece - 1 : piece];
            before.stop = cut.start;
            before.last = cut.first - 1;
        }
        if (keeps_end) {
            intervals[piece].start = cut.stop;
            intervals[piece].first = cut.last + 1;
        }
    }
    intervals.resize(piece + 1);
    return intervals.size();
}
