// JSON that stands inside a <script> element of a page.
//
// What is written has nothing but ASCII and neither <, > nor &, so that no text can end the element, open a
// comment in it or depend on an encoding; a lone surrogate stays the unit it is.
#pragma once

#include <paramdb/tables/field.h>

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace paramdb::tools {

// A text of the data as a JSON string.
void AppendScriptText(std::string& out, std::wstring_view text);

// A field of a row. Numbers are as short as can be read again; nan and infinities are texts, and so are whole
// numbers that a double has no room for.
void AppendScriptField(std::string& out, ConstField field);

// A document, without blanks. Bytes that are no UTF-8 become U+FFFD.
void AppendScriptJson(std::string& out, nlohmann::ordered_json const& document);

} // namespace paramdb::tools
