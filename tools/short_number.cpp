#include "tools/short_number.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>

namespace paramdb::tools {
namespace {

template <class Number>
std::string TextOf(Number number) {
    if (std::isnan(number)) // its sign tells nothing
        return "nan";
    char digits[40];
    return {digits, std::to_chars(digits, std::end(digits), number, std::chars_format::general).ptr};
}

} // namespace

std::string ShortNumber(float number) {
    return TextOf(number);
}

std::string ShortNumber(double number) {
    return TextOf(number);
}

nlohmann::ordered_json JsonNumber(float number) {
    std::string const text = TextOf(number);
    if (!std::isfinite(number))
        return text;
    double wide = 0; // the double with the digits of the float
    std::from_chars(text.data(), text.data() + text.size(), wide);
    return wide;
}

nlohmann::ordered_json JsonNumber(double number) {
    return std::isfinite(number) ? nlohmann::ordered_json(number) : nlohmann::ordered_json(TextOf(number));
}

} // namespace paramdb::tools
