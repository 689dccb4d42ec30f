// The lake of the process: the candidate parameter data that the next load reads.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/lake.h>

class PARAMDB_API CParameterLake {
public:
    // Always the same lake, made empty at the first call, which may come from any thread. It has no lock:
    // filling it and loading from it follow one another.
    static CLake& Lake();
};
