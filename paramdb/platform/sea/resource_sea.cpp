#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/platform/framework/replace_file.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/platform/sea/resource_sea.h>
#include <paramdb/platform/sea/sea_text.h>

#include <utility>

namespace {

constexpr int StoreMode = 2;
constexpr int DataCategory = 8;
constexpr int ErrorStyle = 3;

std::wstring OrEmpty(wchar_t const* text) {
    return text ? text : L"";
}

void Report(std::wstring const& name, int line) {
    CString text;
    text.Format(L"CResourceSea::Open(): Line %d of file '%s' makes no sense and is left out\n", line,
                name.c_str());
    PrWin::Output(DataCategory, ErrorStyle, text.GetString());
}

} // namespace

bool CResourceSea::Open(std::wstring const& name, std::wstring* reason) {
    paramdb::SeaContent content;
    try {
        CFile file;
        CFileException error;
        if (file.Open(name.c_str(), CFile::modeRead | CFile::shareDenyNone | CFile::typeBinary, &error))
            content = paramdb::ReadSeaText(paramdb::ReadToEnd(file));
        else if (name.empty() || !error.IsNotFound())
            throw error;
    } catch (CFileException const& error) {
        if (reason)
            *reason = error.Text();
        return false;
    }
    // Content and binding change together, or neither where memory ends.
    std::wstring file_name = name;
    m_lists.swap(content.lists);
    m_values.swap(content.values);
    m_file_name.swap(file_name);
    for (int const line : content.bad_lines)
        Report(name, line);
    return true;
}

bool CResourceSea::Save(std::wstring* reason) const {
    std::wstring error = L"The sea is bound to no file";
    bool const saved = !m_file_name.empty() &&
                       paramdb::ReplaceFileWith(m_file_name, paramdb::WriteSeaText(m_lists, m_values), error);
    if (!saved && reason)
        *reason = error;
    return saved;
}

void CResourceSea::Clear() noexcept {
    m_lists.clear();
    m_values.clear();
}

bool CResourceSea::IsListEntry(wchar_t const* tag) const {
    return FindList(tag ? tag : L"") != nullptr;
}

CResourceSea::LineList* CResourceSea::FindList(std::wstring_view tag) {
    auto const found = m_lists.find(tag);
    return found == m_lists.end() ? nullptr : &found->second;
}

CResourceSea::LineList const* CResourceSea::FindList(std::wstring_view tag) const {
    auto const found = m_lists.find(tag);
    return found == m_lists.end() ? nullptr : &found->second;
}

CResourceSea::LineList& CResourceSea::MakeList(std::wstring_view tag) {
    return m_lists[std::wstring(tag)];
}

bool CResourceSea::LookupBool(int mode, wchar_t const* key, bool value, int index) {
    if (mode != StoreMode)
        return LookupGetBool(key, index, value);
    m_values[{OrEmpty(key), index}] = value ? L"1" : L"0";
    return value;
}

bool CResourceSea::LookupGetBool(wchar_t const* key, int index, bool default_value) const {
    auto const found = m_values.find({OrEmpty(key), index});
    if (found == m_values.end() || (found->second != L"0" && found->second != L"1"))
        return default_value;
    return found->second == L"1";
}
