// Laying the tree of sections over the flat list.
//
// A section may be nested as deep as the file has lines, so the walk keeps the open sections on a stack of
// its own.
#include <paramdb/storage/lake_node.h>

void CLakeNode::begin_section(position first) {
    Section& section = own_records();
    section.named.clear();
    section.unnamed.clear();
    section.first_child = first;
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
    begin_section(first);
    if (m_collection == nullptr) {
        m_section->section_end = first;
        return first;
    }
    list& lines = *m_collection;
    std::vector<CLakeNode*> open{this};
    position line = first;
    while (!open.empty() && line != lines.end()) {
        CLakeNode& section = *open.back();
        line->m_level = section.m_level + 1;
        line->m_collection = section.m_collection;
        auto const value = line->value_text();
        bool const closes = !line->is_named() && !value.empty() && value[0] == L'}';
        bool const opens = value.size() == 1 && value[0] == L'{';
        position const child = closes ? line : section.add_child(line);
        ++line;
        if (closes) {
            child->m_level = section.m_level;
            section.m_section->section_end = line;
            open.pop_back();
        } else if (opens) {
            child->begin_section(line);
            open.push_back(&*child);
        }
    }
    for (CLakeNode* const section : open)
        section->m_section->section_end = line;
    // Whatever ended the walk, a key that the root lacks must never lead to a line.
    if (this == &lines.front())
        m_section->section_end = lines.end();
    return line;
}
