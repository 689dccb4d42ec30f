// The report of `paramdb interval`, a part of that of `paramdb explain`: where the intervals of an order
// definition lie.
//
// In JSON it is an object. The keys stay; new ones may be added. Frequencies and bands are of the unit that
// stands beside them.
//
//   parameter       {id, name}; null where the definition was given as it is
//   definition
//   verdict         as of `paramdb order`: "good", "bad", "odd" or "empty"; all but good are without
//   intervals mode, rotor, gear
//                   {id, name, reason}: which were taken; the reason is null where an option said it, all is
//                   null where there is none
//   base_order      of the gear, 0 for none
//   ratio           {numerator, denominator, value}: turns of the gear for one of the rotor, without sign;
//                   the fraction is null where it is not known, the value is 0 for none
//   speed           of the rotor in Hz; null if not given
//   line_distance   null if not given
//   line_count      0 for a spectrum without end
//   intervals       a list
//     from, to      the two positions in words
//     unit          "orders", "Hz", or "spectrum" for a band of lines alone
//     result        0 for a band that there is, else the number of the fault
//     fault         in words; null for none. A band that needs a speed which is not given has one, too
//     lower, upper  null with a fault
//     lower_hz, upper_hz
//                   of a band in orders at that speed; else null
//     first_line, last_line
//                   null without a line distance
#pragma once

#include <paramdb/platform/numeric/ratio.h>

#include "tools/drive_choice.h"
#include "tools/interval_bands.h"

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>

namespace paramdb::tools {

// The ratio of two speeds without its sign.
struct SpeedRatio {
    numeric::CRatio fraction;
    double value;
};

std::string FractionText(numeric::CRatio const& ratio); // "71/17", empty if not exact
std::string RatioText(SpeedRatio const& ratio);         // "71/17, 4.176"
nlohmann::ordered_json RatioJson(SpeedRatio const& ratio);

struct IntervalReport {
    NamedId parameter;
    std::wstring definition;
    DriveOptions options;
    unsigned int line_count;
    Drive drive;
    float base_order;
    SpeedRatio ratio;
    OrderMeaning meaning;
    std::vector<IntervalBand> bands;

    bool HasFault() const;
};

// The intervals of a definition, which may be that of a parameter; -1 for none.
IntervalReport MakeIntervalReport(CQtParamInstance const& parameters, int parameter,
                                  std::wstring const& definition, Drive drive, DriveOptions const& options,
                                  unsigned int line_count);

// The parameter, if asked for and there is one, the definition, which mode, rotor and gear were taken, and
// what they come to.
void PrintDrive(std::ostream& out, IntervalReport const& report, bool with_parameter);
// The bands, and what is easily overlooked.
void PrintBands(std::ostream& out, IntervalReport const& report);

nlohmann::ordered_json ToJson(DrivePart const& part);
nlohmann::ordered_json ToJson(IntervalReport const& report);

} // namespace paramdb::tools
