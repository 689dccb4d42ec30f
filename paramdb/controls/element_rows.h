// Which row of a key editor shows which element: rows stand in the order of the elements, for those alone
// whose bit is set. A helper of CPentadCtrl.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>

#include <bitset>

namespace paramdb {

using ElementMask = std::bitset<Clavis::ElementCount>;

// The row of an element, -1 for one without. Throws std::out_of_range("invalid bitset position") for a number
// that is no element's.
[[nodiscard]] PARAMDB_CONTROLS_API int RowOfElement(ElementMask mask, int element);

// The element of a row, -1 for a row below 0. Throws std::out_of_range("invalid bitset position") for a row
// behind those of the elements.
[[nodiscard]] PARAMDB_CONTROLS_API int ElementOfRow(ElementMask mask, int row);

} // namespace paramdb
