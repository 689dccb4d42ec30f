// What the tests of the trigger store share: rows of its table, and comparison of an interval with the model.
#pragma once

#include <paramdb/query/trigger_store.h>

#include <gtest/gtest.h>
#include <tests/query/trigger_model.h>

/// A row whose other fields are none of the numbers in use.
inline QVTriggerParams TriggerRow(int kind, float start, float stop, float step) {
    return QVTriggerParams(kind, 11, start, stop, step, 13.5f, 14, 15, 16, 17);
}

/// Whether all five fields are the same; a NaN is the same as any other.
inline testing::AssertionResult Is(CTriggerStore::CInterval const& interval,
                                   trigger_model::Interval const& expected) {
    using trigger_model::Same;
    if (Same(interval.start(), expected.start) && Same(interval.stop(), expected.stop) &&
        Same(interval.step(), expected.step) && interval.len() == expected.len &&
        interval.raising() == expected.raising)
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << interval.start() << ' ' << interval.stop() << ' ' << interval.step() << ' ' << interval.len()
           << ' ' << interval.raising() << " instead of " << expected.start << ' ' << expected.stop << ' '
           << expected.step << ' ' << expected.len << ' ' << expected.raising;
}
