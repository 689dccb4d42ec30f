#include <paramdb/storage/lake_linker.h>

namespace paramdb {

LakeLinker::LakeLinker(CLakeNode& root) : m_open{&root} {
    root.begin_section();
    m_wants_next = &root.m_section->first_child;
}

bool LakeLinker::Take(CLakeNode::position line) {
    if (m_open.empty())
        return false;
    if (m_wants_next != nullptr)
        *m_wants_next = line;
    m_wants_next = nullptr;
    CLakeNode& section = *m_open.back();
    line->m_level = section.m_level + 1;
    line->m_collection = section.m_collection;
    auto const value = line->value_text();
    if (!line->is_named() && !value.empty() && value[0] == L'}') {
        line->m_level = section.m_level;
        m_wants_next = &section.m_section->section_end;
        m_open.pop_back();
        return true;
    }
    CLakeNode::position const child = section.add_child(line);
    if (value.size() == 1 && value[0] == L'{') {
        child->begin_section();
        m_wants_next = &child->m_section->first_child;
        m_open.push_back(&*child);
    }
    return true;
}

void LakeLinker::Finish(CLakeNode::position behind) {
    if (m_wants_next != nullptr)
        *m_wants_next = behind;
    for (CLakeNode* const section : m_open)
        section->m_section->section_end = behind;
}

} // namespace paramdb

void CLakeNode::begin_section() {
    Section& section = own_records();
    section.named.clear();
    section.unnamed.clear();
    m_is_section = true;
}

CLakeNode::position CLakeNode::add_child(position line) {
    if (!line->is_named()) {
        m_section->unnamed.push_back(line);
        return line;
    }
    // A key that is known keeps its first line. The hint makes keys that come in order cheap.
    auto& named = m_section->named;
    return named.try_emplace(named.end(), line->key_text().wide(), line)->second;
}

CLakeNode::position CLakeNode::link(position first) {
    if (m_collection == nullptr) {
        begin_section();
        m_section->first_child = m_section->section_end = first;
        return first;
    }
    list& lines = *m_collection;
    paramdb::LakeLinker linker(*this);
    position line = first;
    while (line != lines.end() && linker.Take(line))
        ++line;
    linker.Finish(line);
    // Whatever ended the walk, a key that the root lacks must never lead to a line.
    if (this == &lines.front())
        m_section->section_end = lines.end();
    return line;
}
