// Small changes to the text of a lake.
#pragma once

#include <stdexcept>
#include <string>

// The text with the one place where `from` stands replaced.
inline std::string Edited(std::string text, std::string const& from, std::string const& to) {
    std::size_t const place = text.find(from);
    if (place == text.npos || text.find(from, place + 1) != text.npos)
        throw std::invalid_argument("does not stand there once: " + from);
    return text.replace(place, from.size(), to);
}
