// The words of a verb that takes files and then words of its own, as `paramdb name FILE... KIND ID` does.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

struct LastWords {
    std::vector<std::string> files; // one at least
    std::vector<std::string> words; // as many as were asked for
};

// Adds the argument FILE... and the words behind it, such as "KIND ID", to a verb. All of them are stored at
// `words`.
void AddLastWordsArgument(CLI::App& verb, std::vector<std::string>& words, std::string const& names);

// Takes that many words from the end; none if there is no file before them.
std::optional<LastWords> SplitLastWords(std::vector<std::string> const& words, std::size_t count);

} // namespace paramdb::tools
