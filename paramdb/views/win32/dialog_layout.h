// A dialog's template in the form in which the system takes it, made in memory.
#pragma once

#include <paramdb/platform/framework/dialog_template.h>

#include <cstdint>
#include <vector>

namespace paramdb::win32 {

// An extended dialog template of 16-bit units: a frame that can be made larger, with its title and font, and
// the items of the description in their order, lists without data of their own. To be kept on a boundary of
// four bytes, as a vector is.
[[nodiscard]] std::vector<std::uint16_t> DialogLayout(CDialogTemplate const& description);

} // namespace paramdb::win32
