#include "generate_values.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace benchmarks {
namespace {

template <class T>
std::string NumberText(T number) {
    constexpr bool is_real = std::is_floating_point_v<T>;
    std::array<char, 64> text;
    std::to_chars_result result;
    if constexpr (is_real)
        result = std::to_chars(text.begin(), text.end(), number, std::chars_format::fixed);
    else
        result = std::to_chars(text.begin(), text.end(), number);
    std::string digits(text.begin(), static_cast<std::size_t>(result.ptr - text.begin()));
    // A floating number has a point, so that every program sees its type.
    return is_real && digits.find('.') == std::string::npos ? digits + ".0" : digits;
}

constexpr int InstrumentClasses[] = {1001, 1002, 1003, 1004, 1005, 2001, 2002, 2003, 2007, 2500, 3500, 10001};
constexpr std::string_view Definitions[] = {
    "H1-L2;H1+L2", "H2-L2;H2+L2", "H3-L4;H3+L4", "F1000;F4000", "HX-M0.5;HX+M0.5", "H1-S1-L1;H1-S1+L1",
};
constexpr std::string_view Places[] = {
    "input shaft", "output shaft", "differential", "idler", "gear 1", "gear 2", "gear 3", "final drive",
};
constexpr std::string_view Quantities[] = {
    "H1", "H2", "H3", "crest", "RMS", "peak", "kurtosis", "side band", "order spectrum", "track",
};

template <class T>
T Pick(std::span<T const> choices, Random& random) {
    return choices[static_cast<std::size_t>(random.Below(choices.size()))];
}

std::string RandomText(std::string_view column, Random& random) {
    if (column == "definition")
        return std::string(Pick<std::string_view>(Definitions, random));
    if (column == "unit")
        return random.Below(2) == 0 ? "m/s2" : "Pa";
    std::string text(Pick<std::string_view>(Quantities, random));
    text += ' ';
    text += Pick<std::string_view>(Places, random);
    return text + ' ' + NumberText(random.Between(1, 9999));
}

// Ids and enumerations by the end of their column's name.
struct IntRange {
    std::string_view name_end;
    int low;
    int high;
};
constexpr IntRange IntRanges[] = {
    {"trigger", 1, 40},       {"calculation", 0, 8}, {"parameter", 1001, 4999}, {"polygon", 1, 2000},
    {"channel", 1, 40},       {"rotor", 1, 60},      {"location", 1, 250},      {"physical_mode", 0, 7},
    {"accumulation", 20, 22}, {"id", 1, 999},
};

int RandomInt(std::string_view column, Random& random) {
    if (column.ends_with("instrument"))
        return Pick<int>(InstrumentClasses, random);
    auto const range = std::ranges::find_if(
        IntRanges, [column](IntRange const& candidate) { return column.ends_with(candidate.name_end); });
    if (range != std::end(IntRanges))
        return random.Between(range->low, range->high);
    std::uint64_t const kind = random.Below(10);
    return kind == 0 ? -1 : kind < 8 ? random.Between(0, 9) : random.Between(10, 99'999);
}

// Most settings are round; measured limits have more digits.
double RandomReal(Random& random) {
    switch (random.Below(4)) {
    case 0:
        return random.Between(0, 20) * 0.5;
    case 1:
        return random.Between(1, 240) * 25.0;
    case 2:
        return random.Between(-9'999, 9'999) / 100.0;
    default:
        return random.Between(0, 9'999) / 1000.0;
    }
}

// A key of integers counts like a clock: the last element runs through all its values, then the one before it
// moves on. These are the numbers of values of the elements behind the first.
std::span<int const> Radices(std::size_t elements) {
    static constexpr int clavis[] = {6, 3, 4, 12, 2};
    static constexpr int others[] = {8, 5, 4, 3};
    return elements == 6 ? std::span(clavis) : std::span(others).first(elements - 1);
}

// The value of an element, given how often it has moved on.
int KeyElement(std::string_view column, std::size_t position, std::size_t step) {
    if (column == "instrument" && position > 0)
        return InstrumentClasses[step % std::size(InstrumentClasses)];
    if (column == "parameter")
        return 1001 + 3 * static_cast<int>(step);
    if (column == "location")
        return 1 + 47 * static_cast<int>(step);
    return 1 + static_cast<int>(step);
}

std::string IntegerKey(std::vector<paramdb::ColumnDescription> const& columns, std::size_t index) {
    auto const radices = Radices(columns.size());
    std::string key;
    for (std::size_t column = columns.size(); column-- > 0;) {
        auto const radix = column > 0 ? static_cast<std::size_t>(radices[column - 1]) : index + 1;
        std::string element = NumberText(KeyElement(columns[column].name, column, index % radix));
        index /= radix;
        key = key.empty() ? std::move(element) : element + '\t' + key;
    }
    return key;
}

} // namespace

std::uint64_t Random::Next() {
    m_state += 0x9E37'79B9'7F4A'7C15;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58'476D'1CE4'E5B9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D0'49BB'1331'11EB;
    return mixed ^ (mixed >> 31);
}

int Random::Between(int low, int high) {
    return low + static_cast<int>(Below(static_cast<std::uint64_t>(high - low) + 1));
}

std::string KeySequence::Next() {
    constexpr std::size_t rows_to_a_key = 4;
    constexpr std::size_t points_of_a_polygon = 16;
    std::size_t const index = m_index++;
    auto const& columns = m_table->key_columns;
    if (columns.front().type == paramdb::FieldType::Text) {
        std::string const number = NumberText(index);
        return "\"NAME_" + std::string(8 - std::min<std::size_t>(number.size(), 8), '0') + number + '"';
    }
    if (columns.back().type == paramdb::FieldType::Float)
        return NumberText(1 + index / points_of_a_polygon) + '\t' +
               NumberText(static_cast<float>(index % points_of_a_polygon) * 375.0f);
    return IntegerKey(columns, m_table->has_unique_keys ? index : index / rows_to_a_key);
}

std::string RandomValue(paramdb::ColumnDescription const& column, Random& random) {
    switch (column.type) {
    case paramdb::FieldType::Int:
        return NumberText(RandomInt(column.name, random));
    case paramdb::FieldType::Unsigned:
        return NumberText(random.Between(0, 4096));
    case paramdb::FieldType::Int64:
        return random.Below(3) == 0 ? NumberText(random.Between(1, 1000))
                                    : NumberText(1'600'000'000'000 + 60'000LL * random.Between(0, 2'000'000));
    case paramdb::FieldType::Float:
        return NumberText(static_cast<float>(RandomReal(random)));
    case paramdb::FieldType::Double:
        return NumberText(random.Between(1, 4'999'999) / 1'000'000.0);
    case paramdb::FieldType::Text:
        break;
    }
    return '"' + RandomText(column.name, random) + '"';
}

} // namespace benchmarks
