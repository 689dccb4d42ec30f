#include "tools/check/check_report.h"

#include <paramdb/storage/lake_text.h>

#include "tools/check/wording.h"
#include "tools/colour.h"
#include "tools/quiet.h"
#include "tools/report.h"

#include <algorithm>
#include <ostream>

namespace paramdb::tools::check {
namespace {

Tone ToneOf(Severity severity) {
    switch (severity) {
    case Severity::Error:
        return Tone::Error;
    case Severity::Warning:
        return Tone::Warning;
    case Severity::Note:
        break;
    }
    return Tone::Note;
}

// A line as it is shown under a finding, with the mark. Tabs become blanks, so that the mark stands right,
// and of a long line a part is shown.
void PrintSource(std::ostream& out, std::string_view line, Place const& place) {
    constexpr std::size_t width = 100;
    constexpr std::size_t before = 40;
    std::wstring text = LakeText(line).wide();
    std::replace(text.begin(), text.end(), L'\t', L' ');
    std::size_t begin = 0;
    std::size_t const column = place.column - 1;
    if (text.size() > width && column > width - before)
        begin = std::min(column - before, text.size() - width);
    std::wstring_view const window = std::wstring_view(text).substr(begin, width);
    std::string const number = std::to_string(place.line);
    std::string const left = begin > 0 ? "..." : "";
    std::string const right = begin + window.size() < text.size() ? "..." : "";
    std::size_t const at = std::min(column - begin, window.size());
    std::size_t const marked = std::max<std::size_t>(1, std::min(place.length, window.size() - at));
    out << "  " << number << " | " << left << Printable(window) << right << '\n'
        << "  " << std::string(number.size(), ' ') << " | " << std::string(left.size() + at, ' ')
        << Painted(Tone::Mark, '^' + std::string(marked - 1, '~')) << '\n';
}

std::string Shown(CheckContext const& context, Place const& place) {
    std::string text = context.FileName(place.file);
    if (place.line > 0)
        text += ':' + std::to_string(place.line) + ':' + std::to_string(place.column);
    return text + ": ";
}

void PrintSummary(std::ostream& out, CheckContext const& context, FindingCounts const& counts) {
    std::vector<std::string> parts;
    for (auto const& [count, noun] : {std::pair(counts.errors, "error"),
                                      std::pair(counts.warnings, "warning"), std::pair(counts.notes, "note")})
        if (count > 0)
            parts.push_back(Counted(count, noun));
    std::string found = "No findings";
    if (!parts.empty())
        found = "Found " + parts[0];
    for (std::size_t part = 1; part < parts.size(); ++part)
        found += (part + 1 == parts.size() ? " and " : ", ") + parts[part];
    std::size_t lines = 0;
    for (LineOrigins::File const& file : context.Files())
        lines += file.line_begins.size();
    out << found << " in " << Counted(context.LoadInfo().sources.files.size(), "file") << " with "
        << Counted(lines, "line") << '\n';
    if (context.IsRefused())
        out << "The version is refused, so that only the lines were checked\n";
}

} // namespace

FindingCounts CountFindings(std::vector<Finding> const& findings) {
    FindingCounts counts;
    for (Finding const& finding : findings) {
        counts.errors += finding.code->severity == Severity::Error ? 1 : 0;
        counts.warnings += finding.code->severity == Severity::Warning ? 1 : 0;
        counts.notes += finding.code->severity == Severity::Note ? 1 : 0;
    }
    return counts;
}

void PrintFindingsText(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings) {
    for (Finding const& finding : findings) {
        Place const& place = finding.place;
        Severity const severity = finding.code->severity;
        out << Shown(context, place) << Painted(ToneOf(severity), SeverityWord(severity)) << ' '
            << finding.code->code << ' ' << finding.message << '\n';
        if (place.line > 0)
            PrintSource(out, context.Files()[place.file].Line(place.line), place);
        if (!finding.hint.empty())
            out << "  hint: " << finding.hint << '\n';
        for (RelatedPlace const& related : finding.related)
            out << "  " << Shown(context, related.place) << related.text << '\n';
    }
    if (IsQuiet(out))
        return;
    if (!findings.empty())
        out << '\n';
    PrintSummary(out, context, CountFindings(findings));
}

void PrintFindings(std::ostream& out, CheckContext const& context, std::vector<Finding> const& findings,
                   CheckFormat format) {
    switch (format) {
    case CheckFormat::Text:
        PrintFindingsText(out, context, findings);
        break;
    case CheckFormat::Json:
        PrintFindingsJson(out, context, findings);
        break;
    case CheckFormat::Sarif:
        PrintFindingsSarif(out, context, findings);
        break;
    case CheckFormat::Github:
        PrintFindingsGithub(out, context, findings);
        break;
    }
}

} // namespace paramdb::tools::check
