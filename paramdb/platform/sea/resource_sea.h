// The host's text resource store: named lists of lines, and single values by key and index.
//
// A sea lives in memory. It can be bound to a text file with Open and written back with Save; tables read and
// write their lists through CResourceList. Reading from several threads is safe while none changes the sea.
//
// The file is UTF-8 text in lines. A blank line or one that begins with '#' is passed over, and there are
// three kinds more:
//
//     list<TAB>name                   begins a list, or goes on with one named before
//     <TAB>text                       one line of that list
//     value<TAB>key<TAB>index<TAB>text
//
// In names, keys and texts \\ \n \r \t \0 stand for backslash, line feed, CR, tab and zero, and \uXXXX for a
// code unit that has no UTF-8 form of its own (a lone surrogate), so every text survives. Lists and values
// stand in the order of their names.
#pragma once

#include <paramdb/platform/core/export.h>

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class PARAMDB_API CResourceSea {
public:
    using LineList = std::vector<std::wstring>;
    using ListMap = std::map<std::wstring, LineList, std::less<>>;
    using ValueMap = std::map<std::pair<std::wstring, int>, std::wstring>;

    // Replaces the whole content by that of a file and binds the sea to it. A missing file gives an empty,
    // bound sea. False, with the system's text in `reason` if given, when the file is there but cannot be
    // read; content and binding are as before then. A line that makes no sense is left out and reported with
    // its number (category 8, style 3).
    bool Open(std::wstring const& name, std::wstring* reason = nullptr);

    // Writes the bound file, atomically as ReplaceFileWith does. False with a reason, also when no file is
    // bound.
    bool Save(std::wstring* reason = nullptr) const;

    // The bound file, empty if there is none.
    [[nodiscard]] std::wstring const& FileName() const noexcept { return m_file_name; }

    // Removes all lists and values; the binding stays.
    void Clear() noexcept;

    // Whether a list of that name exists, also an empty one.
    [[nodiscard]] bool IsListEntry(wchar_t const* tag) const;

    // The lines of a list, null on a miss; valid until the list is removed by Open or Clear.
    [[nodiscard]] LineList* FindList(std::wstring_view tag);
    [[nodiscard]] LineList const* FindList(std::wstring_view tag) const;

    // The lines of a list, which is made if it is absent.
    LineList& MakeList(std::wstring_view tag);

    // Mode 2 stores `value` under key and index. Any other mode changes nothing and reads. Returns the value
    // in force afterwards, `value` itself where none is stored.
    bool LookupBool(int mode, wchar_t const* key, bool value, int index);

    // The stored value; `default_value` where there is none or its text is neither "0" nor "1".
    [[nodiscard]] bool LookupGetBool(wchar_t const* key, int index, bool default_value) const;

    [[nodiscard]] ListMap const& Lists() const noexcept { return m_lists; }
    [[nodiscard]] ValueMap const& Values() const noexcept { return m_values; }

private:
    ListMap m_lists;
    ValueMap m_values;
    std::wstring m_file_name;
};
