// How a text stands in the line of a row: bare or in quotes.
#pragma once

#include <paramdb/storage/white_space.h>

#include <algorithm>
#include <string_view>

namespace paramdb::tools {

// Whether a text needs quotes, so that it is one field and its line a row: it is empty, or holds white space
// or one of the marks of a lake. Inside quotes anything may stand but a quote and a line feed.
template <class Character>
bool NeedsQuotes(std::basic_string_view<Character> text) {
    auto const is_special = [](Character character) {
        return IsWhiteSpace(character) || character == Character(':') || character == Character(';') ||
               character == Character('{') || character == Character('}') || character == Character('"');
    };
    return text.empty() || std::any_of(text.begin(), text.end(), is_special);
}

} // namespace paramdb::tools
