#include "model_lake.h"

#include <cwctype>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

namespace benchmarks {
namespace {

std::wstring Trim(std::wstring const& text, std::size_t begin, std::size_t end) {
    while (begin < end && std::iswspace(static_cast<std::wint_t>(text[begin])) != 0)
        ++begin;
    while (end > begin && std::iswspace(static_cast<std::wint_t>(text[end - 1])) != 0)
        --end;
    return text.substr(begin, end - begin);
}

} // namespace

void ModelLake::Node::SetLine(std::wstring const& text) {
    bool is_quoted = false;
    std::size_t mark = 0;
    for (; mark < text.size(); ++mark) {
        if (text[mark] == L'"')
            is_quoted = !is_quoted;
        else if (!is_quoted && (text[mark] == L':' || text[mark] == L';'))
            break;
    }
    key.clear();
    comment.clear();
    if (mark < text.size() && text[mark] == L':') {
        key = Trim(text, 0, mark);
        value = Trim(text, mark + 1, text.size());
    } else {
        value = Trim(text, 0, text.size());
        if (mark < text.size() && (value[0] == L'}' || value[0] == L';')) {
            value = Trim(text, 0, mark);
            comment = Trim(text, mark + 1, text.size());
        }
    }
    is_section = value == L"{";
}

ModelLake::Node::List::iterator ModelLake::Node::Link(List::iterator position) {
    named.clear();
    unnamed.clear();
    is_section = true;
    first_child = position;
    while (position != collection->end()) {
        position->level = level + 1;
        position->collection = collection;
        Node* target = &*position;
        bool is_end = false;
        if (!position->key.empty())
            target = &*named.try_emplace(position->key, position).first->second;
        else if (!position->value.empty() && position->value[0] == L'}')
            is_end = true;
        else
            unnamed.push_back(position);
        if (position->value == L"{") {
            position = target->Link(std::next(position));
            continue;
        }
        if (is_end)
            position->level = level;
        ++position;
        if (is_end)
            break;
    }
    section_end = position;
    return position;
}

void ModelLake::Read(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    m_lines.clear();
    Node& root = m_lines.emplace_back();
    root.collection = &m_lines;
    std::string bytes;
    std::wstring text;
    while (std::getline(file, bytes)) {
        text.clear();
        for (char const byte : bytes)
            text += static_cast<wchar_t>(static_cast<unsigned char>(byte));
        m_lines.emplace_back().SetLine(text);
    }
    root.Link(std::next(m_lines.begin()));
}

ModelLake::Node const* ModelLake::Find(std::wstring const& key) const {
    auto const found = m_lines.front().named.find(key);
    return found != m_lines.front().named.end() ? &*found->second : nullptr;
}

} // namespace benchmarks
