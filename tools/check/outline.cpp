#include "tools/check/outline.h"

#include <paramdb/tables/load_progress.h>

#include <iterator>
#include <map>

namespace paramdb::tools::check {
namespace {

class OutlineWalk {
public:
    OutlineWalk(CLake const& lake, LineOrigins const& origins) : m_lake(lake), m_files(origins.Files()) {}

    Outline Run() {
        RowProgress progress;
        auto const end = m_lake.end();
        for (auto line = std::next(m_lake.begin()); line != end; ++line) {
            progress.AddRow();
            if (!NextPlace())
                continue; // the line between two files
            auto const behind = std::next(line);
            Add({&*line, m_place}, behind != end ? &*behind : nullptr);
        }
        MarkSectionsInEffect();
        return std::move(m_outline);
    }

private:
    void MarkSectionsInEffect() {
        std::map<std::wstring, OutlineSection*> last;
        for (Outline::Key const& key : m_outline.keys)
            if (key.section != OutlineSection::None && !key.is_behind_end)
                last[key.line.node->key_text().wide()] = &m_outline.sections[key.section];
        for (auto const& [key, section] : last)
            section->is_in_effect = true;
    }

    // Moves on to the place of the next line of the lake; false for the one between two files.
    bool NextPlace() {
        if (m_place.file < m_files.size() && m_place.line < m_files[m_place.file].line_begins.size()) {
            ++m_place.line;
            return true;
        }
        m_place = {m_place.file + 1, 0};
        return false;
    }

    void Add(OutlineLine line, CLakeNode const* behind) {
        bool const is_behind_end = !m_outline.stray_closers.empty();
        LakeText const value = line.node->value_text();
        m_outline.lines_behind_end += is_behind_end && (line.node->is_named() || !value.empty()) ? 1 : 0;
        if (!line.node->is_named() && !value.empty() && value[0] == L'}')
            Close(line, value);
        else if (value.size() == 1 && value[0] == L'{')
            Open(line, behind, is_behind_end);
        else if (!m_open.empty())
            AddToSection(m_outline.sections[m_open.back()], line);
        else if (line.node->is_named())
            m_outline.keys.push_back({line, OutlineSection::None, is_behind_end});
        else if (!value.empty())
            m_outline.loose.push_back(line);
    }

    static void AddToSection(OutlineSection& section, OutlineLine line) {
        if (line.node->is_named())
            section.named.push_back(line);
        else
            ++section.lines_without_key;
    }

    void Open(OutlineLine line, CLakeNode const* behind, bool is_behind_end) {
        std::size_t const index = m_outline.sections.size();
        OutlineSection section{.opener = line};
        section.first_line = behind;
        section.is_behind_end = is_behind_end;
        if (!m_open.empty()) {
            section.parent = m_open.back();
            m_outline.sections[section.parent].sections.push_back(index);
        } else if (line.node->is_named()) {
            m_outline.keys.push_back({line, index, is_behind_end});
        }
        m_outline.sections.push_back(std::move(section));
        m_open.push_back(index);
    }

    void Close(OutlineLine line, LakeText value) {
        if (m_open.empty()) {
            m_outline.stray_closers.push_back(line);
            return;
        }
        m_outline.sections[m_open.back()].closer = line;
        m_open.pop_back();
        if (value.size() > 1)
            m_outline.closers.push_back(line);
    }

    CLake const& m_lake;
    std::vector<LineOrigins::File> const& m_files;
    LinePlace m_place;
    std::vector<std::size_t> m_open;
    Outline m_outline;
};

bool IsBefore(LinePlace left, LinePlace right) {
    return left.file != right.file ? left.file < right.file : left.line < right.line;
}

} // namespace

OutlineSection const* Outline::SectionAt(LinePlace place) const {
    OutlineSection const* innermost = nullptr;
    for (OutlineSection const& section : sections) {
        if (IsBefore(place, section.opener.place))
            break;
        if (section.closer.node == nullptr || !IsBefore(section.closer.place, place))
            innermost = &section;
    }
    return innermost;
}

std::vector<CLakeNode const*> LinesIn(OutlineSection const& section) {
    std::vector<CLakeNode const*> lines;
    if (section.first_line == nullptr)
        return lines;
    auto& first =
        const_cast<CLakeNode&>(*section.first_line); // a position leads to a line that can be changed
    auto const end = section.first_line->collection()->end();
    std::size_t depth = 0;
    for (auto line = CLakeNode::list::position(first); line != end && &*line != section.closer.node; ++line) {
        LakeText const value = line->value_text();
        if (value.size() == 1 && value[0] == L'{')
            ++depth;
        else if (!line->is_named() && !value.empty() && value[0] == L'}')
            depth -= depth > 0 ? 1 : 0;
        else if (depth == 0)
            lines.push_back(&*line);
    }
    return lines;
}

Outline MakeOutline(CLake const& lake, LineOrigins const& origins) {
    return OutlineWalk(lake, origins).Run();
}

} // namespace paramdb::tools::check
