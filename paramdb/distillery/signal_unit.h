// The unit of an application signal, which its row tells by a code or by a text.
//
// The text of a row whose code is that of a common unit follows the code: it is rewritten whenever somebody
// asks for the unit. Both functions hold one lock meanwhile and may be called from several threads at once.
#pragma once

#include <paramdb/keys/text_buffer.h>
#include <paramdb/platform/signal/measuring_unit.h>
#include <paramdb/tables/system_rows.h>

namespace paramdb {

// By the code, or by the text if the code is none of a common unit; "----" is no unit.
CMeasuringUnit UnitOf(QVAppSignalProperty& row);

// The text of the row, brought up to date.
CTextBuffer<CFixedText::Capacity> UnitTextOf(QVAppSignalProperty& row);

} // namespace paramdb
