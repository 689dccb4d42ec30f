// The rows of one table as its lines are read one after the other.
#pragma once

#include <paramdb/storage/white_space.h>

#include "tools/convert/forms.h"
#include "tools/rewrite/row_fields.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// A line without fields repeats the row before it. Where a table drops such a row, it is no row here.
class RowCollector {
public:
    enum class Result { Row, Faulty };

    RowCollector(TableDescription const& table, std::vector<ParamDb::row_t>& rows)
        : m_rows(rows), m_key_columns(table.key_columns.size()), m_has_unique_keys(table.has_unique_keys),
          m_fields(table) {}

    // Reads a line; what it leaves is behind the last field.
    template <class Character>
    Result Add(std::basic_string_view<Character>& line) {
        bool const has_fields = !line.empty();
        if (!m_fields.Read(line))
            return Result::Faulty;
        ParamDb::row_t row = m_fields.Cells();
        if (has_fields || !RepeatsLastKey(row))
            m_rows.push_back(std::move(row));
        return Result::Row;
    }

private:
    bool RepeatsLastKey(ParamDb::row_t const& row) const {
        if (!m_has_unique_keys || m_rows.empty())
            return false;
        // Not to the bit: a NaN is no repetition of itself.
        auto const end = row.begin() + static_cast<std::ptrdiff_t>(m_key_columns);
        return std::equal(row.begin(), end, m_rows.back().begin());
    }

    std::vector<ParamDb::row_t>& m_rows;
    std::size_t m_key_columns;
    bool m_has_unique_keys;
    RowFields m_fields;
};

} // namespace paramdb::tools
