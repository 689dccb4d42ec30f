#include "lake_model.h"

#include <algorithm>
#include <set>
#include <tests/support/text_lines.h>

using test_support::Widened;

namespace lake_model {
namespace {

bool IsBlank(wchar_t character) {
    static std::wstring const blanks = L"\t\n\v\f\r \x85\xA0";
    return blanks.find(character) != std::wstring::npos;
}

std::wstring Trimmed(std::wstring text) {
    while (!text.empty() && IsBlank(text.back()))
        text.pop_back();
    while (!text.empty() && IsBlank(text.front()))
        text.erase(0, 1);
    return text;
}

} // namespace

Line ParseLine(std::string_view bytes) {
    std::wstring const text = Widened(bytes);
    Line line;
    std::size_t hit = 0;
    for (bool quoted = false; hit < text.size(); ++hit) {
        if (text[hit] == L'"')
            quoted = !quoted;
        if (!quoted && (text[hit] == L':' || text[hit] == L';'))
            break;
    }
    line.value = Trimmed(text);
    if (hit < text.size()) {
        std::wstring const before = Trimmed(text.substr(0, hit));
        std::wstring const behind = Trimmed(text.substr(hit + 1));
        if (text[hit] == L':') {
            line.key = before;
            line.value = behind;
        } else if (before.empty() || before[0] == L'}') {
            line.value = before;
            line.comment = behind;
        }
    }
    line.is_section = line.value == L"{";
    return line;
}

Line& Lake::Make(std::size_t index, Line line) {
    line.id = m_next_id++;
    return *m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(index), std::move(line));
}

std::size_t Lake::IndexOf(Ref ref) const {
    for (std::size_t index = 0; index < m_lines.size(); ++index)
        if (m_lines[index].id == ref)
            return index;
    return m_lines.size();
}

std::size_t Lake::IndexBefore(Ref ref) const {
    return ref == End ? m_lines.size() : IndexOf(ref);
}

Ref Lake::RefAt(std::size_t index) const {
    return index < m_lines.size() ? m_lines[index].id : End;
}

std::vector<int> Lake::Places() const {
    std::vector<int> places(static_cast<std::size_t>(m_next_id), Lost);
    for (std::size_t index = 0; index < m_lines.size(); ++index)
        places[static_cast<std::size_t>(m_lines[index].id)] = static_cast<int>(index);
    return places;
}

bool Lake::IsIntact(std::size_t line) const {
    std::vector<int> const places = Places();
    auto const lost = [&](Ref ref) {
        return ref == Lost || (ref >= 0 && places[static_cast<std::size_t>(ref)] == Lost);
    };
    Line const& section = m_lines[line];
    return !lost(section.first_child) && !lost(section.section_end) &&
           std::none_of(section.unnamed.begin(), section.unnamed.end(), lost) &&
           std::none_of(section.named.begin(), section.named.end(),
                        [&](auto const& entry) { return lost(entry.second); });
}

