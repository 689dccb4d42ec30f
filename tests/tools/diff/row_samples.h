// Small tables for tests of what holds and compares rows.
#pragma once

#include "tools/diff/row_table.h"

#include <string>
#include <utility>
#include <vector>

// Key: a number and a text; row: a number of each kind and a text.
inline paramdb::tools::RowColumns SampleColumns() {
    using enum paramdb::FieldType;
    return {{{"id", Int},
             {"part", Text},
             {"count", Unsigned},
             {"total", Int64},
             {"width", Float},
             {"ratio", Double},
             {"note", Text}},
            2};
}

// A row of these columns.
struct SampleRow {
    int id = 0;
    std::wstring part = {};
    unsigned int count = 0;
    std::int64_t total = 0;
    float width = 0;
    double ratio = 0;
    std::wstring note = {};

    std::vector<paramdb::tools::FieldValue> Fields() const {
        return {std::int32_t{id},       std::wstring_view(part), std::uint32_t{count}, total, width, ratio,
                std::wstring_view(note)};
    }
};

inline paramdb::tools::RowTable SampleTable(std::vector<SampleRow> const& rows) {
    paramdb::tools::RowTable table(SampleColumns());
    for (SampleRow const& row : rows)
        table.Add(row.Fields());
    table.Sort();
    return table;
}
