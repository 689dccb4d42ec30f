#include "table_data.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace table_data {
namespace {

template <class Integer>
Integer RandomInteger(Random& random) {
    switch (random.Below(8)) {
    case 0:
        return std::numeric_limits<Integer>::max();
    case 1:
        return std::numeric_limits<Integer>::min();
    case 2:
        return static_cast<Integer>(random.Bits());
    case 3:
        return static_cast<Integer>(-1);
    default:
        return static_cast<Integer>(random.Below(20));
    }
}

template <class Float>
Float RandomFloat(Random& random, bool is_short, bool is_key) {
    if (random.OneIn(4))
        return static_cast<Float>(random.Below(10)) / 4;
    if (is_short) {
        char text[32];
        std::snprintf(text, sizeof text, "%s%de%d", random.OneIn(2) ? "-" : "",
                      static_cast<int>(random.Below(1000000)), static_cast<int>(random.Below(30)) - 15);
        return std::is_same_v<Float, float> ? static_cast<Float>(std::strtof(text, nullptr))
                                            : static_cast<Float>(std::strtod(text, nullptr));
    }
    if (random.OneIn(6) && !is_key)
        return std::array{std::numeric_limits<Float>::infinity(), -std::numeric_limits<Float>::infinity(),
                          std::numeric_limits<Float>::quiet_NaN(), -Float(0),
                          std::numeric_limits<Float>::max()}[random.Below(5)];
    std::uint64_t const bits = random.Bits();
    Float value;
    std::memcpy(&value, &bits, sizeof value);
    return std::isfinite(value) ? value : Float(0.1);
}

std::wstring RandomText(Random& random, Style const& style) {
    constexpr std::wstring_view any =
        L"abcXYZ019_-+.,;:{}()<>\\'#\xE4\xFF\x80  \t\xA0\x85\"\"\x20AC\x4E2D\xD83D\x3000";
    constexpr std::wstring_view blanks = L" \t\xA0\x85\x3000";
    std::wstring text;
    for (std::size_t size = random.Below(style.longest_text + 1); text.size() < size;) {
        wchar_t const character = any[random.Below(any.size())];
        bool const blank = blanks.find(character) != std::wstring_view::npos;
        bool const is_wide = character > 0xFF || character == L'"';
        if ((blank && style.plain_texts) || (is_wide && !style.wide_texts) ||
            (character == L'"' && text.empty() && style.plain_texts))
            continue;
        text += character;
    }
    return text.empty() && style.plain_texts ? L"x" : text;
}

Value RandomValue(char type, bool is_key, Random& random, Style const& style) {
    switch (type) {
    case 'i':
        // Elements of keys are mostly small, so that keys come twice.
        return is_key && !random.OneIn(6) ? static_cast<std::int32_t>(random.Below(4)) - 1
                                          : RandomInteger<std::int32_t>(random);
    case 'u':
        return RandomInteger<std::uint32_t>(random);
    case 'q':
        return RandomInteger<std::int64_t>(random);
    case 'f':
        return RandomFloat<float>(random, style.short_floats, is_key);
    case 'd':
        return RandomFloat<double>(random, style.short_floats, is_key);
    default:
        return is_key && random.OneIn(2) ? std::wstring(1 + random.Below(2), L'k')
                                         : RandomText(random, style);
    }
}

bool NeedsQuotes(std::wstring const& text) {
    constexpr std::wstring_view separators = L" \t\n\v\f\r\x85\xA0\x3000:";
    return text.empty() || text.find_first_of(separators) != std::wstring::npos ||
           std::wstring_view(L"{};\"").find(text.front()) != std::wstring_view::npos;
}

std::wstring Widened(char const* text) {
    return {text, text + std::strlen(text)};
}

// The texts of a number that a reader takes for it.
template <class T>
std::wstring NumberText(T value, Random& random) {
    char text[400];
    if constexpr (std::is_floating_point_v<T>) {
        char const* const forms[] = {"%.*g", "%.*e", "%.*E", "%a"};
        std::size_t const form = random.Below(4);
        if (form == 3)
            std::snprintf(text, sizeof text, "%a", static_cast<double>(value));
        else
            std::snprintf(text, sizeof text, forms[form], std::numeric_limits<T>::max_digits10,
                          static_cast<double>(value));
    } else {
        bool const negative = value < 0;
        std::string const digits = std::to_string(value).substr(negative ? 1 : 0);
        std::string const zeros(random.OneIn(8) ? random.Below(4) : 0, '0');
        std::snprintf(text, sizeof text, "%s%s%s", negative ? "-" : "", zeros.c_str(), digits.c_str());
        if (std::is_same_v<T, std::uint32_t> && value > 0 && random.OneIn(8))
            std::snprintf(text, sizeof text, "-%s",
                          std::to_string(4294967296 - static_cast<std::int64_t>(value)).c_str());
    }
    return (text[0] != '-' && random.OneIn(8) ? L"+" : L"") + Widened(text);
}

// The cell if that type holds exactly the value and reads back as it.
template <class Cell, class T>
bool Holds(T value) {
    if constexpr (std::is_floating_point_v<T> && std::is_floating_point_v<Cell>) {
        return std::isnan(value) || static_cast<T>(static_cast<Cell>(value)) == value;
    } else if constexpr (std::is_floating_point_v<T>) {
        return std::fabs(value) < T(2147483648.0) &&
               !(value < 0 && std::is_unsigned_v<Cell>)&&value == std::trunc(value) &&
               !(value == 0 && std::signbit(value)) && static_cast<T>(static_cast<Cell>(value)) == value;
    } else if constexpr (std::is_floating_point_v<Cell>) {
        constexpr std::int64_t exact = std::int64_t{1} << std::numeric_limits<Cell>::digits;
        auto const wide = static_cast<std::int64_t>(value);
        return wide >= -exact && wide <= exact;
    } else {
        // As wide or narrower integers hold the bits of the field's own width; wider ones its value.
        auto const cell = static_cast<Cell>(value);
        return static_cast<T>(cell) == value &&
               (sizeof(Cell) == sizeof(T) || std::is_signed_v<T> ||
                static_cast<std::int64_t>(cell) == static_cast<std::int64_t>(value));
    }
}

template <class Cell, class T>
bool TryCell(ParamDb::cell_t& cell, T value) {
    if (!Holds<Cell>(value))
        return false;
    cell = static_cast<Cell>(value);
    return true;
}

bool KeyLess(layouts::Layout const& layout, Row const& left, Row const& right) {
    auto const size = static_cast<std::ptrdiff_t>(layout.key.size());
    return std::lexicographical_compare(left.begin(), left.begin() + size, right.begin(),
                                        right.begin() + size);
}

} // namespace

