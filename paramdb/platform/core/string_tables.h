// The string tables behind CLibMgr, one source file for each language.
//
// A table is a constant array sorted by id. A new language is a file strings_<language>.cpp with one
// function, told in string_tables.cpp; a table may be incomplete, what it lacks is taken from the English
// one. Everything here is constant and usable from any thread, also while static objects are built.
#pragma once

#include <cstdint>
#include <span>

namespace paramdb {

// One string; the text is static.
struct StringEntry {
    unsigned id;
    wchar_t const* text;
};

// The strings of one language, ids strictly ascending.
struct StringTable {
    std::uint16_t language;
    std::span<StringEntry const> strings;
};

// All tables; the first is the English one, which is complete.
[[nodiscard]] std::span<StringTable const> StringTables() noexcept;

// The text of an id in a language, in English where the language lacks it, nullptr where English lacks it
// too.
[[nodiscard]] wchar_t const* FindString(std::uint16_t language, unsigned id) noexcept;

[[nodiscard]] std::span<StringEntry const> EnglishStrings() noexcept;

} // namespace paramdb
