#include "tools/interval_bands.h"

namespace paramdb::tools {
namespace {

using Position = OrderMeaning::Position;

bool IsMixed(QVSpecIntervalEntry const& entry) {
    return entry.lower().domain() != entry.upper().domain() ||
           entry.lower().domain() == QVSpecIntervalEntry::MixedDomain;
}

BandUnit UnitOf(QVSpecIntervalEntry const& entry) {
    if (IsMixed(entry) || entry.lower().domain() == QVSpecIntervalEntry::FrequencyDomain)
        return BandUnit::Hz;
    return entry.lower().domain() == QVSpecIntervalEntry::OrderDomain ? BandUnit::Orders : BandUnit::Spectrum;
}

// Whether a result is the same at any speed.
bool IsSpeedless(CQtSpecInterval::index_range_result_t result) {
    return result != CQtSpecInterval::range_success && result != CQtSpecInterval::range_negative &&
           result != CQtSpecInterval::range_beyond_spectrum;
}

IntervalBand BandOf(QVSpecIntervalEntry const& entry, CQtSpecInterval const& calculation,
                    DriveOptions const& options, unsigned int line_count) {
    IntervalBand band;
    band.unit = UnitOf(entry);
    float const speed = options.speed.value_or(0);
    if (options.line_distance) {
        CQtSpecInterval::IndexInterval interval{};
        band.result = calculation.IndexRange(entry, interval, line_count, *options.line_distance, speed);
        band.lower = interval.start;
        band.upper = interval.stop;
        band.lines = {interval.first, interval.last};
    } else {
        band.result = calculation.FrequencyRange(entry, 0, speed, band.lower, band.upper);
    }
    if (IsMixed(entry) && !options.speed && !IsSpeedless(band.result))
        band.fault = "orders beside frequencies: needs the speed";
    else
        band.fault = ResultText(band.result);
    if (!band.fault.empty())
        band.lines.reset();
    else if (band.unit == BandUnit::Orders && options.speed)
        band.hz = {band.lower * speed, band.upper * speed};
    return band;
}

} // namespace

char const* UnitWord(BandUnit unit) {
    switch (unit) {
    case BandUnit::Orders:
        return "orders";
    case BandUnit::Hz:
        return "Hz";
    case BandUnit::Spectrum:
        break;
    }
    return "spectrum";
}

std::vector<IntervalBand> BandsOf(OrderMeaning const& meaning, CQtSpecInterval const& calculation,
                                  DriveOptions const& options, unsigned int line_count) {
    std::vector<IntervalBand> bands;
    for (auto const& [lower, upper] : meaning.intervals)
        bands.push_back(
            BandOf({meaning.positions[lower], meaning.positions[upper]}, calculation, options, line_count));
    return bands;
}

char const* ResultText(CQtSpecInterval::index_range_result_t result) {
    switch (result) {
    case CQtSpecInterval::range_success:
        return "";
    case CQtSpecInterval::range_beyond_spectrum:
        return "it begins beyond the last line";
    case CQtSpecInterval::range_no_base_order:
        return "a harmonic, but the gear has no base order";
    case CQtSpecInterval::range_no_assembly_ratio:
        return "a harmonic or modulation, but the gear has no speed relative to the rotor";
    case CQtSpecInterval::range_no_line_distance:
        return "the line distance is not above 0";
    case CQtSpecInterval::range_no_ratio_for_mixed:
        return "an order beside a frequency, but the gear has no speed relative to the rotor";
    case CQtSpecInterval::range_negative:
        return "it begins below 0 or behind its end";
    }
    return "unknown result";
}

} // namespace paramdb::tools
