// Rows of any table, made from its layout: as values, as lines, as cells, and as a table must show them.
#pragma once

#include <paramdb/storage/cell.h>

#include "layouts.h"

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <variant>
#include <vector>

namespace table_data {

using Value = std::variant<std::int32_t, std::uint32_t, std::int64_t, float, double, std::wstring>;
/// The key's elements and the row's fields.
using Row = std::vector<Value>;

struct Table {
    layouts::Layout const* layout;
    std::vector<Row> rows; // in the order in which a source holds them
};

/// What a source can hold.
struct Style {
    bool short_floats = false; // six digits tell a floating number
    bool plain_texts = false;  // texts are not empty and hold no blank
    bool wide_texts = false;   // characters above U+00FF, and quotes inside of texts
    std::size_t longest_text = 24;
};

class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(m_engine()) % limit; }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    std::uint64_t Bits() { return m_engine(); }

private:
    std::mt19937_64 m_engine;
};

/// Random rows for each table, many of them with a key that came before.
std::vector<Table> RandomTables(Random& random, Style const& style);

/// A row whose fields tell the number and their place.
Row PlainRow(layouts::Layout const& layout, int number);

/// The field as a stream of the classic locale prints it.
std::wstring Printed(Value const& value);

/// The fields with one blank between them, texts as they are.
std::wstring PlainLine(Row const& row);

/// One of the many texts that a line may hold for the row.
std::wstring RandomLine(Row const& row, Random& random);

/// The cell of the field's own type, or another one that reads as the same value.
ParamDb::cell_t OwnCell(Value const& value);
ParamDb::cell_t OtherCell(Value const& value, Random& random);

/// The rows that a table keeps, in their order: sorted by key, of one key the first row or, in a table with
/// several rows to a key, all of them as they came.
std::vector<Row> Kept(Table const& table);

/// The dump of the whole table.
std::wstring DumpOf(Table const& table);
std::wstring DumpOf(std::vector<Table> const& tables);

} // namespace table_data
