// The listing of `paramdb trigger`, a part of that of `paramdb explain`: the dimensions of a trigger in each
// mode, and what cell a position falls into or where a cell lies.
//
// In JSON it is an object. The keys stay; new ones may be added.
//
//   trigger           {id, name}
//   modes             those in which the trigger has dimensions, a list in the order of ids
//     mode            {id, name}
//     varying         the one dimension that is not fixed; null if there are several or none
//     dimensions      a list, in the order of numbers
//       dimension     1 to 4, any other is of no use and has no cells
//       kind          1 for a fixed one, 2 where cells hold their upper boundary and 3 their lower one
//       start, stop, step
//                     as the row has them
//       cells         how many
//       raising       whether it stops not below its start
//     cell_number     of the position; null for none, and where the question is not of a position
//     places          a list for the dimensions that the question is of; null without a question
//       dimension
//       position      the one that was given, or the middle of the cell, with an extent the far edge
//       cell          null where there is none
//       boundary      the one that the cell holds; null for a dimension of no kind that has one
//       in_field      whether the cell is one of the field
#pragma once

#include <paramdb/query/trigger_store.h>

#include "tools/named_id.h"
#include "tools/report.h"

#include <cstdint>
#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <vector>

namespace paramdb::tools {

// What is asked of a trigger: nothing, the cell of a position, or the position of a cell.
struct TriggerQuestion {
    std::optional<CTriggerStore::CDimensions> position;
    bool clamp = false;
    std::optional<std::int64_t> cell;
    std::int64_t extent = 0; // in cells, 16 bits for each dimension; 0 for the middle of the cell
};

struct TriggerDimension {
    int dimension; // counted from 1
    int kind;
    CTriggerStore::CInterval interval;

    bool IsUsable() const { return dimension >= 1 && dimension <= int{CTriggerStore::dimensions_d}; }
};

struct TriggerPlace {
    int dimension;
    float position;
    std::optional<int> cell;
    std::optional<float> boundary;
    bool is_in_field;
};

struct TriggerInMode {
    NamedId mode;
    std::optional<int> varying;
    std::vector<TriggerDimension> dimensions;
    std::optional<std::int64_t> cell_number;
    std::vector<TriggerPlace> places;
};

// The modes in which a trigger has dimensions, or the one asked for, which may be virtual.
std::vector<TriggerInMode> CollectTrigger(CQtParamInstance const& parameters, int trigger,
                                          std::optional<int> mode, TriggerQuestion const& question);

void PrintDimensions(std::ostream& out, std::vector<TriggerInMode> const& modes);
// The answers to a question.
void PrintPlaces(std::ostream& out, std::vector<TriggerInMode> const& modes, TriggerQuestion const& question);

nlohmann::ordered_json ToJson(TriggerDimension const& dimension);
nlohmann::ordered_json TriggerJson(NamedId const& trigger, std::vector<TriggerInMode> const& modes,
                                   TriggerQuestion const& question);

} // namespace paramdb::tools
