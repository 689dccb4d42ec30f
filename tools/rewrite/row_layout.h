// The canonical form of a row of a table.
#pragma once

#include "tools/rewrite/row_fields.h"

#include <optional>
#include <string>
#include <string_view>

namespace paramdb::tools {

// Puts the rows of one table into their canonical form, one after the other.
class RowLayout {
public:
    explicit RowLayout(TableDescription const& table) : m_fields(table), m_check(table) {}

    // The form of the row: its fields with one blank between, texts in quotes where they need them, and what
    // stands behind the last field as it is. None for a row that cannot be read, or that has no such form.
    std::optional<std::string> Format(std::string_view row);

private:
    RowFields m_fields;
    RowFields m_check;
};

} // namespace paramdb::tools
