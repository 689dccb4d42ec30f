// Texts and their lines.
#pragma once

#include <sstream>
#include <string>
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

// Each line with its end.
inline std::string JoinLines(Lines const& lines) {
    std::string text;
    for (std::string const& line : lines)
        text += line + '\n';
    return text;
}

} // namespace test_support
