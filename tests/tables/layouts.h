// The layouts of all tables, told a second time and in the plainest form: what stands in a line of each
// table. The catalogue of the library is checked against it, and random rows are made from it.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace layouts {

enum class Container { UniqueMap, Tree, NameTable, MultiMap };

/// The types of fields are letters: i int, u unsigned int, q 64-bit int, f float, d double, t text.
struct Layout {
    std::wstring_view tag;
    std::string_view key;
    std::string_view row_class;
    std::string_view row;
    Container container = Container::UniqueMap;
    int instrument_class = -1;      // of a table that stands in a family
    std::string_view accessor = {}; // where it is not the tag without its brackets and the T

    /// The fields of a whole line.
    std::string fields() const { return std::string(key) + std::string(row); }
    bool has_unique_keys() const { return container != Container::MultiMap; }
};

/// The tables in the order of registration.
std::span<Layout const> All();

/// The class of a key with these fields.
std::string_view KeyClass(std::string_view key);

/// The text of the row that a table starts with, fields separated by one blank.
std::wstring DefaultRow(Layout const& layout);

} // namespace layouts
