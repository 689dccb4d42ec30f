#include <paramdb/storage/lake.h>

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
    std::vector<TextBlock> texts;
    list copies(m_pool);
    CopyLines(other, copies, texts);
    copies.front().clear();
    m_collection.clear();
    m_collection.splice_back(copies);
    m_texts = std::move(texts);
    LinkRoot();
    RepairCopies(other, begin());
    return *this;
}

void CLake::merge(CLake& other) {
    if (this != &other) {
        Append(other);
        return;
    }
    CLake copy;
    copy = other;
    merge(copy);
}

void CLake::clear() {
    m_collection.clear();
    m_texts.clear();
    m_collection.emplace_back();
    LinkRoot();
}

void CLake::Append(CLake const& other) {
    std::vector<TextBlock> texts;
    list copies(m_pool);
    CopyLines(other, copies, texts);
    // The other root is a plain blank line here.
    copies.front().m_is_section = false;
    m_texts.reserve(m_texts.size() + texts.size());
    root().clear();
    iterator const first = copies.begin();
    m_collection.splice_back(copies);
    std::move(texts.begin(), texts.end(), std::back_inserter(m_texts));
    LinkRoot();
    RepairCopies(other, first);
}

void CLake::CopyLines(CLake const& other, list& copies, std::vector<TextBlock>& texts) {
    std::size_t size = 0;
    for (CNode const& line : other)
        size += line.byte_count();
    texts.push_back(std::make_unique_for_overwrite<char[]>(size));
    char* bytes = texts.back().get();
    for (CNode const& line : other) {
        CNode& copy = copies.emplace_back();
        copy.copy_line(line, bytes);
        copy.m_collection = &m_collection;
    }
}

void CLake::RepairCopies(CLake const& other, iterator copies) {
    // A copied opener that linking did not reach, because its key is known or a stray closing line stands before
    // it, keeps the children that its source has: as positions in this list, never in the other one.
    std::unordered_map<CNode const*, iterator> copy_of;
    auto const translate = [&](CNode::position source) {
        if (source == CNode::position() || source == const_cast<CLake&>(other).end())
            return source == CNode::position() ? source : end();
        auto const found = copy_of.find(&*source);
        return found != copy_of.end() ? found->second : end();
    };
    auto source = other.begin();
    for (iterator copy = copies; copy != end(); ++copy, ++source) {
        if (!copy->m_is_section || copy->m_section || !source->m_section)
            continue;
        if (copy_of.empty()) {
            copy_of.reserve(other.size());
            auto original = other.begin();
            for (iterator line = copies; line != end(); ++line, ++original)
                copy_of.emplace(&*original, line);
        }
        auto records = std::make_unique<CNode::Section>(*source->m_section);
        for (auto& [key, child] : records->named)
            child = translate(child);
        for (auto& child : records->unnamed)
            child = translate(child);
        records->first_child = translate(records->first_child);
        records->section_end = translate(records->section_end);
        copy->m_section = std::move(records);
    }
}

void CLake::LinkRoot() {
    root().set_collection(&m_collection);
    root().link(std::next(begin()));
}
