// The one word of a verb that takes files beside it, as `paramdb trigger FILE... TRIGGER` does.
#pragma once

#include "tools/last_words.h"

#include <optional>
#include <string>
#include <vector>

namespace paramdb::tools {

// The last word, or the first one if that is no file and the last one is; the others are files. None if
// there are fewer than two words.
std::optional<LastWords> SplitOuterWord(std::vector<std::string> const& words);

} // namespace paramdb::tools
