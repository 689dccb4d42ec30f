#include "tools/case_fold.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace paramdb::tools {
namespace {

// Letters that are as far from their lower case. A step of 2 leaves every other letter out: there upper and
// lower case take turns.
struct Letters {
    std::uint16_t first;
    std::uint16_t last;
    std::uint16_t step;
    std::int32_t shift;
};

constexpr Letters Capitals[] = {
    // Latin
    {0x0041, 0x005A, 1, 32},
    {0x00B5, 0x00B5, 1, 775}, // micro sign, to the Greek letter
    {0x00C0, 0x00D6, 1, 32},
    {0x00D8, 0x00DE, 1, 32},
    {0x0100, 0x012E, 2, 1},
    {0x0132, 0x0136, 2, 1},
    {0x0139, 0x0147, 2, 1},
    {0x014A, 0x0176, 2, 1},
    {0x0178, 0x0178, 1, -121},
    {0x0179, 0x017D, 2, 1},
    {0x017F, 0x017F, 1, -268}, // long s
    {0x018F, 0x018F, 1, 202},
    {0x01A0, 0x01A0, 1, 1},
    {0x01AF, 0x01AF, 1, 1},
    {0x01CD, 0x01DB, 2, 1},
    {0x01DE, 0x01EE, 2, 1},
    {0x01F8, 0x021E, 2, 1},
    {0x0222, 0x0232, 2, 1},
    // Greek
    {0x0386, 0x0386, 1, 38},
    {0x0388, 0x038A, 1, 37},
    {0x038C, 0x038C, 1, 64},
    {0x038E, 0x038F, 1, 63},
    {0x0391, 0x03A1, 1, 32},
    {0x03A3, 0x03AB, 1, 32},
    {0x03C2, 0x03C2, 1, 1}, // sigma at the end of a word
    // Cyrillic
    {0x0400, 0x040F, 1, 80},
    {0x0410, 0x042F, 1, 32},
    {0x0460, 0x0480, 2, 1},
    {0x048A, 0x04BE, 2, 1},
    {0x04C0, 0x04C0, 1, 15},
    {0x04C1, 0x04CD, 2, 1},
    {0x04D0, 0x052E, 2, 1},
    // Armenian
    {0x0531, 0x0556, 1, 48},
    // More Latin
    {0x1E00, 0x1E94, 2, 1},
    {0x1E9E, 0x1E9E, 1, -7615}, // capital sharp s
    {0x1EA0, 0x1EFE, 2, 1},
    // Ohm, kelvin, angstrom; Roman numbers; letters in circles; full-width Latin
    {0x2126, 0x2126, 1, -7517},
    {0x212A, 0x212A, 1, -8383},
    {0x212B, 0x212B, 1, -8262},
    {0x2160, 0x216F, 1, 16},
    {0x24B6, 0x24CF, 1, 26},
    {0xFF21, 0xFF3A, 1, 32},
};

constexpr std::uint32_t FirstBeyondAscii = 0x80;

// Most names are ASCII throughout.
constexpr auto AsciiFolds = [] {
    std::array<wchar_t, FirstBeyondAscii> folds{};
    for (std::size_t unit = 0; unit < folds.size(); ++unit)
        folds[unit] = static_cast<wchar_t>(unit >= 'A' && unit <= 'Z' ? unit + 32 : unit);
    return folds;
}();

} // namespace

wchar_t FoldCase(wchar_t letter) {
    auto const unit = static_cast<std::uint32_t>(letter);
    if (unit < FirstBeyondAscii)
        return AsciiFolds[unit];
    auto const letters =
        std::lower_bound(std::begin(Capitals), std::end(Capitals), unit,
                         [](Letters const& entry, std::uint32_t wanted) { return entry.last < wanted; });
    if (letters == std::end(Capitals) || unit < letters->first ||
        (unit - letters->first) % letters->step != 0)
        return letter;
    return static_cast<wchar_t>(static_cast<std::int32_t>(unit) + letters->shift);
}

std::wstring FoldCase(std::wstring_view text) {
    std::wstring folded;
    FoldCase(text, folded);
    return folded;
}

void FoldCase(std::wstring_view text, std::wstring& folded) {
    folded.resize(text.size());
    std::transform(text.begin(), text.end(), folded.begin(), [](wchar_t letter) { return FoldCase(letter); });
}

} // namespace paramdb::tools
