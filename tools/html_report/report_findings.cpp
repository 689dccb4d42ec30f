#include "tools/html_report/report_findings.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/check/rules.h"
#include "tools/check/suppression.h"

namespace paramdb::tools {
namespace {

ReportFinding::Place PlaceOf(check::CheckContext const& context, check::Place const& place) {
    return {.file = context.LoadInfo().sources.files[place.file].name,
            .line = place.line,
            .column = place.column,
            .length = place.length};
}

ReportFinding ReportFindingOf(check::CheckContext const& context, check::Finding const& finding) {
    ReportFinding result{.severity = check::SeverityWord(finding.code->severity),
                         .code = std::string(finding.code->code),
                         .title = std::string(finding.code->title),
                         .place = PlaceOf(context, finding.place),
                         .message = finding.message,
                         .hint = finding.hint};
    if (finding.place.line > 0)
        result.source = ToUtf8(LakeText(context.Files()[finding.place.file].Line(finding.place.line)).wide());
    for (check::RelatedPlace const& related : finding.related)
        result.related.push_back({PlaceOf(context, related.place), related.text});
    return result;
}

} // namespace

std::vector<ReportFinding> FindingsOf(check::CheckContext const& context) {
    check::FindingList list;
    check::RunRules(context, list);
    std::vector<ReportFinding> findings;
    for (check::Finding const& finding : check::Suppress(context, list.Take()))
        findings.push_back(ReportFindingOf(context, finding));
    return findings;
}

} // namespace paramdb::tools
