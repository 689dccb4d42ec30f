#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/lake_text.h>
#include <paramdb/storage/unquote.h>
#include <paramdb/storage/white_space.h>

#include "tools/convert/cell_text.h"
#include "tools/convert/forms.h"
#include "tools/convert/row_collector.h"
#include "tools/convert/row_line.h"
#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/lake_outline.h"
#include "tools/rewrite/message_list.h"
#include "tools/table_names.h"

namespace paramdb::tools {
namespace {

std::wstring Wide(std::string_view bytes) {
    return LakeText(bytes).wide();
}

std::string Shown(std::string_view bytes) {
    return Printable(Wide(bytes));
}

std::string_view TrimFront(std::string_view text) {
    while (!text.empty() && IsWhiteSpace(text.front()))
        text.remove_prefix(1);
    return text;
}

class LakeReader {
public:
    LakeReader(std::string_view bytes, ReadResult& result) : m_outline(OutlineOf(bytes)), m_result(result) {
        FillLake(m_lake, bytes);
    }

    void Read() {
        for (std::size_t line = 0; line < m_outline.lines.size(); line = m_outline.Next(line))
            if (!ReadTopLine(line))
                break;
        ReadValues();
        AddComments();
        MessageList const unseen;
        m_result.tables = ReadTables(m_lake);
    }

private:
    OutlineLine const& Line(std::size_t line) const { return m_outline.lines[line]; }

    void Lose(LossKind kind, std::size_t line, std::string text) {
        m_result.losses.push_back({kind, {":" + std::to_string(line + 1), std::move(text)}});
    }

    // A line of the top level. False where nothing behind it is read.
    bool ReadTopLine(std::size_t line) {
        OutlineLine const& current = Line(line);
        if (current.kind == LineKind::Unread) {
            LoseUnread(line);
            return false;
        }
        if (LoseSuperseded(line))
            return true;
        std::wstring const key = Wide(current.parts.key);
        switch (current.kind) {
        case LineKind::Comment:
        case LineKind::Closer:
            CountComment(line);
            break;
        case LineKind::Row:
            Lose(LossKind::Unknown, line, "the line stands in no section");
            break;
        case LineKind::Named:
            if (!VersionOfKey(key) && !TextOfKey(key))
                Lose(LossKind::Unknown, line, "nothing reads the value of " + Shown(current.parts.key));
            break;
        case LineKind::Opener:
            if (TableDescription const* const table = TableOfTag(key))
                ReadTable(*table, line);
            else
                Lose(LossKind::Unknown, line,
                     key.empty() ? "nothing reads a section without a key"
                                 : "nothing reads the section " + Shown(current.parts.key));
            break;
        case LineKind::Blank:
        case LineKind::Unread:
            break;
        }
        return true;
    }

    void ReadTable(TableDescription const& table, std::size_t opener) {
        auto& rows = m_result.parameters.tables[static_cast<std::size_t>(&table - Catalogue().data())];
        RowCollector collector(table, rows);
        std::string const tag = TagOf(table);
        for (std::size_t line = opener + 1; line < m_outline.End(opener); line = m_outline.Next(line)) {
            if (LoseSuperseded(line))
                continue;
            OutlineLine const& current = Line(line);
            if (!current.parts.key.empty()) {
                Lose(LossKind::Unknown, line,
                     tag + " does not read a line with a key: " + Shown(current.parts.key));
                continue;
            }
            if (current.kind == LineKind::Opener)
                Lose(LossKind::Unknown, line, tag + " does not read the section in it");
            CountComment(line);
            std::string_view rest = current.parts.value;
            if (collector.Add(rest) == RowCollector::Result::Row)
                LoseSurplus(line, tag, TrimFront(rest));
            else if (current.kind != LineKind::Opener)
                Lose(LossKind::Faulty, line, tag + " cannot read the row");
        }
        if (std::size_t const closer = Line(opener).closer; closer != NoLine)
            CountComment(closer);
    }

    void LoseSurplus(std::size_t line, std::string const& tag, std::string_view rest) {
        if (!rest.empty())
            Lose(LossKind::Surplus, line, tag + " does not read the end of the row: " + Shown(rest));
    }

    // True for a line, with the section that it may open, that another one hides.
    bool LoseSuperseded(std::size_t line) {
        OutlineLine const& current = Line(line);
        if (current.superseded_by == NoLine)
            return false;
        bool const opens = current.kind == LineKind::Opener;
        Lose(LossKind::Superseded, line,
             (opens ? "the section " : "the value of ") + Shown(current.parts.key) + " gives way to line " +
                 std::to_string(current.superseded_by + 1));
        return true;
    }

    void LoseUnread(std::size_t first) {
        std::size_t count = 0;
        for (std::size_t line = first; line < m_outline.lines.size(); ++line)
            count += TrimFront(Line(line).bytes).empty() ? 0 : 1;
        if (count > 0)
            Lose(LossKind::Unknown, first,
                 "nothing is read behind line " + std::to_string(m_outline.stray + 1) +
                     ", which closes no section");
    }