void Lake::Read(std::string_view bytes) {
    m_lines.clear();
    m_next_id = 0;
    Make(0, Line());
    while (!bytes.empty()) {
        std::size_t const end = bytes.find('\n');
        Make(m_lines.size(), ParseLine(bytes.substr(0, end)));
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    LinkRoot();
}

void Lake::ReadMissing() {
    m_lines.erase(m_lines.begin());
    Make(0, Line());
    LinkRoot();
}

void Lake::Clear() {
    m_lines.clear();
    m_next_id = 0;
    Make(0, Line());
    LinkRoot();
}

void Lake::LinkRoot() {
    Line& root = m_lines.front();
    root.key.clear();
    root.value.clear();
    root.level = -1;
    Link(0, 1, Places());
    m_lines.front().section_end = End;
}

std::size_t Lake::Link(std::size_t section, std::size_t first, std::vector<int> const& places) {
    m_lines[section].named.clear();
    m_lines[section].unnamed.clear();
    m_lines[section].is_section = true;
    m_lines[section].first_child = RefAt(first);
    std::size_t index = first;
    while (index < m_lines.size()) {
        Line& line = m_lines[index];
        line.level = m_lines[section].level + 1;
        std::size_t child = index;
        if (line.key.empty()) {
            if (!line.value.empty() && line.value[0] == L'}') {
                line.level = m_lines[section].level;
                ++index;
                break;
            }
            m_lines[section].unnamed.push_back(line.id);
        } else {
            Ref const target = m_lines[section].named.emplace(line.key, line.id).first->second;
            child = static_cast<std::size_t>(places[static_cast<std::size_t>(target)]);
        }
        index = line.value == L"{" ? Link(child, index + 1, places) : index + 1;
    }
    m_lines[section].section_end = RefAt(index);
    return index;
}

void Lake::Append(Lake const& other) {
    std::vector<int> const places = other.Places();
    Ref const first_id = m_next_id;
    auto const moved = [&](Ref ref) {
        if (ref < 0)
            return ref;
        int const place = places[static_cast<std::size_t>(ref)];
        return place == Lost ? Lost : first_id + place;
    };
    for (std::size_t index = 0; index < other.m_lines.size(); ++index) {
        Line const& source = other.m_lines[index];
        Line& copy = Make(m_lines.size(), source);
        if (index == 0) {
            copy.is_section = false;
            copy.named.clear();
            copy.unnamed.clear();
            copy.first_child = copy.section_end = Nowhere;
            continue;
        }
        for (auto& [key, child] : copy.named)
            child = moved(child);
        for (Ref& child : copy.unnamed)
            child = moved(child);
        copy.first_child = moved(copy.first_child);
        copy.section_end = moved(copy.section_end);
    }
}

Lake Lake::CopyOf(Lake const& other) {
    Lake copy;
    copy.Append(other);
    copy.LinkRoot();
    return copy;
}

void Lake::Assign(Lake const& other) {
    if (this == &other)
        return;
    m_lines.clear();
    m_next_id = 0;
    Append(other);
    LinkRoot();
}

void Lake::Merge(Lake const& other) {
    Lake const source = other;
    Append(source);
    LinkRoot();
}

Written Lake::Write() const {
    Written result;
    bool good = true;
    auto const print = [&](std::wstring const& text) {
        for (wchar_t const character : text) {
            good = good && static_cast<unsigned long>(character) <= 0xFF;
            if (good)
                result.bytes += static_cast<char>(character);
        }
    };
    for (std::size_t index = 1; index < m_lines.size(); ++index) {
        Line const& line = m_lines[index];
        if (line.level < 0) {
            result.throws = true;
            break;
        }
        print(std::wstring(static_cast<std::size_t>(line.level), L'\t'));
        print(line.key.empty() ? L"" : line.key + L": ");
        print(line.value);
        print(line.comment.empty() ? L"" : L"\t; " + line.comment);
        print(L"\n");
    }
    return result;
}

void Lake::PushBack(std::size_t line, std::wstring const& text) {
    if (!m_lines[line].is_section) {
        Line closing;
        closing.value = L"}";
        closing.comment = m_lines[line].key;
        closing.level = m_lines[line].level;
        Ref const before = m_lines[line].section_end;
        Ref const opener = m_lines[line].id;
        Ref const id = Make(before == Nowhere ? line + 1 : IndexBefore(before), closing).id;
        line = IndexOf(opener);
        m_lines[line].is_section = true;
        m_lines[line].value = L"{";
        m_lines[line].section_end = id;
    }
    Line row;
    row.value = text;
    row.level = m_lines[line].level + 1;
    Ref const opener = m_lines[line].id;
    if (m_lines[line].section_end == Nowhere)
        m_lines[line].section_end = RefAt(line + 1);
    Ref const id = Make(IndexBefore(m_lines[line].section_end), row).id;
    m_lines[IndexOf(opener)].unnamed.push_back(id);
}

void Lake::ClearSection(std::size_t line) {
    Line& section = m_lines[line];
    std::set<Ref> removed(section.unnamed.begin(), section.unnamed.end());
    for (auto const& [key, child] : section.named)
        removed.insert(child);
    for (Ref* const position : {&section.first_child, &section.section_end})
        while (removed.count(*position) > 0)
            *position = RefAt(IndexOf(*position) + 1);
    section.named.clear();
    section.unnamed.clear();
    std::erase_if(m_lines, [&](Line const& candidate) { return removed.count(candidate.id) > 0; });
}

void Lake::AssignAtTop(std::wstring const& key, std::wstring const& value) {
    Ref const found = Find(0, key);
    if (found != End) {
        m_lines[IndexOf(found)].value = value;
        return;
    }
    Line line;
    line.key = key;
    line.value = value;
    line.section_end = End;
    Ref const id = Make(m_lines.size(), line).id;
    m_lines.front().named.emplace(key, id);
}

Ref Lake::Find(std::size_t line, std::wstring const& key) const {
    Line const& section = m_lines[line];
    if (section.is_section)
        if (auto const found = section.named.find(key); found != section.named.end())
            return found->second;
    return section.section_end;
}

long Lake::FindValue(std::size_t line, std::wstring const& text) const {
    Line const& section = m_lines[line];
    if (section.is_section)
        for (std::size_t index = 0; index < section.unnamed.size(); ++index)
            if (m_lines[IndexOf(section.unnamed[index])].value == text)
                return static_cast<long>(index);
    return -1;
}

} // namespace lake_model
