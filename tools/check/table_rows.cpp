// The rows of tables: what a load leaves out, and what it reads otherwise than it looks.
#include <paramdb/tables/load_progress.h>

#include "tools/check/known_keys.h"
#include "tools/check/load_messages.h"
#include "tools/check/row_scan.h"
#include "tools/check/rules.h"
#include "tools/check/wording.h"
#include "tools/row_buffer.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace paramdb::tools::check {
namespace {

// The text of a row as the bytes of its file; empty for one that has none.
std::string_view BytesOf(CLakeNode const& line) {
    return line.value_text().Visit([]<class View>(View text) {
        if constexpr (std::is_same_v<View, std::string_view>)
            return text;
        else
            return std::string_view();
    });
}

bool HasFinding(RowScan const& scan, std::size_t columns) {
    return scan.fault != RowScan::Fault::None || scan.fields.size() < columns || !scan.surplus.empty() ||
           scan.glued || !scan.open_quote.empty() || !scan.at_limit.empty() || scan.nan;
}

char const* TypeWords(FieldType type) {
    switch (type) {
    case FieldType::Int:
        return "a whole number of 32 bits";
    case FieldType::Unsigned:
        return "a whole number of 32 bits without a sign";
    case FieldType::Int64:
        return "a whole number of 64 bits";
    case FieldType::Float:
        return "a number of single precision";
    case FieldType::Double:
        return "a number of double precision";
    case FieldType::Text:
        break;
    }
    return "a text";
}

constexpr char const* DecimalHint = "a decimal point is a point, and blanks stand between fields";

// Goes through all lines of a table as a load does.
class TableCheck {
public:
    TableCheck(CheckContext const& context, FindingList& findings, CheckedTable const& table,
               RowMessages& messages)
        : m_context(context), m_findings(findings), m_table(table), m_messages(messages),
          m_types(FieldTypesOf(table.Description())), m_row(table.Description()) {}

    void Run() {
        Silence const silence;
        CLakeNode const& section = *m_table.Section();
        for (auto line = section.begin_unnamed(); line != section.end_unnamed(); ++line)
            CheckLine(**line);
    }

private:
    std::string ColumnName(std::size_t column) const {
        TableDescription const& table = m_table.Description();
        std::size_t const keys = table.key_columns.size();
        return std::string(column < keys ? table.key_columns[column].name
                                         : table.row_columns[column - keys].name);
    }

    void CheckLine(CLakeNode const& line) {
        std::string_view const text = BytesOf(line);
        RowScan const scan = ScanRow(text, m_types);
        bool const is_read = m_row.Read(text);
        CLakeNode const* const first = is_read ? FirstOf(line) : nullptr;
        bool const is_added = is_read && (first == nullptr || !m_table.Description().has_unique_keys);
        if (text.empty()) {
            ReportNoRow(line, is_added);
            return;
        }
        if (!is_read) {
            m_messages.Explain(m_table.Description().tag, line.value_text().wide());
            ReportFault(line, scan);
        } else {
            if (!is_added)
                ReportDuplicate(line, scan, *first);
            if (scan.fields.size() < m_types.size())
                ReportShort(text, scan);
        }
        if (HasFinding(scan, m_types.size()))
            ReportRest(scan);
        m_last = &line;
    }

    // The line that had the key first; null if this one has.
    CLakeNode const* FirstOf(CLakeNode const& line) {
        PackFields(m_row.Key(), m_packed);
        auto const [place, is_new] = m_first_of.try_emplace(m_packed, &line);
        return is_new ? nullptr : place->second;
    }

    void ReportNoRow(CLakeNode const& line, bool is_added) {
        std::string const what = line.comment_text().empty() ? "the blank line" : "the comment";
        if (is_added)
            m_findings
                .Add("P203", m_context.PlaceOf(line),
                     what + " is read as a row of " + m_table.Tag() + " with the key " +
                         ShownKey(m_row.Key()))
                .Hint("put it outside of the section");
        else
            m_findings
                .Add("P202", m_context.PlaceOf(line),
                     what + " is read as a row of " + m_table.Tag() +
                         ", which repeats the key of the line before it")
                .Hint("put it outside of the section");
    }

