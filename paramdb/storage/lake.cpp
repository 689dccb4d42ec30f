#include <paramdb/storage/lake.h>

#include <algorithm>
#include <memory>
#include <unordered_map>

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
    root().clear();
    iterator const first = copies.begin();
    m_collection.splice_back(copies);
    m_bytes = std::move(all_bytes);
    LinkRoot();
    RepairCopies(other, first);
}

void CLake::CopyLines(CLake const& other, list& copies) {
    for (CNode const& line : other) {
        CNode& copy = copies.emplace_back();
        copy.copy_line(line);
        copy.set_collection(&m_collection);
    }
}

void CLake::RepairCopies(CLake const& other, iterator copies) {
    // A copied line that linking gave no records, because its key is known or a stray closing line stands
    // before it, takes those of its source: as positions in this list, never in the other one.
    std::unordered_map<CNode const*, iterator> copy_of;
    auto const translate = [&](CNode::position& position) {
        if (position == CNode::position())
            return;
        bool const is_line = CLake::const_iterator(position) != other.end();
        auto const found = is_line ? copy_of.find(&*position) : copy_of.end();
        position = found != copy_of.end() ? found->second : end();
    };
    auto source = other.begin();
    for (iterator copy = copies; copy != end(); ++copy, ++source) {
        if (source->section() == nullptr || copy->section() != nullptr || source == other.begin())
            continue;
        if (copy_of.empty()) {
            copy_of.reserve(other.size());
            auto original = other.begin();
            for (iterator line = copies; line != end(); ++line, ++original)
                copy_of.emplace(&*original, line);
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
    root().link(std::next(begin()));
}
