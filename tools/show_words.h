// Telling apart the words of `paramdb show FILE... TAG [KEY]`.
#pragma once

#include "tools/table_names.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace paramdb::tools {

struct ShowWords {
    std::vector<std::string> files;
    TableDescription const* table = nullptr;
    std::optional<std::string> key;
};

// The first word is a file. The tag is the first word behind it that names a table and is no file that
// exists; where there is none, the first one that names a table. The words before the tag are files, be they
// there or not, and one word behind it is the key. The other answer is what is wrong.
std::variant<ShowWords, std::string> SplitShowWords(std::vector<std::string> const& words);

} // namespace paramdb::tools
