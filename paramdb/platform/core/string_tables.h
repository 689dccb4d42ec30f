// The string tables behind CLibMgr, one source file for each language.
//
// The table of a language has its strings, sorted by id, and its words for the elements of a key. A new
// language is a file strings_<language>.cpp with one function, told in string_tables.cpp. Strings may be
// missing, they are taken from the English table; the words for the elements are complete. Everything here is
// constant and usable from any thread, also while static objects are built.
//
// The sources of the languages are UTF-8 and hold real letters. Every letter is one 16-bit unit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace paramdb {

// One string; the text is static.
struct StringEntry {
    unsigned id;
    wchar_t const* text;
};

// The words for one element of a key as a heading or label shows them; the texts are static.
struct ElementWords {
    wchar_t const* singular;
    wchar_t const* plural;
};

// How many elements a key has: test step, instrument, channel, object, parameter, sensor, in this order.
inline constexpr std::size_t KeyElements = 6;

// One language: its id on the host system, its strings with ids strictly ascending, its words for the
// elements.
struct StringTable {
    std::uint16_t language;
    std::span<StringEntry const> strings;
    std::span<ElementWords const, KeyElements> elements;
};

// All tables; the first is the English one, which is complete.
[[nodiscard]] std::span<StringTable const> StringTables() noexcept;

// The text of an id in a language, in English where the language lacks it or is unknown, nullptr where
// English lacks it too.
[[nodiscard]] wchar_t const* FindString(std::uint16_t language, unsigned id) noexcept;

// The words for all elements in a language, in English where the language is unknown.
[[nodiscard]] std::span<ElementWords const, KeyElements> FindElements(std::uint16_t language) noexcept;

// The tables, each told the id it stands under.
[[nodiscard]] StringTable ChineseTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable CzechTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable EnglishTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable FrenchTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable GermanTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable HungarianTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable ItalianTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable PortugueseTable(std::uint16_t language) noexcept;
[[nodiscard]] StringTable SpanishTable(std::uint16_t language) noexcept;

} // namespace paramdb