    void ReportDuplicate(CLakeNode const& line, RowScan const& scan, CLakeNode const& first) {
        std::size_t const keys = m_table.Description().key_columns.size();
        std::string_view const last = scan.fields[std::min(keys, scan.fields.size()) - 1];
        std::string_view const text = BytesOf(line);
        Place place = m_context.PlaceOf(text);
        place.length = static_cast<std::size_t>(last.data() + last.size() - text.data());
        bool const same = BytesOf(first) == text;
        m_findings
            .Add("P204", place,
                 "the row is left out: " + m_table.Tag() + " has the key " + ShownKey(m_row.Key()) +
                     " already" + (same ? ", in the same words" : ""))
            .Hint(same ? "leave one of the two lines out"
                       : "leave one of the two lines out, or give one another key")
            .Relate(m_context.PlaceOf(first), "the row that counts");
    }

    void ReportFault(CLakeNode const& line, RowScan const& scan) {
        std::size_t const column = scan.fields.size();
        std::string const name = ColumnName(column);
        std::string_view const text = BytesOf(line);
        if (scan.fault == RowScan::Fault::TooLong) {
            m_findings
                .Add("P206", m_context.PlaceOf(scan.at_fault),
                     "the row is left out: where the text " + name + " begins, " + std::to_string(TextLimit) +
                         " or more characters of the line are left")
                .Hint("shorten the texts of the row");
            return;
        }
        bool const is_large = scan.fault == RowScan::Fault::OutOfRange;
        std::string const reason = Quoted(scan.at_fault) + (is_large ? " is too large for " : " is not ") +
                                   TypeWords(m_types[column]);
        auto& finding =
            m_findings.Add("P205", m_context.PlaceOf(scan.at_fault),
                           "the row is left out: " + reason + ", as the column " + name + " takes it");
        if (column == 0 && IsForeignComment(text))
            finding.Hint("a comment begins with a semicolon and stands outside of the section");
        else if (scan.at_fault.starts_with('"'))
            finding.Hint("see whether a field before it is missing");
        else if (scan.at_fault.starts_with(','))
            finding.Hint(DecimalHint);
        else
            finding.Hint("the columns are " + ColumnList());
    }

    static bool IsForeignComment(std::string_view text) {
        for (std::string_view const mark : {"#", "//", "--", "%", "'", "*"})
            if (text.starts_with(mark))
                return true;
        return false;
    }

    std::string ColumnList() const {
        std::string list;
        for (std::size_t column = 0; column < m_types.size(); ++column)
            list += (column == 0 ? "" : " ") + ColumnName(column);
        return list;
    }

    void ReportShort(std::string_view text, RowScan const& scan) {
        std::size_t const first = scan.fields.size();
        std::string kept;
        std::string emptied;
        for (std::size_t column = first; column < m_types.size(); ++column) {
            std::string& list = m_types[column] == FieldType::Text ? emptied : kept;
            list += (list.empty() ? "" : ", ") + ColumnName(column);
            if (m_types[column] != FieldType::Text)
                list += " = " + ShownKey(m_row.Columns(column, 1));
        }
        bool const is_kept = !kept.empty() && m_last != nullptr;
        std::string rest;
        if (!kept.empty())
            rest = (is_kept ? "; the line before gives " : "; without a line before it stays ") + kept;
        if (!emptied.empty())
            rest += "; " + emptied + (emptied.find(',') == std::string::npos ? " is" : " are") + " empty";
        auto& finding = m_findings.Add("P208", m_context.PlaceOf(text.substr(text.size())),
                                       "the row has only " + std::to_string(first) + " of " +
                                           Counted(m_types.size(), "field") + rest);
        finding.Hint("write all fields");
        if (is_kept)
            finding.Relate(m_context.PlaceOf(*m_last), "the line before");
    }

