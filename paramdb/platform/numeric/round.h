// Rounding that is the same under every C library: some add a half first and so make 1 of 0.49999997.
#pragma once

#include <cmath>

namespace numeric {

// The nearest whole number, halves away from 0. What is not finite stays as it is, and so does the sign.
inline float Round(float value) {
    float const whole = std::trunc(value);
    return std::fabs(value - whole) >= 0.5f ? whole + std::copysign(1.0f, value) : whole;
}

} // namespace numeric
