#include "tools/colour.h"
#include "tools/diff/diff_words.h"
#include "tools/diff/diff_writers.h"
#include "tools/report.h"
#include "tools/short_number.h"
#include "tools/table_names.h"

#include <ostream>

namespace paramdb::tools {
namespace {

constexpr std::size_t LineWidth = 120;
constexpr std::string_view EntryIndent = "      ";
constexpr std::string_view KeyIndent = "          ";

// A line of pieces that goes on, indented, on the next one where it gets too long.
class LongLine {
public:
    LongLine(std::ostream& out, Tone tone, std::string_view begin, std::string_view indent)
        : m_out(out), m_tone(tone), m_indent(indent), m_line(begin) {}

    // The separator stays on the line before where a new one begins; there is room for the one to come.
    void Add(std::string_view separator, std::string_view piece) {
        m_line += separator;
        if (TextWidth(m_line) + TextWidth(piece) + 2 > LineWidth)
            Break();
        m_line.append(m_is_new || separator.empty() ? "" : " ").append(piece);
        m_is_new = false;
    }
    void Break() {
        if (m_is_new)
            return;
        m_out << Painted(m_tone, m_line) << '\n';
        m_line = m_indent;
        m_is_new = true;
    }
    void End() { m_out << Painted(m_tone, m_line) << '\n'; }

private:
    std::ostream& m_out;
    Tone m_tone;
    std::string_view m_indent;
    std::string m_line;
    bool m_is_new = false; // nothing stands in the line yet
};

std::string Text(ShownValue const& value) {
    return value.name.empty() ? value.text : value.text + " \"" + value.name + '"';
}

void AddKey(LongLine& line, ShownFields const& key) {
    for (ShownField const& field : key)
        line.Add(&field == key.data() ? "" : ",", std::string(field.column) + ' ' + Text(field.value));
}

// The separator between key and fields; a table with columns of the key alone has no fields.
void AddFields(LongLine& line, ShownFields const& fields) {
    for (ShownField const& field : fields)
        line.Add(&field == fields.data() ? ":" : ",", std::string(field.column) + ' ' + Text(field.value));
}

// Values that do not fit into a line have one each.
void AddChanges(LongLine& line, std::vector<ShownChange> const& changes) {
    for (ShownChange const& change : changes) {
        char const* const separator = &change == changes.data() ? ":" : ",";
        std::string const a = std::string(change.column) + ' ' + Text(change.a);
        std::string const b = "-> " + Text(change.b);
        if (EntryIndent.size() + TextWidth(a) + 1 + TextWidth(b) <= LineWidth) {
            line.Add(separator, a + ' ' + b);
        } else {
            line.Add(separator, a);
            line.Break();
            line.Add("", b);
        }
    }
}

void PrintEntry(std::ostream& out, ShownEntry const& entry) {
    char const* const mark = entry.change == RowChange::Added     ? "  + "
                             : entry.change == RowChange::Removed ? "  - "
                                                                  : "  ~ ";
    Tone const tone = entry.change == RowChange::Added     ? Tone::Added
                      : entry.change == RowChange::Removed ? Tone::Removed
                                                           : Tone::Changed;
    LongLine line(out, tone, mark, EntryIndent);
    if (entry.keys.size() == 1)
        AddKey(line, entry.keys.front());
    else
        line.Add("", "several rows");
    AddFields(line, entry.fields);
    AddChanges(line, entry.changes);
    line.End();
    if (entry.keys.size() == 1)
        return;
    for (ShownFields const& key : entry.keys) {
        LongLine row(out, tone, "        ", KeyIndent);
        AddKey(row, key);
        row.End();
    }
}

void PrintTable(std::ostream& out, ShownTable const& table) {
    out << '\n' << table.title << '\n';
    for (ShownEntry const& entry : table.entries)
        PrintEntry(out, entry);
    if (table.left_out > 0)
        out << "  ... " << Grouped(table.left_out) << " more; --limit 0 shows all\n";
}

void PrintHeader(std::ostream& out, Comparison const& comparison) {
    using enum TextTable::Align;
    if (comparison.header.empty())
        return;
    TextTable table({Left, Left, Left});
    table.Add({"Before the tables", "A", "B"});
    for (HeaderDifference const& difference : comparison.header)
        table.Add({HeaderName(difference), HeaderValue(difference.a).text, HeaderValue(difference.b).text});
    out << '\n';
    table.Print(out);
}

void PrintOverview(std::ostream& out, Comparison const& comparison) {
    using enum TextTable::Align;
    if (comparison.tables.empty())
        return;
    TextTable table({Left, Right, Right, Right, Right, Right});
    table.Add({"Table", "Rows in A", "Rows in B", "Changed", "Added", "Removed"});
    for (TableDifference const& difference : comparison.tables) {
        auto const& [added, removed, changed] = difference.counts;
        table.Add({TagOf(Catalogue()[difference.place]), Grouped(difference.a->size()),
                   Grouped(difference.b->size()), Grouped(changed), Grouped(added), Grouped(removed)});
    }
    out << '\n';
    table.Print(out);
}

} // namespace

void PrintDiffText(std::ostream& out, Comparison const& comparison, AnswerOptions const& options,
                   std::size_t limit) {
    out << "A  " << FileNames(comparison.a->files) << "\nB  " << FileNames(comparison.b->files) << "\n\n"
        << Verdict(comparison) << '\n';
    if (comparison.IsEqual())
        return;
    for (TableDifference const& topic : comparison.answers)
        out << "  " << TopicSentence(AnswerTopics()[topic.place], topic.counts) << '\n';
    if (std::string const limits = LimitSentence(comparison.Limits()); !limits.empty())
        out << "  " << limits << '\n';
    if (std::string const why = WhyNoAnswers(comparison); !why.empty())
        out << "  " << why << '\n';
    PrintHeader(out, comparison);
    PrintOverview(out, comparison);
    for (TableDifference const& table : comparison.tables)
        PrintTable(out, ShowTable(comparison, table, DifferencePart::Tables, limit));
    if (comparison.answers.empty())
        return;
    out << "\nWhat follows, with rotors at " << ShortNumber(options.speed) << " Hz\n";
    for (TableDifference const& topic : comparison.answers)
        PrintTable(out, ShowTable(comparison, topic, DifferencePart::Answers, limit));
}

} // namespace paramdb::tools
