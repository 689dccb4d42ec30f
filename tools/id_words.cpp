#include "tools/id_words.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/number_text.h>

#include "tools/nearest_names.h"
#include "tools/report.h"

namespace paramdb::tools {

std::optional<int> ReadId(std::wstring_view text) {
    std::int32_t id = 0;
    if (TakeNumber(text, id) != NumberFault::None || text.find_first_not_of(L" \t") != text.npos)
        return std::nullopt;
    return id;
}

std::string UnknownKind(std::string_view word, std::string_view first) {
    std::string text = ShownWord(FromUtf8(word)) + ": no such kind";
    if (FindKind(first) != nullptr)
        return text + "; the files stand before it\n";
    std::vector<std::wstring> words;
    for (Kind const& kind : Kinds())
        words.push_back(FromUtf8(kind.word));
    std::vector<std::string> near;
    for (std::size_t const place :
         NearestNames(FromUtf8(word), std::vector<std::wstring_view>(words.begin(), words.end())))
        near.emplace_back(Kinds()[place].word);
    return text + (near.empty() ? "; there are " + KindList() : DidYouMean(near)) + '\n';
}

std::string ShownWord(std::wstring_view text) {
    return text.empty() ? "\"\"" : Printable(text);
}

} // namespace paramdb::tools
