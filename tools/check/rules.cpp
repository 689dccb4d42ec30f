#include "tools/check/rules.h"

#include "tools/check/load_messages.h"

#include <vector>

namespace paramdb::tools::check {

void RunRules(CheckContext const& context, FindingList& findings) {
    // A new rule is one more name here and in rules.h. The second list needs tables that are loaded.
    static std::vector<Rule*> const line_rules{CheckVersion, CheckSections,  CheckTopLevelKeys,
                                               CheckBytes,   CheckNamedRows, CheckRows};
    static std::vector<Rule*> const table_rules{
        CheckReferences,       CheckInstruments, CheckParameterRows, CheckRelativeLimits, CheckChannelCycles,
        CheckOrderDefinitions, CheckDriveTrain,  CheckPhysicalModes, CheckVirtualModes,   CheckPolygons,
        CheckWildcards,        CheckSignals,     CheckResultCodes,   CheckAccumulations,  CheckTriggers};
    for (Rule* const rule : line_rules)
        rule(context, findings);
    if (!context.IsRefused())
        for (Rule* const rule : table_rules)
            rule(context, findings);
    ReportOtherMessages(context, findings);
}

} // namespace paramdb::tools::check
