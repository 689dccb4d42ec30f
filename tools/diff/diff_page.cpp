#include "tools/diff/diff_words.h"
#include "tools/diff/diff_writers.h"
#include "tools/report.h"
#include "tools/short_number.h"
#include "tools/table_names.h"

#include <ostream>

namespace paramdb::tools {
namespace {

constexpr char const* Style = R"(
:root { color-scheme: light dark; --ink: #1b1f24; --paper: #ffffff; --line: #d0d7de; --head: #eaeef2; --soft: #59636e;
  --added: #dafbe1; --removed: #ffebe9; --changed: #fff8c5; }
@media (prefers-color-scheme: dark) { :root { --ink: #e6edf3; --paper: #0d1117; --line: #3d444d; --head: #21262d;
  --soft: #9198a1; --added: #12361f; --removed: #4b1a1a; --changed: #3b2f0b; } }
body { margin: 2rem auto; max-width: 80rem; padding: 0 1rem; color: var(--ink); background: var(--paper);
  font: 15px/1.45 system-ui, sans-serif; }
h1 { font-size: 1.5rem; } h2 { font-size: 1.25rem; margin-top: 2.5rem; } h3 { font-size: 1rem; margin: 2rem 0 .5rem; }
a { color: inherit; }
table { border-collapse: collapse; width: 100%; }
th, td { border: 1px solid var(--line); padding: .25rem .5rem; text-align: left; vertical-align: top;
  overflow-wrap: anywhere; }
thead th { background: var(--head); }
td.number, th.number { text-align: right; white-space: nowrap; font-variant-numeric: tabular-nums; }
td.mark { width: 5.5rem; } td.key { width: 45%; }
.added td.mark { background: var(--added); }
.removed td.mark { background: var(--removed); }
.changed td.mark { background: var(--changed); }
.verdict { font-size: 1.1rem; font-weight: 600; }
.column, .name, .more { color: var(--soft); } del .name, ins .name { color: inherit; }
.item { display: inline-block; margin-right: 1rem; }
td > div + div { margin-top: .15rem; }
del { background: var(--removed); text-decoration: none; }
ins { background: var(--added); text-decoration: none; }
@media print { :root { --ink: #000000; --paper: #ffffff; --line: #999999; --head: #eeeeee; --soft: #333333; --added: #ffffff;
  --removed: #ffffff; --changed: #ffffff; color-scheme: light; }
  body { margin: 0; max-width: none; padding: 0; font-size: 9pt; } tr { break-inside: avoid; }
  h2, h3 { break-after: avoid; } a { text-decoration: none; } del { text-decoration: line-through; } }
)";

std::string Escaped(std::string_view text) {
    std::string result;
    for (char const letter : text) {
        switch (letter) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += letter;
        }
    }
    return result;
}

std::string Html(ShownValue const& value) {
    std::string text = Escaped(value.text);
    if (!value.name.empty())
        text.append(" <span class=\"name\">").append(Escaped(value.name)).append("</span>");
    return text;
}

std::string Html(ShownField const& field) {
    std::string text = "<span class=\"item\"><span class=\"column\">";
    return text.append(field.column).append("</span> ").append(Html(field.value)).append("</span>");
}

std::string Html(ShownFields const& fields) {
    std::string text;
    for (ShownField const& field : fields)
        text += Html(field);
    return text;
}

std::string Html(ShownChange const& change) {
    std::string text = "<span class=\"column\">";
    return text.append(change.column)
        .append("</span> <del>")
        .append(Html(change.a))
        .append("</del> &rarr; <ins>")
        .append(Html(change.b))
        .append("</ins>");
}

// Each in a line of its own.
template <class List>
std::string Lines(List const& list) {
    std::string text;
    for (auto const& entry : list)
        text.append("<div>").append(Html(entry)).append("</div>");
    return text;
}

char const* Word(RowChange change) {
    switch (change) {
    case RowChange::Added:
        return "added";
    case RowChange::Removed:
        return "removed";
    case RowChange::Changed:
        break;
    }
    return "changed";
}

void PrintPageEntry(std::ostream& out, ShownEntry const& entry) {
    char const* const word = Word(entry.change);
    out << "<tr class=\"" << word << "\"><td class=\"mark\">" << word << "</td><td class=\"key\">"
        << Lines(entry.keys) << "</td><td>"
        << (entry.change == RowChange::Changed ? Lines(entry.changes) : Html(entry.fields)) << "</td></tr>\n";
}

void PrintTable(std::ostream& out, ShownTable const& table, std::string const& anchor) {
    out << "<h3 id=\"" << anchor << "\">" << Escaped(table.title)
        << "</h3>\n<table>\n<thead><tr><th scope=\"col\">Row</th><th scope=\"col\">Key</th>"
           "<th scope=\"col\">Fields, or from A to B</th></tr></thead>\n<tbody>\n";
    for (ShownEntry const& entry : table.entries)
        PrintPageEntry(out, entry);
    out << "</tbody>\n</table>\n";
    if (table.left_out > 0)
        out << "<p class=\"more\">" << Grouped(table.left_out) << " more; --limit 0 shows all</p>\n";
}

std::string Anchor(DifferencePart part, TableDifference const& table) {
    return (part == DifferencePart::Tables ? "table-" : "topic-") + std::to_string(table.place + 1);
}

void PrintSide(std::ostream& out, char const* side, Snapshot const& snapshot) {
    out << "<tr><th scope=\"row\">" << side << "</th><td>" << Escaped(FileNames(snapshot.files))
        << "</td><td>" << snapshot.major << '.' << snapshot.minor << "</td><td class=\"number\">"
        << Grouped(snapshot.RowCount()) << "</td></tr>\n";
}

void PrintSummary(std::ostream& out, Comparison const& comparison) {
    out << "<table>\n<thead><tr><th scope=\"col\">Side</th><th scope=\"col\">Files</th>"
           "<th scope=\"col\">Version</th><th scope=\"col\" "
           "class=\"number\">Rows</th></tr></thead>\n<tbody>\n";
    PrintSide(out, "A", *comparison.a);
    PrintSide(out, "B", *comparison.b);
    out << "</tbody>\n</table>\n<p class=\"verdict\">" << Verdict(comparison) << "</p>\n";
    if (comparison.IsEqual())
        return;
    std::string list;
    for (TableDifference const& topic : comparison.answers)
        list.append("<li><a href=\"#")
            .append(Anchor(DifferencePart::Answers, topic))
            .append("\">")
            .append(TopicSentence(AnswerTopics()[topic.place], topic.counts))
            .append("</a></li>\n");
    for (std::string const& sentence : {LimitSentence(comparison.Limits()), WhyNoAnswers(comparison)})
        if (!sentence.empty())
            list.append("<li>").append(sentence).append("</li>\n");
    if (!list.empty())
        out << "<ul>\n" << list << "</ul>\n";
}

void PrintPageHeader(std::ostream& out, Comparison const& comparison) {
    if (comparison.header.empty())
        return;
    out << "<h2>Before the tables</h2>\n<table>\n<thead><tr><th scope=\"col\">Entry</th><th "
           "scope=\"col\">A</th>"
           "<th scope=\"col\">B</th></tr></thead>\n<tbody>\n";
    for (HeaderDifference const& difference : comparison.header)
        out << "<tr><th scope=\"row\">" << HeaderName(difference) << "</th><td><del>"
            << Html(HeaderValue(difference.a)) << "</del></td><td><ins>" << Html(HeaderValue(difference.b))
            << "</ins></td></tr>\n";
    out << "</tbody>\n</table>\n";
}

void PrintPageOverview(std::ostream& out, Comparison const& comparison) {
    if (comparison.tables.empty())
        return;
    out << "<h2>Tables</h2>\n<table>\n<thead><tr><th scope=\"col\">Table</th>";
    for (char const* const head : {"Rows in A", "Rows in B", "Changed", "Added", "Removed"})
        out << "<th scope=\"col\" class=\"number\">" << head << "</th>";
    out << "</tr></thead>\n<tbody>\n";
    for (TableDifference const& table : comparison.tables) {
        auto const& [added, removed, changed] = table.counts;
        out << "<tr><td><a href=\"#" << Anchor(DifferencePart::Tables, table) << "\">"
            << Escaped(TagOf(Catalogue()[table.place])) << "</a></td>";
        for (std::size_t const number : {table.a->size(), table.b->size(), changed, added, removed})
            out << "<td class=\"number\">" << Grouped(number) << "</td>";
        out << "</tr>\n";
    }
    out << "</tbody>\n</table>\n";
}

void PrintTables(std::ostream& out, Comparison const& comparison, std::vector<TableDifference> const& tables,
                 DifferencePart part, std::size_t limit) {
    for (TableDifference const& table : tables)
        PrintTable(out, ShowTable(comparison, table, part, limit), Anchor(part, table));
}

} // namespace

void PrintDiffPage(std::ostream& out, Comparison const& comparison, AnswerOptions const& options,
                   std::size_t limit) {
    out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<title>Differences of parameter files</title>\n<style>"
        << Style << "</style>\n</head>\n<body>\n<h1>Differences of parameter files</h1>\n";
    PrintSummary(out, comparison);
    PrintPageHeader(out, comparison);
    PrintPageOverview(out, comparison);
    PrintTables(out, comparison, comparison.tables, DifferencePart::Tables, limit);
    if (!comparison.answers.empty()) {
        out << "<h2>What follows, with rotors at " << ShortNumber(options.speed) << " Hz</h2>\n";
        PrintTables(out, comparison, comparison.answers, DifferencePart::Answers, limit);
    }
    out << "</body>\n</html>\n";
}

} // namespace paramdb::tools
