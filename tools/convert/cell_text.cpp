#include "tools/convert/cell_text.h"

#include <paramdb/tables/catalogue.h>
#include <paramdb/tables/number_text.h>

#include "tools/rewrite/row_fields.h"
#include "tools/table_names.h"

#include <charconv>
#include <cmath>
#include <iterator>
#include <type_traits>

namespace paramdb::tools {
namespace {

bool IsHighSurrogate(wchar_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
bool IsLowSurrogate(wchar_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

template <class T>
std::optional<ParamDb::cell_t> WholeNumber(std::wstring_view text) {
    T number{};
    bool const is_whole = TakeNumber(text, number) == NumberFault::None && text.empty();
    return is_whole ? std::optional<ParamDb::cell_t>(number) : std::nullopt;
}

} // namespace

std::string NumberText(ParamDb::cell_t const& number) {
    return std::visit(
        []<class T>(T const& value) -> std::string {
            if constexpr (std::is_same_v<T, std::wstring>) {
                return "";
            } else {
                if constexpr (std::is_floating_point_v<T>)
                    if (std::isnan(value))
                        return std::signbit(value) ? "-nan" : "nan";
                char digits[40];
                return {digits, std::to_chars(digits, std::end(digits), value).ptr};
            }
        },
        number);
}

std::optional<ParamDb::cell_t> NumberOf(FieldType type, std::wstring_view text) {
    switch (type) {
    case FieldType::Int:
        return WholeNumber<std::int32_t>(text);
    case FieldType::Unsigned:
        return WholeNumber<std::uint32_t>(text);
    case FieldType::Int64:
        return WholeNumber<std::int64_t>(text);
    case FieldType::Float:
        return WholeNumber<float>(text);
    case FieldType::Double:
        return WholeNumber<double>(text);
    case FieldType::Text:
        break;
    }
    return std::nullopt;
}

std::string TextFault(std::wstring_view text) {
    if (text.find(L'\0') != std::wstring_view::npos)
        return "a text with a zero in it";
    if (text.size() > LongestText)
        return "a text of " + std::to_string(text.size()) + " characters; " + std::to_string(LongestText) +
               " are the most";
    return "";
}

std::string UnitText(wchar_t unit) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text = "U+";
    for (unsigned shift = 16; shift > 0; shift -= 4)
        text += digits[(static_cast<unsigned long>(unit) >> (shift - 4)) & 0xF];
    return text;
}

std::optional<wchar_t> LoneSurrogate(std::wstring_view text) {
    for (std::size_t index = 0; index < text.size(); ++index) {
        bool const is_pair =
            IsHighSurrogate(text[index]) && index + 1 < text.size() && IsLowSurrogate(text[index + 1]);
        if (is_pair)
            ++index;
        else if (IsHighSurrogate(text[index]) || IsLowSurrogate(text[index]))
            return text[index];
    }
    return std::nullopt;
}

std::string RowPlace(std::size_t table, std::size_t row) {
    return TagOf(Catalogue()[table]) + ", row " + std::to_string(row + 1);
}

std::string CellPlace(std::size_t table, std::size_t row, std::size_t column) {
    return RowPlace(table, row) + ", " + std::string(ColumnsOf(Catalogue()[table])[column].name);
}

} // namespace paramdb::tools
