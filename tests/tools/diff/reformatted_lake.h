// The text of a lake written otherwise, with the same meaning.
#pragma once

#include <random>
#include <string>
#include <string_view>

// Sections and plain lines in another order, rows in another order, other blanks, comments and empty lines
// between the sections, texts with and without quotes, numbers with signs and zeros. Every section must be a
// table of the catalogue with whole rows, and stand there once. The same seed gives the same text.
std::string ReformattedLake(std::string_view lake, std::mt19937& random);
