// How sections open and close, and what stands outside of them.
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/report.h"

#include <algorithm>

namespace paramdb::tools::check {
namespace {

std::string NameOf(OutlineSection const& section) {
    CLakeNode const& opener = *section.opener.node;
    return opener.is_named() ? Shortened(opener.key_text()) : "without a key";
}

void CheckEnds(CheckContext const& context, FindingList& findings) {
    auto const& sections = context.Lines().sections;
    for (OutlineSection const& section : sections) {
        if (section.closer.node != nullptr)
            continue;
        bool const takes_files = section.opener.place.file + 1 < context.Files().size();
        auto& finding = findings
                            .Add("P105", context.PlaceOf(*section.opener.node),
                                 "the section " + NameOf(section) + " is never closed" +
                                     (takes_files ? ", and takes in the files that follow" : ""))
                            .Hint("put a line \"}\" behind its last row");
        if (!section.sections.empty())
            finding.Relate(context.PlaceOf(*sections[section.sections.front()].opener.node),
                           "the first section that is taken for a part of it");
    }
}

void CheckNesting(CheckContext const& context, FindingList& findings) {
    auto const& sections = context.Lines().sections;
    for (OutlineSection const& section : sections) {
        if (!section.IsTopLevel())
            continue;
        if (!section.opener.node->is_named()) {
            findings
                .Add("P107", context.PlaceOf(*section.opener.node),
                     "the section has no key, so nothing looks for its rows")
                .Hint("put the tag of a table and a colon before the bracket, in the same line");
            continue;
        }
        if (section.sections.empty())
            continue;
        OutlineSection const& first = sections[section.sections.front()];
        std::size_t const more = section.sections.size() - 1;
        std::string const others = more == 0 ? ""
                                             : std::string(", and so ") + (more == 1 ? "does " : "do ") +
                                                   Counted(more, "section") + " behind it";
        findings
            .Add("P106", context.PlaceOf(*first.opener.node),
                 "the section " + NameOf(first) + " stands inside of " + NameOf(section) +
                     ", where nothing looks for it" + others)
            .Hint("close " + NameOf(section) + " with a line \"}\" before it")
            .Relate(context.PlaceOf(*section.opener.node), "the section around it begins here");
    }
}

void CheckClosers(CheckContext const& context, FindingList& findings) {
    Outline const& outline = context.Lines();
    std::string message = "the bracket closes nothing and ends the data";
    if (outline.lines_behind_end > 0)
        message += ": " + Counted(outline.lines_behind_end, "line") + " behind it " +
                   (outline.lines_behind_end == 1 ? "is" : "are") + " never read";
    for (OutlineLine const& closer : outline.stray_closers) {
        findings.Add("P108", context.PlaceOf(*closer.node), message).Hint("leave the line out");
        message = "the bracket closes nothing";
    }
    for (OutlineLine const& closer : outline.closers)
        findings
            .Add("P109", context.PlaceOf(*closer.node),
                 "the line closes the section, and what stands in it is not read")
            .Hint("leave the bracket out if the line is a row; a comment behind it needs a semicolon");
}

std::string HintForLoose(LakeText text) {
    std::wstring const line = text.wide();
    for (std::wstring_view const mark : {L"#", L"//", L"--", L"%", L"'"})
        if (line.starts_with(mark))
            return "a comment begins with a semicolon";
    std::size_t const bracket = line.find(L'>');
    if (line.starts_with(L'<') && bracket != std::wstring::npos)
        return "put a colon behind the key: \"" +
               Shortened(std::wstring_view(line).substr(0, line.rfind(L'>') + 1)) + ": ...\"";
    return "put it into the section of its table, or a semicolon before it";
}

// Lines that stand one behind the other are one finding.
void CheckLooseLines(CheckContext const& context, FindingList& findings) {
    auto const& loose = context.Lines().loose;
    for (std::size_t first = 0; first < loose.size();) {
        std::size_t last = first + 1;
        while (last < loose.size() && loose[last].place.file == loose[first].place.file &&
               loose[last].place.line == loose[first].place.line + (last - first))
            ++last;
        std::size_t const count = last - first;
        OutlineLine const& line = loose[first];
        first = last;
        if (line.place.line == 1 && HasByteOrderMark(context.Files()[line.place.file].bytes))
            continue; // told as such
        std::string const message =
            count == 1 ? "the line stands outside of any section, where nothing reads it"
                       : Counted(count, "line") +
                             " from here on stand outside of any section, where nothing reads them";
        findings.Add("P113", context.PlaceOf(*line.node), message)
            .Hint(HintForLoose(line.node->value_text()));
    }
}

} // namespace

void CheckSections(CheckContext const& context, FindingList& findings) {
    CheckEnds(context, findings);
    CheckNesting(context, findings);
    CheckClosers(context, findings);
    CheckLooseLines(context, findings);
}

} // namespace paramdb::tools::check
