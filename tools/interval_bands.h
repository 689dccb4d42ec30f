// The intervals of an order definition as bands of a spectrum.
//
// A band wholly in orders stays in orders, whatever the speed; one that mixes orders and frequencies is in Hz
// and needs the speed. A band of lines alone is in the unit of the spectrum.
#pragma once

#include <paramdb/query/spec_interval.h>

#include "tools/drive_options.h"
#include "tools/order_meaning.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace paramdb::tools {

enum class BandUnit { Orders, Hz, Spectrum };

// "orders", "Hz" or "spectrum".
char const* UnitWord(BandUnit unit);

struct IntervalBand {
    BandUnit unit = BandUnit::Hz;
    std::string fault; // in words; empty for a band that there is
    CQtSpecInterval::index_range_result_t result = CQtSpecInterval::range_success;
    float lower = 0;
    float upper = 0;
    std::optional<std::pair<float, float>> hz;                  // of a band in orders, if the speed is known
    std::optional<std::pair<unsigned int, unsigned int>> lines; // first and last, if their distance is known
};

// One for each interval of a good definition. A line count of 0 is a spectrum without end.
std::vector<IntervalBand> BandsOf(OrderMeaning const& meaning, CQtSpecInterval const& calculation,
                                  DriveOptions const& options, unsigned int line_count);

// What a result means.
char const* ResultText(CQtSpecInterval::index_range_result_t result);

} // namespace paramdb::tools
