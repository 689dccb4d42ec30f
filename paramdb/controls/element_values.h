// The values of a key element that a control offers. A helper of the controls.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/signal/clavis.h>
#include <paramdb/query/param_instance.h>

namespace paramdb {

// Whether a control leaves a mode out; false for every other element.
[[nodiscard]] PARAMDB_CONTROLS_API bool IsLeftOut(CQtParamInstance const& parameters, Clavis::qOrder element,
                                                  int id, bool hide_virtual_modes);

// Whether a value passes a mask; see CClavisComboBox::Fill.
[[nodiscard]] PARAMDB_CONTROLS_API bool PassesFilter(CQtParamInstance const& parameters,
                                                     Clavis::qOrder element, int id, unsigned int mask);

// "(Mode 17)": how a value shows that no table has.
[[nodiscard]] PARAMDB_CONTROLS_API CString UnknownValueText(Clavis::qOrder element, int id);

} // namespace paramdb
