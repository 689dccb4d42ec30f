// All cells of a table set as one number, types and bits alike.
#pragma once

#include <paramdb/storage/db_table_set.h>

#include "answers.h"

#include <variant>

namespace fuzz {

inline std::uint64_t SumOf(ParamDb::CDbTableSet const& set) {
    Answers answers;
    for (auto const& [key, table] : set) {
        answers.Take(key, table.size());
        for (ParamDb::row_t const& row : table)
            for (ParamDb::cell_t const& cell : row) {
                answers.Take(cell.index());
                std::visit([&](auto const& value) { answers.Take(value); }, cell);
            }
    }
    return answers.Sum();
}

} // namespace fuzz
