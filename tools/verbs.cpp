#include "tools/databases.h"
#include "tools/verb.h"

namespace paramdb::tools {

// A new verb is one more name in both lists. Each function stands in the file of its verb.
using VerbMaker = std::unique_ptr<Verb>();
VerbMaker MakeLoadVerb;
VerbMaker MakeTablesVerb;
VerbMaker MakeShowVerb;
VerbMaker MakeDumpVerb;
VerbMaker MakeModesVerb;
VerbMaker MakeRotorsVerb;
VerbMaker MakeOrderVerb;
VerbMaker MakePolygonsVerb;
VerbMaker MakeNameVerb;
VerbMaker MakeIdVerb;
VerbMaker MakeFindVerb;
VerbMaker MakeKeyVerb;
VerbMaker MakeExplainVerb;
VerbMaker MakeIntervalVerb;
VerbMaker MakeTriggerVerb;
VerbMaker MakeCheckVerb;
VerbMaker MakeDiffVerb;
VerbMaker MakeHtmlReportVerb;
VerbMaker MakeMergeVerb;
VerbMaker MakeFormatVerb;
VerbMaker MakeConvertVerb;
VerbMaker MakeCompletionVerb;
VerbMaker MakeManualVerb;

namespace {

VerbMaker* const Makers[] = {
    MakeLoadVerb,    MakeTablesVerb,   MakeShowVerb,    MakeDumpVerb,       MakeModesVerb, MakeRotorsVerb,
    MakeOrderVerb,   MakePolygonsVerb, MakeNameVerb,    MakeIdVerb,         MakeFindVerb,  MakeKeyVerb,
    MakeExplainVerb, MakeIntervalVerb, MakeTriggerVerb, MakeCheckVerb,      MakeDiffVerb,  MakeHtmlReportVerb,
    MakeMergeVerb,   MakeFormatVerb,   MakeConvertVerb, MakeCompletionVerb, MakeManualVerb};

} // namespace

char const* const ExitCodeHelp =
    "Exit codes:\n"
    "  0  clean\n"
    "  1  loaded, but with findings: faults in the data were reported\n"
    "  2  nothing loaded: wrong arguments, an unreadable file, a refused version";

std::vector<std::unique_ptr<Verb>> MakeVerbs() {
    std::vector<std::unique_ptr<Verb>> verbs;
    for (VerbMaker* const make : Makers)
        verbs.push_back(make());
    if (auto verb = MakeDatabaseVerb())
        verbs.push_back(std::move(verb));
    return verbs;
}

} // namespace paramdb::tools