    void ReportRest(RowScan const& scan) {
        if (!scan.surplus.empty()) {
            auto& finding = m_findings.Add("P209", m_context.PlaceOf(scan.surplus),
                                           "the row has all its " + Counted(m_types.size(), "field") +
                                               " before this, which is not read");
            if (scan.surplus.starts_with(';'))
                finding.Hint("a row takes no comment behind it");
            else if (scan.surplus.starts_with(','))
                finding.Hint(DecimalHint);
            else if (m_types.back() == FieldType::Text)
                finding.Hint("a text with a blank stands in quotes");
            else
                finding.Hint("the columns are " + ColumnList());
        }
        if (scan.glued && (*scan.glued + 1 < scan.fields.size() || scan.fault != RowScan::Fault::None)) {
            std::size_t const column = *scan.glued;
            std::string_view const field = scan.fields[column];
            char const* const end =
                field.data() + field.size() + (m_types[column] == FieldType::Text ? 1 : 0);
            m_findings
                .Add("P210", m_context.PlaceOf(std::string_view(end, 1)),
                     "the field " + ColumnName(column) + " ends here, and " + ColumnName(column + 1) +
                         " begins without a blank")
                .Hint(m_types[column] == FieldType::Text
                          ? "put a blank behind the quote"
                          : "the column takes " + std::string(TypeWords(m_types[column])));
        }
        if (!scan.open_quote.empty())
            m_findings.Add("P110", m_context.PlaceOf(scan.open_quote.substr(0, 1)), UnclosedQuote)
                .Hint("put a quote behind the text");
        if (!scan.at_limit.empty())
            m_findings
                .Add("P207", m_context.PlaceOf(scan.at_limit),
                     "the text is as long as one can be: it may have been cut, and one character more loses "
                     "the row")
                .Hint("shorten the text");
        if (scan.nan)
            m_findings
                .Add("P211", m_context.PlaceOf(scan.fields[*scan.nan]),
                     ColumnName(*scan.nan) + " is not a number")
                .Hint("write a number");
    }

    CheckContext const& m_context;
    FindingList& m_findings;
    CheckedTable const& m_table;
    RowMessages& m_messages;
    std::vector<FieldType> m_types;
    RowBuffer m_row;
    CLakeNode const* m_last = nullptr; // the last line that is no comment
    std::string m_packed;
    std::unordered_map<std::string, CLakeNode const*> m_first_of;
};

// Whether there is nothing to tell about any row. Quick, since most tables of most files are fine.
bool IsFine(CheckContext const& context, CheckedTable const& table) {
    CLakeNode const& section = *table.Section();
    std::vector<FieldType> const types = FieldTypesOf(table.Description());
    RowProgress progress;
    for (auto line = section.begin_unnamed(); line != section.end_unnamed(); ++line) {
        progress.AddRow();
        std::string_view const text = BytesOf(**line);
        if (!IsPlainRow(text, types) && HasFinding(ScanRow(text, types), types.size()))
            return false;
    }
    // With as many rows as lines none was left out.
    return !context.IsRefused() && section.unnamed_size() == table.RowCount();
}

} // namespace

void CheckRows(CheckContext const& context, FindingList& findings) {
    RowMessages messages(context, findings);
    for (CheckedTable const& table : context.Tables())
        if (table.Section() != nullptr && !IsFine(context, table))
            TableCheck(context, findings, table, messages).Run();
}

void CheckNamedRows(CheckContext const& context, FindingList& findings) {
    for (OutlineSection const& section : context.Lines().sections) {
        if (!section.is_in_effect || TableOf(section.opener.node->key_text()) == nullptr)
            continue;
        for (OutlineLine const& line : section.named) {
            LakeText const key = line.node->key_text();
            // The colon is the first thing behind the key but for blanks.
            std::string_view const bytes = context.Files()[line.place.file].bytes;
            Place place = context.PlaceOf(*line.node);
            std::size_t const begin =
                context.Files()[line.place.file].line_begins[place.line - 1] + place.column - 1;
            std::size_t const colon = bytes.find(':', begin + key.size());
            place.column += colon - begin;
            place.length = 1;
            findings
                .Add("P201", place,
                     "the colon makes a key of this line, so that " +
                         Shortened(section.opener.node->key_text()) + " has no such row")
                .Hint("put the text with the colon in quotes");
        }
    }
}

} // namespace paramdb::tools::check
