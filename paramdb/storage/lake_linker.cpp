#include <paramdb/storage/lake_linker.h>

namespace paramdb {

LakeLinker::LakeLinker(CLakeNode& root) : m_collection(root.collection()) {
    Open(root);
}

void LakeLinker::Open(CLakeNode& section) {
    section.begin_section();
    m_open.push_back({&section, &section.own_records(), section.level() + 1});
    m_wants_next = &m_open.back().records->first_child;
}

bool LakeLinker::Take(CLakeNode::position line) {
    if (m_open.empty())
        return false;
    if (m_wants_next != nullptr)
        *m_wants_next = line;
    m_wants_next = nullptr;
    OpenSection const section = m_open.back();
    line->assign_collection(m_collection);
    line->set_level(section.level);
    auto const value = line->value_text();
    if (!line->is_named() && !value.empty() && value[0] == L'}') {
        line->set_level(section.level - 1);
        m_wants_next = &section.records->section_end;
        m_open.pop_back();
        return true;
    }
    CLakeNode::position const child = section.node->add_child(line);
    if (value.size() == 1 && value[0] == L'{')
        Open(*child);
    return true;
}

void LakeLinker::Finish(CLakeNode::position behind) {
    if (m_wants_next != nullptr)
        *m_wants_next = behind;
    for (OpenSection const& section : m_open)
        section.records->section_end = behind;
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
        section()->unnamed.push_back(line);
        return line;
    }
    // A key that is known keeps its first line. The hint makes keys that come in order cheap.
    auto& named = section()->named;
    return named.try_emplace(named.end(), line->key_text().wide(), line)->second;
}

CLakeNode::position CLakeNode::link(position first) {
    list* const lines = collection();
    if (lines == nullptr) {
        begin_section();
        section()->first_child = section()->section_end = first;
        return first;
    }
    lines->node_changed();
    paramdb::LakeLinker linker(*this);
    position line = first;
    while (line != lines->end() && linker.Take(line))
        ++line;
    linker.Finish(line);
    // Whatever ended the walk, a key that the root lacks must never lead to a line.
    if (this == &lines->front())
        section()->section_end = lines->end();
    return line;
}
