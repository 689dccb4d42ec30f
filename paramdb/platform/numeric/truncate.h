// Floating numbers to integers, with a result for every input.
#pragma once

#include <cstdint>

namespace numeric {

// The value without its fraction; 0 for a NaN and for what 64 bits do not hold.
constexpr std::int64_t Truncate64(double value) {
    constexpr double limit = 9223372036854775808.0;
    return value >= -limit && value < limit ? static_cast<std::int64_t>(value) : 0;
}

// The low 32 bits of that.
constexpr std::int32_t Truncate32(double value) {
    return static_cast<std::int32_t>(Truncate64(value));
}

} // namespace numeric
