// Changes parameter files as an engineer might spoil them: lines and fields, of the tables that there are.
//
// Bytes changed anywhere hardly ever make a row that refers to another one. This knows tags and columns of
// the catalogue, so that most of what it makes is read, derived and asked for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

// The tables to which rows are added; all of them if empty.
using Tags = std::vector<std::string_view>;

// The text with one to four changes, the same for the same seed, cut to `most` bytes.
std::string MutateLake(std::string_view text, std::size_t most, std::uint32_t seed, Tags const& tags = {});

// Lines of both texts, section by section.
std::string CrossLakes(std::string_view left, std::string_view right, std::size_t most, std::uint32_t seed);

} // namespace fuzz
