#include "tools/show_words.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/report.h"
#include "tools/sources.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

using Words = std::vector<std::string>;

bool IsTable(std::string const& word) {
    return FindTable(word) != nullptr;
}

// What is wrong with words of which none is a tag.
std::string MissingTag(Words const& words) {
    if (words.size() < 2 && IsTable(words.front()) && !IsFile(words.front()))
        return "a FILE is required before the TAG\n";
    auto const wrong = std::find_if_not(words.begin() + 1, words.end(), IsFile);
    if (wrong == words.end())
        return "the TAG of a table is required behind the files\n";
    return UnknownTable(*wrong, "neither a file nor a table");
}

} // namespace

std::variant<ShowWords, std::string> SplitShowWords(Words const& words) {
    if (words.empty())
        return "a FILE is required\n";
    auto const first = words.begin() + 1;
    auto tag =
        std::find_if(first, words.end(), [](auto const& word) { return IsTable(word) && !IsFile(word); });
    if (tag == words.end())
        tag = std::find_if(first, words.end(), IsTable);
    if (tag == words.end())
        return MissingTag(words);

    auto const behind = tag + 1;
    if (words.end() - behind > 1)
        return Printable(FromUtf8(behind[1])) + ": not expected behind the KEY\n";
    ShowWords result{.files = {words.begin(), tag}, .table = FindTable(*tag), .key = {}};
    if (behind != words.end())
        result.key = *behind;
    return result;
}

} // namespace paramdb::tools
