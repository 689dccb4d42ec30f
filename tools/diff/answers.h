// What follows from the rows of a load, as tables: the layout of virtual modes, ratios, bands, fields of
// triggers, polygons. Such a table is compared and shown as one of the catalogue is.
//
// Where there is nothing a number is nan.
#pragma once

#include "tools/diff/row_table.h"

#include <optional>
#include <span>
#include <string_view>
#include <vector>

class CQtParamInstance;

namespace paramdb::tools {

// Behind a number, one and several: "rotor turns otherwise", "rotors turn otherwise".
struct CountPhrase {
    std::string_view one;
    std::string_view several;
};

struct AnswerTopic {
    std::string_view name;  // in JSON
    std::string_view title; // a heading
    RowColumns columns;
    CountPhrase changed;
    CountPhrase added; // empty where only a changed row tells something that the tables do not
    CountPhrase removed;

    bool HasOnlyChanges() const { return added.one.empty(); }
};

// All topics in the order of reports.
std::span<AnswerTopic const> AnswerTopics();

struct AnswerOptions {
    float speed = 50; // in Hz, of the rotor whose turns orders count
    std::optional<float> line_distance = {};
};

// The answers of a complete load, in the order of topics and each in key order.
std::vector<RowTable> CollectAnswers(CQtParamInstance const& parameters, AnswerOptions const& options);

} // namespace paramdb::tools
