// The rules of a check, each in the file of its family.
#pragma once

#include "tools/check/context.h"
#include "tools/check/finding.h"

namespace paramdb::tools::check {

// A rule adds what it finds. It neither changes anything nor writes anything.
using Rule = void(CheckContext const& context, FindingList& findings);

// The lake and its files.
Rule CheckVersion;
Rule CheckSections;
Rule CheckTopLevelKeys;
Rule CheckBytes;
// The rows of tables.
Rule CheckNamedRows;
Rule CheckRows;
// References from row to row.
Rule CheckReferences;
Rule CheckInstruments;
Rule CheckParameterRows;
Rule CheckRelativeLimits;
// What is derived from the tables.
Rule CheckChannelCycles;
Rule CheckOrderDefinitions;
Rule CheckDriveTrain;
Rule CheckPhysicalModes;
Rule CheckVirtualModes;
Rule CheckPolygons;
Rule CheckWildcards;
Rule CheckSignals;
Rule CheckResultCodes;
Rule CheckAccumulations;
Rule CheckTriggers;

// All rules; at the end the messages of the load that no rule speaks for.
void RunRules(CheckContext const& context, FindingList& findings);

} // namespace paramdb::tools::check
