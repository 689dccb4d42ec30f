// One value of a table-set row, and its conversion to the type of a field.
//
// Every conversion throws std::bad_variant_access where the cell does not hold what the field can take; the
// readers of tables turn that into a message.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace ParamDb {

// The order of the alternatives is fixed: hosts fill cells by index.
using cell_t =
    std::variant<std::int32_t, std::uint32_t, std::int64_t, std::uint64_t, float, double, std::wstring>;
using row_t = std::vector<cell_t>;

// The integer that a cell holds. 32-bit cells give their bits, whatever their sign, to a 32-bit field; a
// 64-bit cell must fit; a float or double cell must be integral.
template <class Integer>
PARAMDB_API Integer ToInteger(cell_t const& cell);
extern template std::int32_t ToInteger(cell_t const&);
extern template std::uint32_t ToInteger(cell_t const&);
extern template std::int64_t ToInteger(cell_t const&);

// The value of any numeric cell, converted arithmetically.
template <class Float>
PARAMDB_API Float ToFloat(cell_t const& cell);
extern template float ToFloat(cell_t const&);
extern template double ToFloat(cell_t const&);

// The wide string that a cell holds.
PARAMDB_API std::wstring const& ToText(cell_t const& cell);

} // namespace ParamDb
