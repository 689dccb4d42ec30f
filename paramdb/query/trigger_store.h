// The field of a trigger: up to four dimensions, each cut into cells of one width.
//
//     CTriggerStore const triggers(parameters);
//     CTriggerStore::CInterval speed;
//     std::int64_t cell = 0;
//     if (triggers.field(mode, trigger, 0, speed) && CTriggerStore::cell(speed, 0, 1234.5f, cell, false))
//         ...
//
// The rows of <TTriggerParam> under (base mode, trigger, dimension + 1) are the dimensions of a trigger; each
// call reads them anew. Modes may be virtual. A cell number has 16 bits for each dimension. All arithmetic is
// in float, each step rounded, and defined for every number: cells of what is not finite are the outermost.
//
// In a raising dimension, one that stops not below its start, a cell holds its upper boundary and not its
// lower one; in a falling dimension it is the other way round.
//
// Functions that go through the rows of a trigger throw std::out_of_range ("invalid bitset position") at a
// row whose dimension is not one of the four; what they have written until then stays. Nothing gives
// messages. Any number of threads, under the rules of CQtParamInstance.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/query/param_instance.h>

#include <array>
#include <bitset>
#include <cstdint>

class PARAMDB_API CTriggerStore {
public:
    static constexpr unsigned int dimensions_d = 4;

    // One dimension. Positions and widths are in the unit of what is measured along it.
    class PARAMDB_API CInterval {
    public:
        // From 0 to 0 in steps of 1, raising.
        CInterval() = default;
        // The stop is `len` steps from 0, whatever the start: hosts rely on it.
        CInterval(float start, float step, unsigned int len, bool raising);
        // The lower end of the row becomes the start.
        CInterval(QVTriggerParams const& row);
        CInterval& operator=(QVTriggerParams const& row) { return *this = CInterval(row); }

        // As a new one, but raising stays.
        void clear();
        // The lower end becomes the start. The number of cells is taken from the ends as given: one that
        // falls has a negative number of them, as an unsigned one. Hosts rely on it.
        void set(float start, float step, float stop);

        float start() const { return m_start; }
        // The number of cells, cut to a whole one; 0 if it is no number or beyond 64 bits.
        unsigned int len() const { return m_len; }
        float step() const { return m_step; }
        float stop() const { return m_stop; }
        // Whether the stop was not below the start before the two changed places; false for a NaN.
        bool raising() const { return m_raising; }

    private:
        float m_start = 0;
        unsigned int m_len = 0;
        float m_step = 1;
        float m_stop = 0;
        bool m_raising = true;
    };

    // The dimensions of a trigger, and which of them are set.
    struct CIntervals {
        std::array<CInterval, dimensions_d> intervals;
        std::bitset<dimensions_d> dimensions;
    };

    // A position in each dimension, and in which of them it is set.
    struct CDimensions {
        std::array<float, dimensions_d> positions{};
        std::bitset<dimensions_d> dimensions;
    };

    // The query object must outlive this one.
    CTriggerStore(CQtParamInstance const& parameters) : m_parameters(&parameters) {}

    unsigned int max_dims() const { return dimensions_d; }

    // The dimension, from 0, of the only row whose kind is not 1; -1 if there is none or a second one, where
    // the search ends.
    int dimension(int mode, int trigger) const;
    // A bit for each dimension that has a row, dimension 0 in the lowest; 0 and false without rows.
    bool dimensions(int mode, int trigger, unsigned int& mask) const;

    // All dimensions that have a row; none are set and false without rows. Intervals without row stay.
    bool field(int mode, int trigger, CIntervals& intervals) const;
    // One dimension, from 0; false without a row, and the interval stays.
    bool field(int mode, int trigger, unsigned int dim, CInterval& interval) const;

    // Ors the cell of a position in one dimension into `number`. A position outside of the 65536 cells gives
    // the nearest one with `clamp`, else false, and the number stays.
    //
    // Dimensions 0 and 2 go to bits 0 to 15, 1 and 3 to bits 16 to 31 with their top bit copied through all
    // above, and so on for higher ones. So fields of more than two dimensions overlap, and `position` does
    // not take them apart again: hosts rely on these numbers.
    static bool cell(CInterval const& interval, unsigned int dim, float position, std::int64_t& number,
                     bool clamp);
    // The same over all dimensions that are set in both, from a number of 0. False at the first failure, and
    // the number stays.
    static bool cell(CIntervals const& intervals, CDimensions const& position, std::int64_t& number,
                     bool clamp);

    // The boundary that the cell holds, in one dimension: 16 bits of the number with their sign, dimension 0
    // in the lowest and so on up to 3, then again from the lowest. Always true.
    static bool position(CInterval const& interval, std::int64_t number, unsigned int dim, float& position);
    // All four dimensions, whether the intervals are set or not: the middle of the cell where the extent has
    // 16 zero bits, else the lower boundary of the cell that lies so many cells on. Always true.
    static bool position(CIntervals const& intervals, std::int64_t number, std::int64_t extent,
                         CDimensions& position);

    // The same from the table. One dimension: the upper boundary for kind 2, the lower for kind 3; false and
    // the position stays for any other kind and without a row.
    bool position(int mode, int trigger, std::int64_t number, unsigned int dim, float& position) const;
    // All dimensions that have a row, of any kind; none are set and false without rows.
    bool position(int mode, int trigger, std::int64_t number, std::int64_t extent,
                  CDimensions& position) const;

private:
    CQtParamInstance const* m_parameters;
};