    // The name of its section behind a closing line is no comment, since every writer puts it there.
    void CountComment(std::size_t line) {
        OutlineLine const& current = Line(line);
        bool is_comment = current.kind == LineKind::Comment;
        if (current.kind == LineKind::Closer) {
            std::string_view const comment = current.parts.comment;
            std::string_view const key = KeyClosedBy(line);
            is_comment = current.parts.value != "}" || (!comment.empty() && comment != key);
        }
        if (is_comment && m_comments++ == 0)
            m_first_comment = line;
    }

    std::string_view KeyClosedBy(std::size_t closer) const {
        for (std::size_t line = closer; line > 0;)
            if (Line(--line).closer == closer)
                return Line(line).parts.key;
        return {};
    }

    void AddComments() {
        if (m_comments == 0)
            return;
        Lose(LossKind::Comments, m_first_comment,
             m_comments == 1 ? "a comment" : Grouped(m_comments) + " comments, the first of them here");
        m_result.losses.back().count = m_comments;
    }

    // The values that a load looks up. The keys are not hidden here: the lookups have found their lines.
    void ReadValues() {
        for (std::size_t part = 0; part < VersionNames.size(); ++part)
            if (auto const node = m_lake[VersionNames[part].key]; node.found()) {
                std::int32_t const number = node.number();
                m_result.parameters.version[part] = number;
                auto const whole = NumberOf(FieldType::Int, node.text());
                if (whole != ParamDb::cell_t(number))
                    LoseValue(VersionNames[part].key, "is read as " + std::to_string(number));
            }
        for (std::size_t text = 0; text < TextNames.size(); ++text)
            if (auto const node = m_lake[TextNames[text].key]; node.found()) {
                std::wstring const value = node.text();
                std::wstring const read = Unquote(value);
                m_result.parameters.texts[text] = read;
                if (value != read && value != L'"' + read && value != L'"' + read + L'"')
                    LoseValue(TextNames[text].key, "is read as \"" + Printable(read) + "\"");
            }
    }

    void LoseValue(std::wstring const& key, std::string const& text) {
        for (std::size_t line = 0; line < m_outline.lines.size(); line = m_outline.Next(line))
            if (Wide(Line(line).parts.key) == key && Line(line).superseded_by == NoLine) {
                Lose(LossKind::Surplus, line,
                     "the value of " + Printable(key) + ", " + Shown(Line(line).parts.value) + ", " + text);
                return;
            }
    }

    LakeOutline m_outline;
    ReadResult& m_result;
    CLake m_lake;
    std::size_t m_comments = 0;
    std::size_t m_first_comment = 0;
};

// Collects the text of a lake.
class LakeWriter {
public:
    explicit LakeWriter(std::vector<std::string>& faults) : m_faults(faults) {}

    std::string Write(ParameterSet const& parameters) {
        for (std::size_t part = 0; part < VersionNames.size(); ++part)
            if (parameters.version[part])
                AddValue(VersionNames[part].key, std::to_wstring(*parameters.version[part]));
        EndPart();
        for (std::size_t text = 0; text < TextNames.size(); ++text) {
            if (!parameters.texts[text])
                continue;
            std::string reason;
            if (auto const value = TextValue(*parameters.texts[text], reason))
                AddValue(TextNames[text].key, *value);
            else
                m_faults.push_back(std::string(TextNames[text].name) + ": " + reason);
        }
        EndPart();
        for (auto const& [table, rows] : parameters.tables)
            AddTable(table, rows);
        return std::move(m_text);
    }

private:
    void AddLine(std::wstring const& line) {
        m_needs_blank = true;
        for (wchar_t const unit : line)
            m_text += static_cast<char>(static_cast<unsigned char>(unit));
        m_text += LineEnd;
    }
    void AddValue(std::wstring const& key, std::wstring const& value) { AddLine(key + L": " + value); }
    // A blank line between parts that are there.
    void EndPart() {
        if (m_needs_blank)
            m_text += LineEnd;
        m_needs_blank = false;
    }

    void AddTable(std::size_t table, std::vector<ParamDb::row_t> const& rows) {
        TableDescription const& description = Catalogue()[table];
        EndPart();
        AddLine(std::wstring(description.tag) + L": {");
        RowLineWriter writer(description, LineForm::Lake);
        for (std::size_t row = 0; row < rows.size(); ++row) {
            std::string reason;
            std::size_t column = 0;
            if (auto const line = writer.Write(rows[row], reason, column))
                AddLine(L'\t' + *line);
            else
                m_faults.push_back(
                    (column < rows[row].size() ? CellPlace(table, row, column) : RowPlace(table, row)) +
                    ": " + reason);
        }
        AddLine(std::wstring(L"} ; ") + description.tag);
    }

    std::vector<std::string>& m_faults;
    std::string m_text;
    bool m_needs_blank = false;
};

} // namespace

ReadResult ReadLakeForm(std::string_view bytes) {
    ReadResult result;
    if (auto fault = ParameterFileFault(bytes); !fault.empty())
        result.faults.push_back({"", std::move(fault)});
    else
        LakeReader(bytes, result).Read();
    return result;
}

std::string WriteLakeForm(ParameterSet const& parameters, std::vector<std::string>& faults) {
    MessageList const unseen;
    return LakeWriter(faults).Write(parameters);
}

} // namespace paramdb::tools
