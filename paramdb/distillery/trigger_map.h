// The trigger of each instrument parameter, looked up in the table of its instrument class once per load.
#pragma once

#include <map>

struct CParamTables;

// Instrument parameter to trigger.
using CTriggerIdMap = std::map<int, int>;

// The map of these tables. A parameter takes the trigger of the first row that is not below it, also one of
// another parameter, or -1 behind the last row: hosts rely on it. Parameters of classes without triggers are
// left out.
CTriggerIdMap BuildTriggerIdMap(CParamTables const& tables);
