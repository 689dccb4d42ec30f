// The rows of all tables in plain vectors, for programs that are measured beside the library: the same key
// and row classes, without what a table adds to them.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace benchmarks {

struct PlainTables {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) std::vector<std::pair<QIdx1, QIdxName>> accessor;
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    std::vector<std::pair<key, row>> accessor;
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row)                                          \
    std::vector<std::pair<QIdx1, row>> map##instrument_class;
#include <paramdb/tables/catalogue.def>
};

// Calls the function with the tag and the rows of each table.
template <class Tables, class Function>
void ForEachTable(Tables& tables, Function&& function) {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) function(tag, tables.accessor);
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    function(tag, tables.accessor);
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row)                                          \
    function(tag, tables.map##instrument_class);
#include <paramdb/tables/catalogue.def>
}

// Gives a text field the characters of a text in ASCII.
inline void AssignText(CFixedText& field, std::string_view text) {
    field.Assign(text, [](char byte) { return static_cast<wchar_t>(byte); });
}

// The number of rows and a number that depends on every field of every row, but not on the order of the rows.
struct Digest {
    std::size_t rows = 0;
    std::uint64_t sum = 0;

    bool operator==(Digest const&) const = default;

    // Adds a row whose fields are given in line order.
    class Row {
    public:
        explicit Row(std::wstring_view tag) { AddText(tag); }
        template <class T>
        void Add(T const& field) {
            if constexpr (requires { field.view(); })
                AddText(field.view());
            else if constexpr (std::is_same_v<T, float>)
                Mix(std::bit_cast<std::uint32_t>(field));
            else if constexpr (std::is_same_v<T, double>)
                Mix(std::bit_cast<std::uint64_t>(field));
            else
                Mix(static_cast<std::uint64_t>(field));
        }
        std::uint64_t value() const { return m_value; }

    private:
        void AddText(std::wstring_view text) {
            Mix(text.size());
            for (wchar_t const unit : text)
                Mix(static_cast<std::uint64_t>(unit));
        }
        void Mix(std::uint64_t bits) {
            m_value = (m_value ^ bits) * 0x9E37'79B9'7F4A'7C15;
            m_value ^= m_value >> 29;
        }

        std::uint64_t m_value = 0;
    };
    void Add(Row const& row) {
        ++rows;
        sum += row.value();
    }
};

Digest DigestOf(PlainTables const& tables);
Digest DigestOf(CParamTables& tables);

} // namespace benchmarks
