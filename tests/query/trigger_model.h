// A second opinion on cells and positions of triggers, for tests: every float operation is done in double and
// rounded afterwards, which gives the same float; numbers are taken apart and put together bit by bit.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace trigger_model {

/// A row of <TTriggerParam>.
struct Row {
    std::array<int, 3> key;
    int kind;
    float start, stop, step;
};

/// One dimension as the store keeps it.
struct Interval {
    float start, stop, step;
    unsigned int len;
    bool raising;
};

Interval IntervalOf(Row const& row);
/// The interval that `set` makes.
Interval IntervalSet(float start, float step, float stop);

/// The cell number that one dimension adds; none outside of the field.
std::optional<std::int64_t> Cell(Interval const& interval, unsigned int dim, float position, bool clamp);

/// 16 bits of a number as a signed one.
int CellOf(std::int64_t number, unsigned int dim);
/// The position so many cells and halves of cells from the lower end.
float PositionOf(int cells, int halves, float step, float start, float stop);
float MiddleOrEdge(std::int64_t number, std::int64_t extent, unsigned int dim, float step, float start,
                   float stop);

/// The rows of a trigger in the order of their keys.
std::vector<Row> RowsOf(std::vector<Row> const& table, int mode, int trigger);

/// Whether both are the same number, or no numbers at all.
bool Same(float left, float right);

} // namespace trigger_model
