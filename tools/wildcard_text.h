// Names by a part of them, as a person remembers it, and texts by their form.
#pragma once

#include <string>
#include <string_view>

namespace paramdb::tools {

// Whether the whole text has the form, in which * stands for any characters and ? for one, also where that is
// a pair of surrogates.
bool MatchesWildcards(std::wstring_view text, std::wstring_view form);

// A text with such wildcards to be found anywhere in a name, without regard to case (case_fold.h).
class WildcardText {
public:
    explicit WildcardText(std::wstring_view text);

    // Not for several threads at once.
    bool IsIn(std::wstring_view name);

private:
    std::wstring m_form; // folded, with a star at both ends
    std::wstring m_name; // room for the folded name
};

} // namespace paramdb::tools
