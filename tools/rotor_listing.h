// The listing of `paramdb rotors`: how fast each rotor turns, what tells its speed, and which orders it
// makes.
//
// In JSON it is a list of physical modes. The keys stay; new ones may be added.
//
//   physical_mode       {id, name}
//   rotors              a list, in the order of ids
//     rotor             {id, name}
//     numerator, denominator
//                       the ratio in lowest terms; null where the row has no fraction
//     ratio             the number of the row
//     speed_source      {id, name}; null for none
//     speed_source_kind "source" or "reference"; null for none
//     signal            {id, name}, that of the speed source; null for none
//     order_sources     a list, in the order of ids
//       order_source, gear
//                       {id, name}; the gear is the physical one
//       base_order      null for none
#pragma once

#include <paramdb/platform/numeric/ratio.h>

#include "tools/named_id.h"
#include "tools/report.h"

#include <iosfwd>
#include <optional>
#include <vector>

namespace paramdb::tools {

struct OrderSourceEntry {
    NamedId source;
    NamedId gear;
    std::optional<float> base_order;
};

enum class SpeedSourceKind { None, Source, Reference };

struct RotorEntry {
    NamedId rotor;
    numeric::CRatio fraction; // exact where the row has one
    double ratio;
    NamedId speed_source;
    SpeedSourceKind speed_source_kind;
    NamedId signal;
    std::vector<OrderSourceEntry> order_sources;
};

struct PhysicalModeRotors {
    NamedId physical_mode;
    std::vector<RotorEntry> rotors;
};

// The rotors of a physical mode, or of all that have one.
std::vector<PhysicalModeRotors> CollectRotors(CQtParamInstance const& parameters,
                                              std::optional<int> physical_mode);

void PrintRotors(std::ostream& out, std::vector<PhysicalModeRotors> const& list, ReportFormat format);

} // namespace paramdb::tools
