#include <paramdb/storage/unquote.h>
#include <paramdb/storage/white_space.h>

#include <algorithm>

namespace paramdb {

std::wstring Unquote(std::wstring_view text) {
    auto const blank = [](wchar_t character) { return IsWhiteSpace(character); };
    auto const first = std::ranges::find_if_not(text, blank);
    if (first != text.end() && *first == L'"')
        return {first + 1, std::find(first + 1, text.end(), L'"')};
    return {text.begin(), std::find_if(first, text.end(), blank)};
}

} // namespace paramdb
