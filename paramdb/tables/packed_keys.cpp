#include <paramdb/tables/packed_keys.h>

namespace paramdb {
namespace {

constexpr unsigned DigitBits = 8;
constexpr std::size_t Digits = std::size_t{1} << DigitBits;

std::size_t DigitOf(PackedKey const& key, unsigned shift) {
    return key.number >> shift & (Digits - 1);
}

} // namespace

void SortPackedKeys(std::vector<PackedKey>& keys) {
    if (keys.size() < Digits) {
        std::sort(keys.begin(), keys.end(), [](PackedKey const& left, PackedKey const& right) {
            return left.number != right.number ? left.number < right.number : left.position < right.position;
        });
        return;
    }
    std::uint64_t all_bits = 0;
    for (PackedKey const& key : keys)
        all_bits |= key.number;
    std::vector<PackedKey> sorted(keys.size());
    for (unsigned shift = 0; shift < 64 && all_bits >> shift != 0; shift += DigitBits) {
        std::array<std::size_t, Digits> place{};
        for (PackedKey const& key : keys)
            ++place[DigitOf(key, shift)];
        std::size_t before = 0;
        for (std::size_t& digit : place) {
            std::size_t const count = digit;
            digit = before;
            before += count;
        }
        for (PackedKey const& key : keys)
            sorted[place[DigitOf(key, shift)]++] = key;
        keys.swap(sorted);
    }
}

} // namespace paramdb
