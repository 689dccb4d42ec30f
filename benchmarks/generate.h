// Parameter files of any size, made in memory: the rows of all 103 tables, and the same rows as text for
// every program that is measured.
//
// Most rows have the key of the measurement data, as in the files of real benches; about one in eight holds a
// text. The same options give the same rows on every machine.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace benchmarks {

// A tag as the bytes that stand in files.
std::string NarrowTag(wchar_t const* tag);

// The rows of one table. A row is its fields in line order with a tab between them; a text stands in double
// quotes and holds neither tabs nor escapes, so that a field reads the same in a lake, in JSON and in TOML.
struct TableRows {
    paramdb::TableDescription const* description;
    std::vector<std::string> rows;

    std::string Tag() const { return NarrowTag(description->tag); }
    // The types of the fields, those of the key first.
    std::vector<paramdb::FieldType> FieldTypes() const;
};

struct GenerateOptions {
    std::size_t rows = 1000; // of all tables together
    std::uint64_t seed = 1;
    bool in_random_order = false; // else in the order of the keys; the rows are the same ones
    // The tables that are derived from have other shares of the rows; see generate_ready.h.
    bool has_ready_shares = false;
};

// All tables in the order of registration. No key comes twice in a table of unique keys.
std::vector<TableRows> GenerateRows(GenerateOptions const& options);
std::size_t RowCount(std::vector<TableRows> const& tables);

// A parameter file with the version lines in front; every table has a line that opens and one that closes it.
std::string LakeText(std::vector<TableRows> const& tables);
// One object with an array for each table, which holds an array for each row.
std::string JsonText(std::vector<TableRows> const& tables);
// One key for each table, with an array that holds an array for each row.
std::string TomlText(std::vector<TableRows> const& tables);

// The columns of a row, one after the other, each without its quotes.
class RowFields {
public:
    explicit RowFields(std::string_view row) : m_rest(row) {}
    std::string_view Next();

private:
    std::string_view m_rest;
};

} // namespace benchmarks
