// Words of the command line that stand for a kind or for an id.
#pragma once

#include "tools/kinds.h"

#include <optional>
#include <string>
#include <string_view>

namespace paramdb::tools {

// The whole text as an id, blanks around it left out; none if it is no number of 32 bits.
std::optional<int> ReadId(std::wstring_view text);

// What to tell about a word that is no kind, with the kinds that are like it and an end of line. `first` is
// the first word of all: a kind there means that the files were put last.
std::string UnknownKind(std::string_view word, std::string_view first);

// The text for the terminal, a pair of quotes for the empty one.
std::string ShownWord(std::wstring_view text);

} // namespace paramdb::tools
