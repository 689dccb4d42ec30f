// Spectral intervals as frequencies and lines: what the positions of an order definition come to in one
// measurement.
//
//     CQtSpecInterval calculation(parameters);
//     calculation.LoadTransformParams(mode, generating_rotor, gear);
//     auto const [entry, end] = parameters.SpecIntervalRange(parameter);
//     CQtSpecInterval::IndexInterval interval;
//     if (calculation.IndexRange(entry->second, interval, line_count, line_distance, speed) == 0)
//         ...  // the lines interval.first to interval.last
//
// An object is a small cache of two values of the drive train, for one caller at a time. What it answers is
// as good as the last LoadTransformParams. Nothing here gives messages.
#pragma once

#include <paramdb/distillery/spec_interval_entry.h>
#include <paramdb/platform/core/export.h>
#include <paramdb/query/param_instance.h>

#include <cstdint>
#include <vector>

class PARAMDB_API CQtSpecInterval {
public:
    // A band of a spectrum: frequencies, and the lines from the first to the last, both counted from 0.
    struct IndexInterval {
        float start;
        float stop;
        unsigned int first;
        unsigned int last;
        friend bool operator==(IndexInterval const&, IndexInterval const&) = default;
    };

    enum index_range_result_t : std::int32_t {
        range_success = 0,
        range_beyond_spectrum = 1,    // the lower index lies beyond the last line
        range_no_base_order = 2,      // a harmonic without base order
        range_no_assembly_ratio = 3,  // a harmonic or a modulation without speed of the assembly
        range_no_line_distance = 4,   // the line distance is not above 0
        range_no_ratio_for_mixed = 5, // an order beside a frequency without speed of the assembly
        range_negative = 6,           // the band is negative or reversed
    };

    // The instance is not owned and must outlive this object. There is no base order and no ratio until
    // parameters are loaded, so that every entry that needs one fails.
    explicit CQtSpecInterval(CQtParamInstance const& instance) : m_instance(&instance) {}

    // Takes base order and ratio from the data. The mode may be virtual; a is the generating rotor, b the one
    // that is measured, each also by one of its gears; -1 for none. The same three again read nothing, also
    // after another load of the data.
    void LoadTransformParams(int mode, int a, int b);

    // Events in one turn of b, and its speed for one turn of a without sign; 0 on a miss.
    float BaseOrderValue() const { return m_base_order; }
    double RatioAssembly2SpeedSrc() const { return m_assembly_ratio; }

    // The band of an entry. Frequencies and the line distance are in Hz, the speed in Hz or, for a band
    // wholly in orders, of no account: such a band stays in orders. On range_negative both bounds are written
    // all the same, on any other failure none.
    index_range_result_t FrequencyRange(QVSpecIntervalEntry const& entry, float line_distance, float speed,
                                        float& lower, float& upper) const;

    // The band with the lines nearest to its bounds. What lies beyond the last line is cut off, and the stop
    // is then the frequency of that line; the start is never moved onto a line. On a failure the interval
    // stays as it is. With a count of 0 every line is there.
    index_range_result_t IndexRange(QVSpecIntervalEntry const& entry, IndexInterval& interval,
                                    unsigned int line_count, float line_distance, float speed) const;

    // Cuts the later intervals, which ascend, out of the first one, leaves the pieces in their place and
    // returns their number. One interval stays as it is; there must be at least one. Two habits that callers
    // know: a cut that swallows the last piece leaves it standing, and a cut from line 0 on makes the last
    // line of the piece before it 4294967295.
    static std::uint64_t InvertIndexIntervalCollection(std::vector<IndexInterval>& intervals);

private:
    CQtParamInstance const* m_instance;
    float m_base_order = 0;
    double m_assembly_ratio = 0;
    int m_mode = -1;
    int m_a = -1;
    int m_b = -1;
};