std::vector<Table> RandomTables(Random& random, Style const& style) {
    std::vector<Table> tables;
    for (layouts::Layout const& layout : layouts::All()) {
        Table table{&layout, {}};
        for (std::size_t count = random.Below(14); count > 0; --count) {
            Row row;
            for (char const type : layout.fields())
                row.push_back(RandomValue(type, row.size() < layout.key.size(), random, style));
            table.rows.push_back(std::move(row));
        }
        // A table that comes in order takes another way than one that does not.
        if (random.OneIn(3))
            std::ranges::stable_sort(
                table.rows, [&](Row const& left, Row const& right) { return KeyLess(layout, left, right); });
        tables.push_back(std::move(table));
    }
    return tables;
}

Row PlainRow(layouts::Layout const& layout, int number) {
    Row row;
    for (char const type : layout.fields()) {
        int const value = number * 100 + static_cast<int>(row.size());
        switch (type) {
        case 'i':
            row.emplace_back(value);
            break;
        case 'u':
            row.emplace_back(static_cast<std::uint32_t>(value));
            break;
        case 'q':
            row.emplace_back(std::int64_t{value} << 33);
            break;
        case 'f':
            row.emplace_back(static_cast<float>(value) + 0.5F);
            break;
        case 'd':
            row.emplace_back(value + 0.25);
            break;
        default:
            row.emplace_back(L"t" + std::to_wstring(value));
        }
    }
    return row;
}

