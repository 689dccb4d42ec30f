// Writing a row as a line that reads as exactly that row.
#pragma once

#include "tools/rewrite/row_fields.h"

#include <optional>
#include <string>

namespace paramdb::tools {

enum class LineForm { Lake, Sea };

// Writes the rows of one table.
class RowLineWriter {
public:
    RowLineWriter(TableDescription const& table, LineForm form)
        : m_form(form), m_columns(ColumnsOf(table)), m_fields(table), m_read(table) {}

    // The line of a row, in its canonical layout where this reads, else in a shorter one. None, with the
    // reason and the column that it is about, if no line reads as the row. A column past the last one stands
    // for the whole row.
    std::optional<std::wstring> Write(ParamDb::row_t const& row, std::string& reason, std::size_t& column);

private:
    struct Style;

    std::wstring Compose(ParamDb::row_t const& row, Style const& style) const;
    bool ReadsAsFields(std::wstring const& line);
    std::string TextReason(std::wstring const& text) const;

    LineForm m_form;
    std::vector<ColumnDescription> m_columns;
    RowFields m_fields;
    RowFields m_read;
};

// The value of a named text in a lake; none, with the reason, if no value reads as it.
std::optional<std::wstring> TextValue(std::wstring const& text, std::string& reason);

} // namespace paramdb::tools
