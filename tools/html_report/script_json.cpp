#include "tools/html_report/script_json.h"

#include "tools/short_number.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <type_traits>

namespace paramdb::tools {
namespace {

constexpr std::int64_t WholeNumbersOfDouble = std::int64_t{1} << 53;

bool IsPlain(std::uint32_t unit) {
    return unit >= 0x20 && unit < 0x7F && unit != '"' && unit != '\\' && unit != '<' && unit != '>' &&
           unit != '&';
}

void AppendEscape(std::string& out, std::uint32_t unit) {
    constexpr char Digits[] = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += Digits[(unit >> shift) & 0xFU];
}

// A wchar_t of 32 bits may hold a whole character.
void AppendUnit(std::string& out, std::uint32_t unit) {
    if (IsPlain(unit)) {
        out += static_cast<char>(unit);
    } else if (unit <= 0xFFFF) {
        AppendEscape(out, unit);
    } else if (unit <= 0x10FFFF) {
        AppendEscape(out, 0xD800U + ((unit - 0x10000U) >> 10U));
        AppendEscape(out, 0xDC00U + ((unit - 0x10000U) & 0x3FFU));
    } else {
        AppendEscape(out, 0xFFFD);
    }
}

template <class Number>
void AppendFloating(std::string& out, Number number) {
    std::string const text = ShortNumber(number);
    bool const is_number = std::isfinite(number);
    out.append(is_number ? "" : "\"").append(text).append(is_number ? "" : "\"");
}

template <class Number>
void AppendWhole(std::string& out, Number number) {
    bool const fits = number >= -WholeNumbersOfDouble && number <= WholeNumbersOfDouble;
    out.append(fits ? "" : "\"").append(std::to_string(number)).append(fits ? "" : "\"");
}

} // namespace

void AppendScriptText(std::string& out, std::wstring_view text) {
    out += '"';
    for (wchar_t const unit : text)
        AppendUnit(out, static_cast<std::uint32_t>(unit));
    out += '"';
}

void AppendScriptField(std::string& out, ConstField field) {
    field.Visit([&out]<class T>(T const& value) {
        if constexpr (std::is_same_v<T, CFixedText>)
            AppendScriptText(out, value.view());
        else if constexpr (std::is_floating_point_v<T>)
            AppendFloating(out, value);
        else
            AppendWhole(out, std::int64_t{value});
    });
}

void AppendScriptJson(std::string& out, nlohmann::ordered_json const& document) {
    std::string const text = document.dump(-1, ' ', true, nlohmann::ordered_json::error_handler_t::replace);
    for (char const letter : text) { // what is escaped here stands in strings alone
        bool const is_mark = letter == '<' || letter == '>' || letter == '&' || letter == '\x7F';
        if (is_mark)
            AppendEscape(out, static_cast<unsigned char>(letter));
        else
            out += letter;
    }
}

} // namespace paramdb::tools
