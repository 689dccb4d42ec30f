// The bands of all order definitions of a load.
//
// A parameter has its bands once for each mode in which it is measured, on the rotor that `paramdb interval`
// chooses there. One that is measured nowhere has them in the first mode where its gear turns.
#pragma once

#include "tools/diff/answers.h"

namespace paramdb::tools {

// The columns: parameter, mode, interval | rotor, gear, from, to, unit, lower, upper, lower_hz, upper_hz,
// fault. Intervals are counted from 1. A band wholly in orders has its bounds in orders and in Hz, any other
// one in one of both.
RowColumns IntervalColumns();

void CollectIntervals(RowTable& table, CQtParamInstance const& parameters, AnswerOptions const& options);

} // namespace paramdb::tools
