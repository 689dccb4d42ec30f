// Texts and their lines.
#pragma once

#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace test_support {

using Lines = std::vector<std::string>;

inline Lines SplitLines(std::string const& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

// Each byte as a character.
inline std::wstring Widened(std::string_view bytes) {
    std::wstring wide;
    for (char const byte : bytes)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(byte));
    return wide;
}

// Each line with its end.
inline std::string JoinLines(Lines const& lines) {
    std::string text;
    for (std::string const& line : lines)
        text += line + '\n';
    return text;
}

} // namespace test_support
