#include <paramdb/storage/lake.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <utility>

namespace {

// Which line is the copy of which. Both stand side by side in their pools for long stretches.
class CopiedLines {
public:
    bool empty() const { return m_stretches.empty(); }

    void Add(CLake::CNode const& line, CLake::CNode& copy) {
        if (!empty() && m_stretches.back().line + m_stretches.back().count == &line &&
            m_stretches.back().copy + m_stretches.back().count == &copy)
            ++m_stretches.back().count;
        else
            m_stretches.push_back({&line, &copy, 1});
    }
    void Sort() {
        std::sort(m_stretches.begin(), m_stretches.end(), [](Stretch const& left, Stretch const& right) {
            return std::less<>()(left.line, right.line);
        });
    }
    // Null for a line that was not added.
    CLake::CNode* CopyOf(CLake::CNode const& line) const {
        auto const behind = std::upper_bound(
            m_stretches.begin(), m_stretches.end(), &line,
            [](CLake::CNode const* sought, Stretch const& any) { return std::less<>()(sought, any.line); });
        if (behind == m_stretches.begin())
            return nullptr;
        Stretch const& stretch = *std::prev(behind);
        auto const place = static_cast<std::size_t>(&line - stretch.line);
        return place < stretch.count ? stretch.copy + place : nullptr;
    }

private:
    struct Stretch {
        CLake::CNode const* line;
        CLake::CNode* copy;
        std::size_t count;
    };
    std::vector<Stretch> m_stretches;
};

} // namespace

CLake::CLake(CString const& filename) : m_filename(filename) {
    m_collection.emplace_back();
    if (filename.IsEmpty())
        LinkRoot();
    else
        read();
}

CLake::CLake(CLake const& other) {
    m_collection.emplace_back();
    Append(other);
}

CLake& CLake::operator=(CLake const& other) {
    if (this == &other)
        return *this;
    list copies(m_pool);
    CopyLines(other, copies);
    copies.front().clear();
    Bytes bytes = other.m_bytes;
    m_collection.clear();
    m_collection.splice_back(copies);
    m_bytes = std::move(bytes);
    LinkRoot();
    RepairCopies(other, begin());
    return *this;
}

void CLake::merge(CLake& other) {
    if (this != &other) {
        Append(other);
        return;
    }
    // Linking changes the records that the copies take theirs from, so those are copied first.
    CLake copy;
    copy.m_collection.clear();
    list lines(copy.m_pool);
    copy.CopyLines(*this, lines);
    copy.m_bytes = m_bytes;
    copy.m_collection.splice_back(lines);
    copy.RepairCopies(*this, copy.begin());
    Append(copy);
}

void CLake::clear() {
    m_collection.clear();
    m_bytes.clear();
    m_collection.emplace_back();
    LinkRoot();
}

void CLake::Append(CLake const& other) {
    list copies(m_pool);
    CopyLines(other, copies);
    // The other root is a plain blank line here.
    copies.front().m_is_section = false;
    Bytes all_bytes = m_bytes;
    for (paramdb::SharedLakeBytes const& bytes : other.m_bytes)
        if (std::find(all_bytes.begin(), all_bytes.end(), bytes) == all_bytes.end())
            all_bytes.push_back(bytes);
    // Linking again what has not changed would come to the same records.
    bool const has_changed = m_linked_revision != m_collection.revision();
    if (has_changed)
        root().clear();
    iterator const first = copies.begin();
    m_collection.splice_back(copies);
    m_bytes = std::move(all_bytes);
    if (has_changed)
        LinkRoot();
    else
        LinkLines(first);
    RepairCopies(other, first);
}

void CLake::CopyLines(CLake const& other, list& copies) {
    for (CNode const& line : other) {
        CNode& copy = copies.emplace_back();
        copy.copy_line(line);
        copy.assign_collection(&m_collection);
    }
}

void CLake::RepairCopies(CLake const& other, iterator copies) {
    // A copied line that linking gave no records, because its key is known or a stray closing line stands
    // before it, takes those of its source: as positions in this list, never in the other one.
    CopiedLines copied;
    auto const translate = [&](CNode::position& position) {
        if (position == CNode::position())
            return;
        bool const is_line = CLake::const_iterator(position) != other.end();
        CNode* const copy = is_line ? copied.CopyOf(*position) : nullptr;
        position = copy != nullptr ? list::position(*copy) : end();
    };
    auto source = other.begin();
    for (iterator copy = copies; copy != end(); ++copy, ++source) {
        if (source->section() == nullptr || copy->section() != nullptr || source == other.begin())
            continue;
        if (copied.empty()) {
            auto original = other.begin();
            for (iterator line = copies; line != end(); ++line, ++original)
                copied.Add(*original, *line);
            copied.Sort();
        }
        CNode::Section const& original = *source->section();
        CNode::Section& records = copy->own_records();
        records.named = original.named;
        for (auto& [key, child] : records.named)
            translate(child);
        for (iterator child : original.unnamed) {
            translate(child);
            records.unnamed.push_back(child);
        }
        records.first_child = original.first_child;
        translate(records.first_child);
        records.section_end = original.section_end;
        translate(records.section_end);
    }
}

void CLake::LinkRoot() {
    root().set_collection(&m_collection);
    m_linker = paramdb::LakeLinker(root());
    LinkLines(std::next(begin()));
}

void CLake::LinkLines(iterator first) {
    iterator line = first;
    while (line != end() && m_linker.Take(line))
        ++line;
    FinishLinking(line);
}

void CLake::FinishLinking(iterator behind) {
    m_linker.Finish(behind);
    // Whatever ended the walk, a key that the root lacks must never lead to a line.
    root().own_records().section_end = end();
    m_linked_revision = m_collection.revision();
}
