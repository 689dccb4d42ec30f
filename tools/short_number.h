// Floating numbers in reports: the shortest form from which the same number can be read again, so that a
// float of 0.1 is 0.1 and not 0.10000000149.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace paramdb::tools {

// The same under every locale; what is no number or infinite is nan, inf or -inf.
std::string ShortNumber(float number);
std::string ShortNumber(double number);

// As a number; nan and infinities are texts.
nlohmann::ordered_json JsonNumber(float number);
nlohmann::ordered_json JsonNumber(double number);

} // namespace paramdb::tools
