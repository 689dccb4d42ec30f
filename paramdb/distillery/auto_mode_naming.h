// The pieces from which the name of a virtual mode is put together.
#pragma once

#include <map>
#include <string>
#include <utility>

struct CAutoModeNaming {
    std::wstring SeparatorText = L"-";              // between physical mode name and suffix
    std::wstring PositionSeparatorText = L"\u00B7"; // ahead of each position fragment
    std::wstring ConstantSuffix = L"cn";            // suffix when nothing moves
    std::wstring StationaryText = L"s";    // behind the text of a style 0 parameter that does not move
    std::wstring StateDownText = L"D";     // state 1
    std::wstring StateConstantText = L"C"; // state 0
    std::wstring StateUpText = L"u";       // state 3
    std::wstring StateFallText = L"d";     // state 2
    std::wstring IndexedSuffix = L"i";     // suffix when the first parameter has a state and it is 0
    std::map<int, std::pair<int, std::wstring>> ParamTexts; // signal id to style and text
};
