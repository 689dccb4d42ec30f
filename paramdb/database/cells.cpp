#include <paramdb/database/cells.h>
#include <paramdb/database/sql_text.h>
#include <paramdb/platform/core/utf8.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <type_traits>
#include <utility>

namespace paramdb::database {
namespace {

using ParamDb::row_t;

// Calls the function with a value of the type's kind.
template <class Function>
void ForType(FieldType type, Function&& function) {
    switch (type) {
    // NOLINTNEXTLINE(bugprone-branch-clone): the types differ
    case FieldType::Int:
        return function(std::int32_t());
    case FieldType::Unsigned:
        return function(std::uint32_t());
    case FieldType::Int64:
        return function(std::int64_t());
    case FieldType::Float:
        return function(float());
    case FieldType::Double:
        return function(double());
    case FieldType::Text:
        return function(std::wstring());
    }
}

void AddFault(row_t& row, FieldType type, CellFault fault, std::string value, ColumnFaults& faults) {
    faults.push_back({row.size(), fault, std::move(value)});
    ForType(type, [&row](auto empty) { row.emplace_back(std::move(empty)); });
}

// A zero has no sign here: not every database keeps it in a key.
template <class Number>
std::string NumberText(Number number) {
    char digits[32];
    return {digits, std::to_chars(digits, std::end(digits), number + Number()).ptr};
}

// Enough of a text to recognise it.
std::string Shortened(std::string_view text) {
    constexpr std::size_t most = 40;
    if (text.size() <= most)
        return std::string(text);
    std::size_t end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;
    return std::string(text.substr(0, end)) + "...";
}

// Whether the whole text is a number that the type takes; out of range is told apart.
template <class Number>
std::errc Parse(std::string_view text, Number& number) {
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    return fault == std::errc() && end != text.data() + text.size() ? std::errc::invalid_argument : fault;
}

} // namespace

std::string FaultText(ColumnFault const& fault, FieldType type) {
    std::string const wanted = ToUtf8(FieldTypeName(type));
    switch (fault.fault) {
    case CellFault::Null:
        return "NULL where " + wanted + " is wanted";
    case CellFault::NoNumber:
        return fault.value + " where " + wanted + " is wanted";
    case CellFault::Fraction:
        return fault.value + " is no whole number";
    case CellFault::OutOfRange:
        return fault.value + " is out of range for " + wanted;
    case CellFault::NoText:
        return fault.value + " where text is wanted";
    case CellFault::NotUtf8:
        return "the text is no UTF-8";
    case CellFault::TooLong:
        return "a text of " + fault.value + " characters where 198 fit";
    case CellFault::None:
        break;
    }
    return {};
}

void AddNull(row_t& row, FieldType type, ColumnFaults& faults) {
    AddFault(row, type, CellFault::Null, {}, faults);
}

void AddForeign(row_t& row, FieldType type, ColumnFaults& faults) {
    AddFault(row, type, type == FieldType::Text ? CellFault::NoText : CellFault::NoNumber, "bytes", faults);
}

void AddInteger(row_t& row, FieldType type, std::int64_t value, ColumnFaults& faults) {
    ForType(type, [&](auto wanted) {
        using Wanted = decltype(wanted);
        if constexpr (std::is_integral_v<Wanted>) {
            if (std::in_range<Wanted>(value))
                row.emplace_back(std::in_place_type<Wanted>, static_cast<Wanted>(value));
            else
                AddFault(row, type, CellFault::OutOfRange, NumberText(value), faults);
        } else if constexpr (std::is_floating_point_v<Wanted>) {
            row.emplace_back(std::in_place_type<Wanted>, static_cast<Wanted>(value));
        } else {
            AddFault(row, type, CellFault::NoText, NumberText(value), faults);
        }
    });
}

void AddReal(row_t& row, FieldType type, double value, ColumnFaults& faults) {
    ForType(type, [&](auto wanted) {
        using Wanted = decltype(wanted);
        if constexpr (std::is_same_v<Wanted, double>) {
            row.emplace_back(std::in_place_type<double>, value);
        } else if constexpr (std::is_same_v<Wanted, float>) {
            // Beyond the largest float the conversion would not be defined; half a step more still rounds to
            // it.
            constexpr double limit = 0x1.ffffffp127;
            if (std::isfinite(value) && std::fabs(value) >= limit)
                AddFault(row, type, CellFault::OutOfRange, NumberText(value), faults);
            else
                row.emplace_back(std::in_place_type<float>, static_cast<float>(value));
        } else if constexpr (std::is_integral_v<Wanted>) {
            if (value != std::floor(value))
                AddFault(row, type, CellFault::Fraction, NumberText(value), faults);
            else if (value < -0x1p63 || value >= 0x1p63)
                AddFault(row, type, CellFault::OutOfRange, NumberText(value), faults);
            else
                AddInteger(row, type, static_cast<std::int64_t>(value), faults);
        } else {
            AddFault(row, type, CellFault::NoText, NumberText(value), faults);
        }
    });
}

void AddText(row_t& row, FieldType type, std::string_view value, ColumnFaults& faults) {
    if (type != FieldType::Text)
        return AddFault(row, type, CellFault::NoNumber, "the text '" + Shortened(value) + "'", faults);
    std::wstring text;
    if (!DecodeSqlText(value, text))
        AddFault(row, type, CellFault::NotUtf8, {}, faults);
    else if (text.size() > LongestText)
        AddFault(row, type, CellFault::TooLong, NumberText(text.size()), faults);
    else
        row.emplace_back(std::move(text));
}

void AddParsed(row_t& row, FieldType type, std::string_view value, ColumnFaults& faults) {
    ForType(type, [&](auto number) {
        using Wanted = decltype(number);
        if constexpr (std::is_same_v<Wanted, std::wstring>) {
            AddText(row, type, value, faults);
        } else {
            std::errc const result = Parse(value, number);
            if (result == std::errc()) {
                row.emplace_back(std::in_place_type<Wanted>, number);
                return;
            }
            if (result == std::errc::result_out_of_range)
                return AddFault(row, type, CellFault::OutOfRange, Shortened(value), faults);
            double real = 0;
            if (std::is_integral_v<Wanted> && Parse(value, real) == std::errc())
                AddReal(row, type, real, faults);
            else
                AddText(row, type, value, faults);
        }
    });
}

std::string CellText(ParamDb::cell_t const& cell) {
    return std::visit(
        []<class Value>(Value const& value) {
            if constexpr (std::is_same_v<Value, std::wstring>)
                return ToUtf8(value);
            else
                return NumberText(value);
        },
        cell);
}

std::string FieldText(ConstField field) {
    return field.Visit([]<class Value>(Value const& value) {
        if constexpr (std::is_same_v<Value, CFixedText>)
            return ToUtf8(value.view());
        else
            return NumberText(value);
    });
}

std::string KeyText(std::span<ParamDb::cell_t const> key) {
    std::string text;
    for (ParamDb::cell_t const& cell : key)
        text += (&cell == key.data() ? "" : "/") + CellText(cell);
    return text;
}

std::string KeyText(std::span<ConstField const> key) {
    std::string text;
    for (ConstField const& field : key)
        text += (&field == key.data() ? "" : "/") + FieldText(field);
    return text;
}

} // namespace paramdb::database
