// Which polygons have to do with an instrument parameter: those that judge it, and those with which it judges
// another one.
#pragma once

#include "tools/named_id.h"

#include <compare>
#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <vector>

namespace paramdb::tools {

struct JudgingPolygon {
    NamedId polygon;
    NamedId judge;    // the parameter that judges
    NamedId source;   // the parameter that is judged
    std::size_t keys; // for how many keys; 0 where it does not go by keys
    bool is_missing;  // there is no polygon of that number
};

// In the order of judges and polygons. Track polygons, curve polygons and variable areas with one or two
// polygons judge.
std::vector<JudgingPolygon> JudgingPolygons(CQtParamInstance const& parameters, int parameter);

// {polygon, judge, source, keys, is_missing}
nlohmann::ordered_json ToJson(JudgingPolygon const& polygon);

} // namespace paramdb::tools
