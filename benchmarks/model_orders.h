// The order definitions of the plain model.
#pragma once

#include <cstddef>
#include <string>
#include <tuple>
#include <vector>

namespace benchmarks {

struct ModelPosition {
    float frequency = 0;
    float order = 0;
    float harmonic = 0;
    float modulation = 0;
    int lines = 0;
    int domain = 0; // 1: a frequency, 2: an order, a harmonic or a modulation

    auto tuple() const { return std::tie(frequency, order, harmonic, modulation, lines, domain); }
};

// The positions of a definition, `most` of them at the most; none for a bad one.
std::vector<ModelPosition> ParseOrderDefinition(std::wstring text, std::size_t most);

} // namespace benchmarks
