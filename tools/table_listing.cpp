#include "tools/table_listing.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/table_names.h"

#include <nlohmann/json.hpp>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;
using ColumnList = std::vector<ColumnDescription>;

// The room for the columns in a line of the listing; with what stands before them the line has 120
// characters.
constexpr std::size_t ColumnsWidth = 52;

std::string TypeName(ColumnDescription const& column) {
    return ToUtf8(FieldTypeName(column.type));
}

// Pieces of text, with blanks between them, in as few lines as have room for them.
class Wrapped {
public:
    void Add(std::string const& piece) {
        if (m_lines.empty() || m_lines.back().size() + 1 + piece.size() > ColumnsWidth)
            m_lines.push_back(piece);
        else
            m_lines.back().append(" ").append(piece);
    }
    std::vector<std::string> const& lines() const { return m_lines; }

private:
    std::vector<std::string> m_lines;
};

// "mode:int | name:text"
void AddColumns(Wrapped& text, ColumnList const& columns, std::string_view end) {
    for (ColumnDescription const& column : columns) {
        std::string piece(column.name);
        piece.append(":").append(TypeName(column)).append(&column == &columns.back() ? end : ",");
        text.Add(piece);
    }
}

struct Totals {
    std::uint64_t tables = 0;
    std::uint64_t rows = 0;
    std::uint64_t bytes = 0;
};

void AddTable(TextTable& listing, CatalogueEntry const& table, Totals& totals) {
    TableDescription const& description = *table.description;
    std::size_t const rows = table.rows->RowCount();
    std::size_t const bytes = MemoryBytes(*table.rows);
    int const instrument_class = description.instrument_class;

    Wrapped columns;
    AddColumns(columns, description.key_columns, " |");
    AddColumns(columns, description.row_columns, "");
    std::vector<std::string> cells{TagOf(description), Grouped(rows), Grouped(bytes),
                                   std::string(description.container),
                                   instrument_class < 0 ? "" : std::to_string(instrument_class)};
    for (std::string const& line : columns.lines()) {
        cells.push_back(line);
        listing.Add(std::move(cells));
        cells.assign(5, "");
    }
    totals.tables += rows > 0 ? 1 : 0;
    totals.rows += rows;
    totals.bytes += bytes;
}

void PrintText(std::ostream& out, std::span<CatalogueEntry const> tables, TableChoice choice) {
    using enum TextTable::Align;
    TextTable listing({Left, Right, Right, Left, Right, Left});
    listing.Add({"Tag", "Rows", "Bytes", "Container", "Class", "Key | row"});
    Totals totals;
    for (CatalogueEntry const& table : tables) {
        if (choice == TableChoice::All || table.rows->RowCount() > 0)
            AddTable(listing, table, totals);
    }
    listing.Add({std::to_string(totals.tables) + " of " + std::to_string(tables.size()) + " with rows",
                 Grouped(totals.rows), Grouped(totals.bytes)});
    listing.Print(out);
}

Json JsonColumns(ColumnList const& columns) {
    Json list = Json::array();
    for (ColumnDescription const& column : columns)
        list.push_back({{"name", column.name}, {"type", TypeName(column)}});
    return list;
}

void PrintJsonListing(std::ostream& out, std::span<CatalogueEntry const> tables, TableChoice choice) {
    Json list = Json::array();
    for (CatalogueEntry const& table : tables) {
        TableDescription const& description = *table.description;
        std::size_t const rows = table.rows->RowCount();
        if (choice == TableChoice::WithRows && rows == 0)
            continue;
        int const instrument_class = description.instrument_class;
        list.push_back({{"tag", TagOf(description)},
                        {"container", description.container},
                        {"key", description.key},
                        {"row", description.row},
                        {"instrument_class", instrument_class < 0 ? Json(nullptr) : Json(instrument_class)},
                        {"unique_keys", description.has_unique_keys},
                        {"key_columns", JsonColumns(description.key_columns)},
                        {"row_columns", JsonColumns(description.row_columns)},
                        {"rows", rows},
                        {"bytes", MemoryBytes(*table.rows)}});
    }
    PrintJson(out, list);
}

} // namespace

void PrintTableListing(std::ostream& out, std::span<CatalogueEntry const> tables, TableChoice choice,
                       ReportFormat format) {
    if (format == ReportFormat::Json)
        PrintJsonListing(out, tables, choice);
    else
        PrintText(out, tables, choice);
}

} // namespace paramdb::tools
