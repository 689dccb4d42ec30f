// Keys of several integers as one number each, whose order is theirs. The keys of a table differ little in
// most elements, so all together need few bits; numbers are then sorted digit by digit, without comparing any
// two.
#pragma once

#include <paramdb/platform/core/export.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace paramdb {

struct PackedKey {
    std::uint64_t number;
    std::size_t position; // of the key among those that were packed
};

// Sorts by number. Equal ones keep the order in which they stand.
PARAMDB_API void SortPackedKeys(std::vector<PackedKey>& keys);

// Packs the keys in their order; nothing comes back where 64 bits do not hold the differences of the
// elements, or there is no key.
template <std::size_t Size>
std::vector<PackedKey> PackKeys(std::span<std::array<int, Size> const> keys) {
    if (keys.empty())
        return {};
    std::array<int, Size> least = keys.front();
    std::array<int, Size> most = keys.front();
    for (std::array<int, Size> const& key : keys)
        for (std::size_t element = 0; element < Size; ++element) {
            least[element] = std::min(least[element], key[element]);
            most[element] = std::max(most[element], key[element]);
        }
    auto const above_least = [&least](int value, std::size_t element) {
        return static_cast<std::uint32_t>(value) - static_cast<std::uint32_t>(least[element]);
    };
    std::array<unsigned, Size> widths{};
    unsigned bits = 0;
    for (std::size_t element = 0; element < Size; ++element)
        bits += widths[element] = static_cast<unsigned>(std::bit_width(above_least(most[element], element)));
    if (bits > 64)
        return {};
    std::vector<PackedKey> packed;
    packed.reserve(keys.size());
    for (std::array<int, Size> const& key : keys) {
        std::uint64_t number = 0;
        for (std::size_t element = 0; element < Size; ++element)
            number = number << widths[element] | above_least(key[element], element);
        packed.push_back({number, packed.size()});
    }
    return packed;
}

} // namespace paramdb
