// The rows of a table, whatever their classes: what dumps, listings and exports read.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/tables/field.h>

#include <cstddef>
#include <functional>
#include <span>

class CQParamTableRows {
public:
    using ConstFields = std::span<paramdb::ConstField const>;
    // Takes the fields of a key and of its row; false ends the walk.
    using Visitor = std::function<bool(ConstFields key, ConstFields row)>;

    virtual ~CQParamTableRows() = default;
    virtual std::size_t RowCount() const = 0;
    // Shows the rows in key order.
    virtual void VisitRows(Visitor const& visitor) const = 0;
    // The bytes that the container holds for its rows, without the texts in them.
    virtual std::size_t ContainerBytes() const = 0;
};

namespace paramdb {

// About how many bytes the rows take, with their texts and what is reserved for more.
PARAMDB_API std::size_t MemoryBytes(CQParamTableRows const& table);

// Outputs the protocol form of a table (category 8, style 1): its tag, its rows with a counter, its tag
// again. A limit of 0 shows every row, any other one row more than it says; it counts as an unsigned number.
PARAMDB_API void DumpRows(CQParamTableRows const& table, wchar_t const* tag, int limit);

} // namespace paramdb
