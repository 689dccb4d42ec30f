// The listing of `paramdb modes`: the modes, and the layout of virtual mode ids.
//
// In JSON it is an object. The keys stay; new ones may be added. Where something has id and name it is an
// object of both.
//
//   modes             a list, in the order of ids
//     id, name
//     physical_mode   null for none
//     flags           null without a row in <TModeProperty>
//     hidden          whether operators do not see the mode
//     virtual         whether the id has an extension
//   layout
//     extension_bits  with state_bits among them
//     state_bits
//     mask            the bits of the extension in an id
//     base_bits       {all, used, left}: those below the extension; "used" by the largest id of <TMode>
//     parameters      of the grid, a list in the order of keys
//       key           in <TAutoModeParamOrder>
//       signal
//       start, stop, step
//       intervals     how many; null where the range has none
//       interval_bits
//       state         whether there is one
//       fits          whether the field has room for every interval
#pragma once

#include "tools/report.h"

#include <iosfwd>

class CQtParamInstance;

namespace paramdb::tools {

void PrintModeListing(std::ostream& out, CQtParamInstance const& parameters, ReportFormat format);

} // namespace paramdb::tools
