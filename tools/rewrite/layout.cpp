#include "tools/rewrite/layout.h"

#include <paramdb/platform/core/line_end.h>
#include <paramdb/storage/lake_text.h>

#include "tools/rewrite/lake_outline.h"
#include "tools/rewrite/lake_proof.h"
#include "tools/rewrite/message_list.h"
#include "tools/rewrite/row_layout.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace paramdb::tools {
namespace {

// The line end that most lines have.
std::string_view LineEndOf(LakeOutline const& outline) {
    std::size_t two = 0;
    std::size_t one = 0;
    for (OutlineLine const& line : outline.lines) {
        if (line.bytes.ends_with("\r\n"))
            ++two;
        else if (line.bytes.ends_with('\n'))
            ++one;
    }
    return two > one ? "\r\n" : one > two ? "\n" : LineEnd;
}

bool ReadsAs(std::string const& text, LakeLine const& parts) {
    char const* next = text.data();
    char const* const end = next + text.size();
    if (next == end)
        return parts.key.empty() && parts.value.empty() && parts.comment.empty();
    LakeLine const line = TakeLine(next, end);
    return next == end && line.key == parts.key && line.value == parts.value && line.comment == parts.comment;
}

std::string CommentText(std::string_view comment) {
    if (comment.empty())
        return ";";
    // A row of semicolons stays one.
    return (comment.starts_with(';') ? ";" : "; ") + std::string(comment);
}

// A line of which no fields are known, without its indent.
std::string PlainText(OutlineLine const& line) {
    LakeLine const& parts = line.parts;
    std::string const value(parts.value);
    std::string text;
    if (!parts.key.empty())
        text = std::string(parts.key) + (value.empty() ? ":" : ": " + value);
    else if (line.kind == LineKind::Comment)
        text = CommentText(parts.comment);
    else
        text = value + (parts.comment.empty() ? "" : " ; " + std::string(parts.comment));
    // Behind a colon without a key a value can have colons and semicolons of its own.
    return ReadsAs(text, parts) ? text : ": " + value;
}

std::string_view WithoutLineEnd(std::string_view bytes) {
    if (bytes.ends_with('\n'))
        bytes.remove_suffix(1);
    while (bytes.ends_with('\r'))
        bytes.remove_suffix(1);
    return bytes;
}

// The table of which the lines of this section are rows; null if they are none.
TableDescription const* TableOf(LakeOutline const& outline, std::size_t opener) {
    if (opener == NoLine || outline.lines[opener].parent != NoLine)
        return nullptr;
    return TableOfTag(LakeText(outline.lines[opener].parts.key).wide());
}

// Goes through the lines of a file and gives each its canonical form.
class Formatter {
public:
    explicit Formatter(LakeOutline const& outline) : m_outline(outline) {}

    std::string TextOf(std::size_t number) {
        OutlineLine const& line = m_outline.lines[number];
        if (line.kind == LineKind::Unread)
            return std::string(WithoutLineEnd(line.bytes));
        if (line.kind == LineKind::Blank)
            return "";
        return std::string(line.level, '\t') + ContentOf(line);
    }

private:
    std::string ContentOf(OutlineLine const& line) {
        if (line.kind == LineKind::Row) {
            BeginSection(line.parent);
            if (m_layout)
                if (auto row = m_layout->Format(line.parts.value))
                    return *std::move(row);
        }
        return PlainText(line);
    }

    void BeginSection(std::size_t opener) {
        if (m_section == opener)
            return;
        TableDescription const* const table = TableOf(m_outline, opener);
        m_section = opener;
        m_layout = table != nullptr ? std::make_unique<RowLayout>(*table) : nullptr;
    }

    LakeOutline const& m_outline;
    std::size_t m_section = NoLine; // whose rows the layout is for
    std::unique_ptr<RowLayout> m_layout;
};

bool IsSameNode(CLake::CNode const& left, CLake::CNode const& right) {
    return left.level() == right.level() && left.is_section() == right.is_section() &&
           left.key() == right.key() && left.comment() == right.comment();
}

} // namespace

bool HasLayout(std::string_view bytes) {
    auto const lines = OutlineOf(bytes).lines;
    return std::none_of(lines.begin(), lines.end(),
                        [](OutlineLine const& line) { return line.level > MostLevels; });
}

std::string CanonicalLayout(std::string_view bytes) {
    LakeOutline const outline = OutlineOf(bytes);
    std::string_view const line_end = LineEndOf(outline);
    MessageList const unseen;
    Formatter formatter(outline);
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t line = 0; line < outline.lines.size(); ++line)
        text.append(formatter.TextOf(line)).append(line_end);
    return text;
}

bool IsSameButForLayout(std::string_view bytes, std::string_view other) {
    LakeOutline const outline = OutlineOf(bytes);
    CLake left;
    CLake right;
    FillLake(left, bytes);
    FillLake(right, other);
    if (left.size() != right.size())
        return false;
    auto node = std::next(left.begin());
    auto other_node = std::next(right.begin());
    for (OutlineLine const& line : outline.lines) {
        bool const is_row = line.kind == LineKind::Row && TableOf(outline, line.parent) != nullptr;
        if (!IsSameNode(*node, *other_node) || (!is_row && node->value() != other_node->value()))
            return false;
        ++node;
        ++other_node;
    }
    return ReadTables(left) == ReadTables(right);
}

std::size_t CountChangedLines(std::string_view bytes, std::string_view other) {
    auto const lines = OutlineOf(bytes).lines;
    auto const other_lines = OutlineOf(other).lines;
    std::size_t changed = 0;
    for (std::size_t line = 0; line < lines.size() && line < other_lines.size(); ++line)
        changed += lines[line].bytes != other_lines[line].bytes ? 1 : 0;
    return changed;
}

} // namespace paramdb::tools
