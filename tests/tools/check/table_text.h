// Tables of a lake as text.
#pragma once

#include <string>
#include <vector>

// A section with a row on each line, without anything before it.
inline std::string TableText(std::string const& tag, std::vector<std::string> const& rows) {
    std::string text = "<" + tag + ">: {\n";
    for (std::string const& row : rows)
        text += row + '\n';
    return text + "}\n";
}
