// The enumerations of the calculation settings. Rows hold them as plain numbers, since a file may hold any.
#pragma once

#include <cstdint>

namespace ParamDb {

// How the values of a measurement become one.
enum calc_mode_t : std::int32_t {
    calc_not_defined = 0,
    calc_minimum = 1,
    calc_maximum = 2,
    calc_average = 3,
    calc_log_average = 4, // of levels; the RMS of linear values
    calc_sum = 5,
    calc_log_sum = 6,
    calc_position_maximum = 7,
    calc_position_minimum = 8,
};

// How the spectra of a measurement become one. Other numbers are those of older data; a load converts them.
enum time_domain_accumulation_t : std::int32_t {
    accumulation_none = 0,
    accumulation_maximum = 20,
    accumulation_average = 21,
    accumulation_last = 22,
};

} // namespace ParamDb
