// The listing of `paramdb polygons`: the polygons, and the concrete keys that they judge.
//
// In JSON it is an object. The keys stay; new ones may be added.
//
//   polygons        a list, in the order of numbers
//     number
//     name          null for none
//     two_points    whether a two-point definition made it for one key
//     points        a list of [x, y]
//   judged          a list, in the order of keys
//     key           the six numbers
//     parameter, source_parameter
//                   {id, name}; null for none
//     area_interpretation
//                   {id, name}, a null name for a number without meaning
//     polygon       its number
//     is_missing    whether there is no polygon of that number
#pragma once

#include "tools/key_pattern.h"
#include "tools/report.h"

#include <iosfwd>

class CQtParamInstance;

namespace paramdb::tools {

// With a pattern only the keys that match and the polygons that judge them. Returns the number of polygons
// and keys.
std::size_t PrintPolygons(std::ostream& out, CQtParamInstance const& parameters, KeyPattern const* pattern,
                          ReportFormat format);

} // namespace paramdb::tools
