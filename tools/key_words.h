// Reading a key of six elements as people write it: 11/1001/3/201/1039/1.
//
// Each element is an id or a name. Elements that are left out at the end, empty ones, * and -1 are not set.
// Blanks around an element do not count. A name in double quotes may hold anything, a quote in it being
// doubled; so a name with a slash, or one that is a number, can be told.
#pragma once

#include <paramdb/platform/signal/clavis.h>

#include "tools/key_pattern.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>

namespace paramdb::tools {

// The syntax in the words of a help text.
extern char const* const KeyWordsHelp;

// An id, -1 for an element that is not set, or a name.
using KeyWord = std::variant<int, std::wstring>;
using KeyWords = std::array<KeyWord, Clavis::ElementCount>;

std::variant<KeyWords, KeyFault> ReadKeyWords(std::wstring_view text);

// The fault, a mark under its place, and what a key is.
std::string KeyWordsFaultText(std::wstring_view text, KeyFault const& fault);

} // namespace paramdb::tools
