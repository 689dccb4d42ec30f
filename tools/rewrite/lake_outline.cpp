#include "tools/rewrite/lake_outline.h"

#include <unordered_map>

namespace paramdb::tools {
namespace {

LineKind KindOf(LakeLine const& parts, std::string_view bytes) {
    if (parts.value == "{")
        return LineKind::Opener;
    if (!parts.key.empty())
        return LineKind::Named;
    if (parts.value.starts_with('}'))
        return LineKind::Closer;
    if (!parts.value.empty())
        return LineKind::Row;
    return bytes.find(';') != std::string_view::npos ? LineKind::Comment : LineKind::Blank;
}

// What is known of a key while the lines of its section are walked.
struct KeyLines {
    std::size_t first;
    bool begins_with_section;
    std::size_t last_section = NoLine;
};

// Marks what the lines of one section supersede among each other.
class SupersededLines {
public:
    explicit SupersededLines(LakeOutline& outline) : m_outline(outline) {}

    // Looks at the section's lines and appends the sections below that lookups reach.
    void MarkIn(std::size_t begin, std::size_t end, std::vector<std::size_t>& below) {
        std::unordered_map<std::string_view, KeyLines> keys;
        for (std::size_t line = begin; line < end; line = m_outline.Next(line)) {
            OutlineLine& current = m_outline.lines[line];
            if (current.kind == LineKind::Unread)
                break;
            if (current.parts.key.empty())
                continue;
            bool const opens = current.kind == LineKind::Opener;
            auto const [found, is_new] = keys.try_emplace(current.parts.key, KeyLines{line, opens});
            KeyLines& known = found->second;
            if (opens) {
                Mark(known.last_section, line);
                known.last_section = line;
            } else if (!is_new) {
                current.superseded_by = known.first;
            }
        }
        for (std::size_t line = begin; line < end; line = m_outline.Next(line)) {
            OutlineLine& current = m_outline.lines[line];
            if (current.kind == LineKind::Unread)
                break;
            if (current.kind == LineKind::Opener && current.superseded_by == NoLine)
                below.push_back(line);
            else if (current.kind == LineKind::Named && current.superseded_by != NoLine)
                PointToSection(current, keys.at(current.parts.key));
        }
    }

private:
    // All lines of a section, which a later one replaces.
    void Mark(std::size_t opener, std::size_t by) {
        if (opener == NoLine)
            return;
        for (std::size_t line = opener; line < m_outline.Next(opener); ++line)
            m_outline.lines[line].superseded_by = by;
    }

    // A plain line behind a section is superseded by the section that stays.
    static void PointToSection(OutlineLine& line, KeyLines const& known) {
        if (known.begins_with_section)
            line.superseded_by = known.last_section;
    }

    LakeOutline& m_outline;
};

} // namespace

std::size_t LakeOutline::End(std::size_t opener) const {
    return opener == NoLine || lines[opener].closer == NoLine ? lines.size() : lines[opener].closer;
}

LakeOutline OutlineOf(std::string_view bytes) {
    LakeOutline outline;
    std::vector<std::size_t> open;
    char const* const end = bytes.data() + bytes.size();
    for (char const* next = bytes.data(); next != end;) {
        char const* const begin = next;
        OutlineLine line;
        line.parts = TakeLine(next, end);
        line.bytes = {begin, static_cast<std::size_t>(next - begin)};
        std::size_t const number = outline.lines.size();
        line.kind = outline.stray == NoLine ? KindOf(line.parts, line.bytes) : LineKind::Unread;
        if (line.kind == LineKind::Closer && !open.empty()) {
            outline.lines[open.back()].closer = number;
            open.pop_back();
        } else if (line.kind == LineKind::Closer) {
            outline.stray = number;
        }
        line.level = open.size();
        line.parent = open.empty() ? NoLine : open.back();
        if (line.kind == LineKind::Opener)
            open.push_back(number);
        outline.lines.push_back(line);
    }
    if (!open.empty())
        outline.unclosed = open.front();

    std::vector<std::size_t> sections;
    SupersededLines superseded(outline);
    superseded.MarkIn(0, outline.lines.size(), sections);
    while (!sections.empty()) {
        std::size_t const opener = sections.back();
        sections.pop_back();
        superseded.MarkIn(opener + 1, outline.End(opener), sections);
    }
    return outline;
}

} // namespace paramdb::tools
