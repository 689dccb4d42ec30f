// Words and pieces of text for findings.
#pragma once

#include <paramdb/storage/lake_text.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace paramdb::tools::check {

// "1 line", "12 lines".
std::string Counted(std::size_t count, std::string_view noun);

// A text of the data for the terminal; of a long one the beginning with three dots.
std::string Shortened(std::wstring_view text);
std::string Shortened(LakeText text);

// The same in quotes, if it has none.
std::string Quoted(LakeText text);

// What is told of a quote without a second one, whoever finds it.
extern char const* const UnclosedQuote;

// Whether the bytes begin with the mark that some editors put before UTF-8.
bool HasByteOrderMark(std::string_view bytes);

} // namespace paramdb::tools::check
