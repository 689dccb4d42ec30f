#include <paramdb/platform/framework/sys_color.h>

#include <algorithm>
#include <utility>

namespace {

using Colors = std::map<int, COLORREF>;

#ifndef _WIN32
constexpr std::pair<int, COLORREF> ClassicColors[] = {
    {paramdb::window_background_color, 0xFFFFFF}, {paramdb::window_text_color, 0x000000},
    {paramdb::highlight_color, 0x6A240A},         {paramdb::highlight_text_color, 0xFFFFFF},
    {paramdb::button_face_color, 0xC8D0D4},
};
#endif

// What a host has set; on other systems than Windows the classic colours at first.
Colors FirstColors() {
#ifdef _WIN32
    return {};
#else
    return Colors(std::begin(ClassicColors), std::end(ClassicColors));
#endif
}

Colors& TheColors() {
    static auto& colors = *new Colors(FirstColors());
    return colors;
}

paramdb::TextWidthFunction& TheTextWidth() {
    static auto& function = *new paramdb::TextWidthFunction;
    return function;
}

} // namespace

namespace paramdb {

COLORREF SystemColor(int index) noexcept {
    auto const known = TheColors().find(index);
    if (known != TheColors().end())
        return known->second;
#ifdef _WIN32
    return ::GetSysColor(index);
#else
    return 0;
#endif
}

void SetSystemColors(std::map<int, COLORREF> const& colors) {
    for (auto const& [index, color] : colors)
        TheColors()[index] = color;
}

void ResetSystemColors() {
    TheColors() = FirstColors();
}

int TextWidth(CString const& text) {
    constexpr int pixels_for_a_character = 7;
    return TheTextWidth() ? TheTextWidth()(text) : pixels_for_a_character * text.GetLength();
}

void SetTextWidth(TextWidthFunction function) {
    TheTextWidth() = std::move(function);
}

} // namespace paramdb
