// Numbers at the ends of what fields hold, and beyond.
#pragma once

#include <limits>

inline constexpr int Lowest = std::numeric_limits<int>::min();
inline constexpr int Highest = std::numeric_limits<int>::max();
inline constexpr float Largest = std::numeric_limits<float>::max();
inline constexpr float Infinite = std::numeric_limits<float>::infinity();
inline constexpr float NotANumber = std::numeric_limits<float>::quiet_NaN();
