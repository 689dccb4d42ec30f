#include <paramdb/platform/signal/measuring_unit.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

namespace {

// By code, from FirstUnit on.
constexpr int FirstUnit = 2;
constexpr std::wstring_view Units[] = {
    L"m/s\u00B2", L"g",     L"Pa",      L"dB", L"Hz", L"1/min",  L"Nm",     L"N",   L"\u00B0C", L"V",
    L"A",         L"mm",    L"\u00B5m", L"s",  L"ms", L"%",      L"\u00B0", L"bar", L"kW",      L"m/s",
    L"mm/s",      L"rad/s", L"W",       L"kg", L"J",  L"\u03A9", L"l/min",  L"m",   L"K",
};
static_assert(std::size(Units) == 29, "codes 2 to 30");

struct Prefix {
    int power;
    std::wstring_view letter;
};
constexpr Prefix Prefixes[] = {
    {0, L""},   {12, L"T"}, {9, L"G"},       {6, L"M"},  {3, L"k"},   {2, L"h"},
    {-2, L"c"}, {-3, L"m"}, {-6, L"\u00B5"}, {-9, L"n"}, {-12, L"p"},
};

Prefix const& FindPrefix(int power) {
    auto const found = std::ranges::find(Prefixes, power, &Prefix::power);
    return found != std::end(Prefixes) ? *found : Prefixes[0];
}

std::wstring_view UnitText(int unit) {
    constexpr int last_unit = FirstUnit + static_cast<int>(std::size(Units)) - 1;
    return unit >= FirstUnit && unit <= last_unit ? Units[unit - FirstUnit] : std::wstring_view();
}

} // namespace

CMeasuringUnit::CMeasuringUnit(int unit, int prefix, short value, double factor, unsigned int flags)
    : m_unit(unit), m_prefix(FindPrefix(prefix).power), m_value(value), m_factor(factor), m_flags(flags) {}

void CMeasuringUnit::set(wchar_t const* text) {
    // A unit without prefix goes first: "mm" is no metre with a prefix.
    std::wstring_view const sought = text != nullptr ? std::wstring_view(text) : std::wstring_view();
    *this = CMeasuringUnit();
    if (sought.empty())
        return;
    for (Prefix const& prefix : Prefixes) {
        if (!sought.starts_with(prefix.letter))
            continue;
        auto const unit = std::ranges::find(Units, sought.substr(prefix.letter.size()));
        if (unit == std::end(Units))
            continue;
        *this = CMeasuringUnit(static_cast<int>(unit - std::begin(Units)) + FirstUnit, prefix.power);
        return;
    }
    m_unit = -1;
    m_text = sought;
}

CString CMeasuringUnit::prefixunit(bool with_brackets) const {
    std::wstring text(m_text.GetString());
    if (auto const unit = UnitText(m_unit); !unit.empty())
        text.append(FindPrefix(m_prefix).letter).append(unit);
    if (with_brackets && !text.empty())
        text = L"[" + text + L"]";
    return text;
}
