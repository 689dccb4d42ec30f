// Comparing names as people type them: without regard to upper and lower case.
//
// A letter is folded by itself, the same under every locale: letters of Latin, Greek, Cyrillic and Armenian
// script as they are written today, full-width ones, and the signs for units that look like one (micro, ohm,
// kelvin, angstrom). Nothing becomes longer, so that a sharp s is not two of them. What is not known stays.
#pragma once

#include <string>
#include <string_view>

namespace paramdb::tools {

// The lower case of a letter in the sense above. Any thread.
wchar_t FoldCase(wchar_t letter);

// The same for each letter of a text. The second puts it into `folded`, whose room is used again.
std::wstring FoldCase(std::wstring_view text);
void FoldCase(std::wstring_view text, std::wstring& folded);

} // namespace paramdb::tools