std::wstring Printed(Value const& value) {
    return std::visit(
        [](auto const& field) {
            std::wostringstream stream;
            stream.imbue(std::locale::classic());
            stream << field;
            return stream.str();
        },
        value);
}

std::wstring PlainLine(Row const& row) {
    std::wstring line;
    for (Value const& value : row)
        line += (&value != row.data() ? L" " : L"") + Printed(value);
    return line;
}

std::wstring RandomLine(Row const& row, Random& random) {
    enum { Start, Number, Word, Quoted } before = Start;
    std::wstring line;
    for (Value const& value : row) {
        auto const* const text = std::get_if<std::wstring>(&value);
        bool const quoted =
            text != nullptr && text->find(L'"') == text->npos && (NeedsQuotes(*text) || random.OneIn(4));
        bool const may_join = before == Quoted || (before == Number && quoted);
        if (before != Start && (!may_join || random.OneIn(2)))
            line += std::array{L" ", L" ", L"\t", L"  "}[random.Below(4)];
        before = quoted ? Quoted : text != nullptr ? Word : Number;
        if (text != nullptr)
            line += quoted ? L"\"" + *text + L"\"" : *text;
        else
            line += std::visit(
                [&]<class T>(T const& number) -> std::wstring {
                    if constexpr (std::is_arithmetic_v<T>)
                        return NumberText(number, random);
                    else
                        return {};
                },
                value);
    }
    if (random.OneIn(8))
        line += std::array{L" 99", L" rest", L"\t\"more\"", L" ; no remark"}[random.Below(4)];
    return line;
}

ParamDb::cell_t OwnCell(Value const& value) {
    return std::visit([](auto const& field) { return ParamDb::cell_t(field); }, value);
}

ParamDb::cell_t OtherCell(Value const& value, Random& random) {
    ParamDb::cell_t cell = OwnCell(value);
    std::size_t const alternative = random.Below(6);
    std::visit(
        [&]<class T>(T const& field) {
            if constexpr (std::is_arithmetic_v<T>)
                static_cast<void>(alternative == 0   ? TryCell<std::int32_t>(cell, field)
                                  : alternative == 1 ? TryCell<std::uint32_t>(cell, field)
                                  : alternative == 2 ? TryCell<std::int64_t>(cell, field)
                                  : alternative == 3 ? TryCell<std::uint64_t>(cell, field)
                                  : alternative == 4 ? TryCell<float>(cell, field)
                                                     : TryCell<double>(cell, field));
        },
        value);
    return cell;
}

std::vector<Row> Kept(Table const& table) {
    std::vector<Row> rows = table.rows;
    auto const less = [&](Row const& left, Row const& right) { return KeyLess(*table.layout, left, right); };
    std::ranges::stable_sort(rows, less);
    if (table.layout->has_unique_keys())
        rows.erase(std::unique(rows.begin(), rows.end(),
                               [&](Row const& left, Row const& right) { return !less(left, right); }),
                   rows.end());
    return rows;
}

std::wstring DumpOf(Table const& table) {
    std::wstring const tag(table.layout->tag);
    std::wstring text = L"<-\t" + tag + L"\n";
    std::size_t count = 0;
    for (Row const& row : Kept(table)) {
        std::wstring const counter = std::to_wstring(++count);
        text += std::wstring(counter.size() < 4 ? 4 - counter.size() : 0, L' ') + counter + L":\t";
        auto const middle = row.begin() + static_cast<std::ptrdiff_t>(table.layout->key.size());
        text += PlainLine({row.begin(), middle}) + L" | " + PlainLine({middle, row.end()}) + L"\n";
    }
    return text + L"->\t" + tag + L"\n";
}

std::wstring DumpOf(std::vector<Table> const& tables) {
    std::wstring text;
    for (Table const& table : tables)
        text += DumpOf(table);
    return text;
}

} // namespace table_data
