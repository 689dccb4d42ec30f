// The report of `paramdb explain`: what an instrument parameter is, from its settings to the bands that it
// measures and the polygons that judge it.
//
// In JSON it is an object. The keys stay; new ones may be added. Where something has id and name it is an
// object of both.
//
//   parameter, instrument
//   result_type     what the instrument yields, as a number; 0 for no instrument, -1 for nothing
//   yields          the same in words
//   settings        a list of lines in the language of the report; null where they cannot be shown
//   mode            {id, name, reason}: the one that the rest is of; the reason is null where an option said
//                   it
//   trigger         null for none
//   dimensions      of the trigger, a list as of `paramdb trigger`
//   intervals       as of `paramdb interval`; null without an order definition
//   rotors          that of the gear and the one whose turns orders count, a list
//     rotor
//     speed_source  null for none
//     kind          "source" or "reference"; null for none
//     signal        of the speed source; null for none
//     ratio         {numerator, denominator, value}: turns of the rotor for one of the speed source; the
//                   fraction is null where it is not known, the value is 0 for none
//   polygons        a list
//     polygon
//     judge, source the parameter that judges, and the one that is judged
//     keys          for how many keys; 0 where it does not go by keys
//     is_missing    whether there is no polygon of that number
#pragma once

#include "tools/interval_report.h"
#include "tools/judging_polygons.h"
#include "tools/trigger_listing.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace paramdb::tools {

struct RotorLink {
    NamedId rotor;
    NamedId speed_source;
    bool is_reference; // the source is only a reference
    NamedId signal;
    SpeedRatio ratio;
};

struct ParameterReport {
    NamedId parameter;
    NamedId instrument;
    int result_type;
    std::vector<std::wstring> settings;
    std::string settings_fault; // why there are none; empty for no fault
    DrivePart mode;
    NamedId trigger;
    std::vector<TriggerDimension> dimensions;
    std::optional<IntervalReport> intervals;
    std::vector<RotorLink> rotors;
    std::vector<JudgingPolygon> polygons;
};

// What an instrument yields, in words; see CQtParamInstance::ResultType.
char const* ResultTypeText(int result_type);

// The settings are in the language in force.
ParameterReport ExplainParameter(CQtParamInstance parameters, int parameter, DriveOptions const& options);

void PrintParameter(std::ostream& out, ParameterReport const& report, ReportFormat format);

} // namespace paramdb::tools
