// One parameter of the grid of virtual modes.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/tables/system_rows.h>

#include <map>

struct PARAMDB_API CVAutoModeParams {
    int SignalId = -1; // an id of <TAppSignalProperty>
    float Start = 0;   // the range of the parameter, and the width of its intervals
    float Stop = 0;
    float Step = 0;
    float Value4 = 0; // carried through, as all numbered members
    float Value5 = 0;
    float Value6 = 0;
    int IntervalBits = 5;  // derived: the width of the interval in a virtual mode id
    bool HasState = false; // the parameter carries a state of two bits
    float Value8 = 0;
    unsigned int Value9 = 0;

    CVAutoModeParams() = default;
    // From a row of <TAutoModeParam> and its key.
    CVAutoModeParams(int signal, QVAutoModeParams const& row);
    // The row that gives this parameter again; a state flag comes out as 0 or 1.
    QVAutoModeParams ToRow() const;
};

// The grid: order key to parameter.
using CAutoModeParamMap = std::map<int, CVAutoModeParams>;
