// The plain model: from the lake to the tables.
#include "plain_model.h"

#include <cwctype>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <type_traits>

namespace benchmarks {
namespace {

bool IsSpace(wchar_t character) {
    return std::iswspace(static_cast<std::wint_t>(character)) != 0;
}

template <class T>
T Convert(std::wstring const& line, std::size_t& used) {
    if constexpr (std::is_same_v<T, float>)
        return std::stof(line, &used);
    else if constexpr (std::is_same_v<T, double>)
        return std::stod(line, &used);
    else if constexpr (std::is_same_v<T, int>)
        return std::stoi(line, &used);
    else if constexpr (std::is_unsigned_v<T>) {
        unsigned long const number = std::stoul(line, &used);
        if (number > std::numeric_limits<T>::max())
            throw std::out_of_range("stoul");
        return static_cast<T>(number);
    } else
        return std::stoll(line, &used);
}

// Each reads a field from the front of the line and cuts what it has read; false for what cannot be read.
template <class T>
bool ReadField(std::wstring& line, T& field) {
    if (line.empty())
        return true;
    try {
        std::size_t used = 0;
        field = Convert<T>(line, used);
        line.erase(0, used);
        return true;
    } catch (std::logic_error const&) {
        return false;
    }
}

bool ReadField(std::wstring& line, ModelText& field) {
    if (line.size() >= CFixedText::Capacity - 1)
        return false;
    std::size_t begin = 0;
    while (begin < line.size() && IsSpace(line[begin]))
        ++begin;
    std::size_t end = begin;
    std::size_t rest = begin;
    if (begin < line.size() && line[begin] == L'"') {
        ++begin;
        end = std::min(line.find(L'"', begin), line.size());
        rest = std::min(end + 1, line.size());
    } else {
        while (end < line.size() && !IsSpace(line[end]))
            ++end;
        rest = end;
    }
    field.Assign(std::wstring_view(line).substr(begin, end - begin));
    line.erase(0, rest);
    return true;
}

template <class Fields>
bool ReadFields(std::wstring& line, Fields& fields) {
    return std::apply([&line](auto&... each) { return (ReadField(line, each) && ...); }, fields);
}

} // namespace

template <class Table>
void PlainModel::ReadTable(std::wstring const& tag, Table& table) {
    ModelLake::Node const* const section = m_lake.Find(tag);
    if (section == nullptr || !section->is_section)
        return;
    if constexpr (requires { table.reserve(std::size_t()); })
        table.reserve(section->unnamed.size());
    std::remove_cvref_t<decltype(table.begin()->first)> key{};
    std::remove_cvref_t<decltype(table.begin()->second)> row{};
    for (auto const& child : section->unnamed) {
        std::wstring line = child->value;
        if (ReadFields(line, key) && ReadFields(line, row.tuple()))
            table.insert({key, row});
        else
            ++m_faults;
    }
}

int PlainModel::Version(std::wstring const& key) const {
    int version = 0;
    if (ModelLake::Node const* const line = m_lake.Find(key))
        std::wistringstream(line->value) >> version;
    return version;
}

std::wstring PlainModel::NamedText(std::wstring const& key) const {
    ModelLake::Node const* const line = m_lake.Find(key);
    if (line == nullptr)
        return {};
    std::wstring const& value = line->value;
    if (!value.empty() && value[0] == L'"')
        return value.substr(1, value.find(L'"', 1) - 1);
    std::size_t end = 0;
    while (end < value.size() && !IsSpace(value[end]))
        ++end;
    return value.substr(0, end);
}

bool PlainModel::ReadTables() {
    if (m_lake.size() < 2 || Version(L"<DbDesign.CacheVersion>") != 216 ||
        Version(L"<DbDesign.CacheMinorVersion>") < 1)
        return false;
    ForEachModelTable(m_tables, m_tables,
                      [this](wchar_t const* tag, auto& table, auto&) { ReadTable(tag, table); });
    m_named_texts = {NamedText(L"<QLearn><FLearnArcName>"), NamedText(L"<QCalib><FCalibFileName>"),
                     NamedText(L"<QType><FBaseName>"), NamedText(L"<QType><FAliasName>")};
    return true;
}

} // namespace benchmarks
