#include "tools/outer_word.h"

#include "tools/sources.h"

#include <algorithm>

namespace paramdb::tools {

std::optional<LastWords> SplitOuterWord(std::vector<std::string> const& words) {
    if (words.size() < 2 || IsFile(words.front()) || !IsFile(words.back()))
        return SplitLastWords(words, 1);
    auto turned = words;
    std::rotate(turned.begin(), turned.begin() + 1, turned.end());
    return SplitLastWords(turned, 1);
}

} // namespace paramdb::tools
