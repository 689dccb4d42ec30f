#include "tools/wildcard_text.h"

#include "tools/case_fold.h"

namespace paramdb::tools {
namespace {

// The units of the character at a place of the text.
std::size_t UnitsAt(std::wstring_view text, std::size_t place) {
    auto const is_in = [text](std::size_t index, wchar_t first, wchar_t last) {
        return index < text.size() && text[index] >= first && text[index] <= last;
    };
    return is_in(place, L'\xD800', L'\xDBFF') && is_in(place + 1, L'\xDC00', L'\xDFFF') ? 2 : 1;
}

} // namespace

bool MatchesWildcards(std::wstring_view text, std::wstring_view form) {
    std::size_t place = 0;
    std::size_t at = 0;
    // Where to go on after a mismatch: the last star takes one character more.
    std::size_t star = std::wstring_view::npos;
    std::size_t star_end = 0;
    while (place < text.size()) {
        wchar_t const wanted = at < form.size() ? form[at] : L'\0';
        if (wanted == L'*') {
            star = at++;
            star_end = place;
        } else if (wanted == L'?') {
            ++at;
            place += UnitsAt(text, place);
        } else if (at < form.size() && wanted == text[place]) {
            ++at;
            ++place;
        } else if (star != std::wstring_view::npos) {
            at = star + 1;
            star_end += UnitsAt(text, star_end);
            place = star_end;
        } else {
            return false;
        }
    }
    return form.find_first_not_of(L'*', at) == std::wstring_view::npos;
}

WildcardText::WildcardText(std::wstring_view text) : m_form(L'*' + FoldCase(text) + L'*') {}

bool WildcardText::IsIn(std::wstring_view name) {
    FoldCase(name, m_name);
    return MatchesWildcards(m_name, m_form);
}

} // namespace paramdb::tools
