// A cursor over one list of a sea, and the entry through which a new line gets its text.
//
//     CResourceList list(sea, L"<TMode>");
//     for (list.GotoHead(); list.IsValid(); list.GotoNext()) use(list.GetCurrentLine());
//
//     list.RemoveAll();
//     list.AddLineTail().SetSeaLine(L"1 idle");
//
// Opening a list does not create it; RemoveAll and AddLineTail do. Both classes refer to the sea, which must
// outlive them, and hold no lines themselves: changes by others show at once.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/sea/resource_sea.h>

#include <cstddef>
#include <string>
#include <string_view>

// One line of a list, by its place. A small value; copying it copies the reference.
class PARAMDB_API CResourceEntry {
public:
    CResourceEntry(CResourceSea& sea, std::wstring_view tag, std::size_t line)
        : m_sea(&sea), m_tag(tag), m_line(line) {}

    // Sets the line's text; does nothing once the line is gone.
    void SetSeaLine(std::wstring_view text);

private:
    CResourceSea* m_sea;
    std::wstring m_tag;
    std::size_t m_line;
};

class PARAMDB_API CResourceList {
public:
    // The cursor stands on the first line. A null tag is the empty name.
    CResourceList(CResourceSea& sea, wchar_t const* tag) : m_sea(&sea), m_tag(tag ? tag : L"") {}

    void GotoHead() noexcept { m_current = 0; }
    void GotoNext() noexcept { ++m_current; }

    // Whether the cursor stands on a line.
    [[nodiscard]] bool IsValid() const;

    // The line under the cursor, an empty text if there is none. Valid until the list changes.
    [[nodiscard]] std::wstring const& GetCurrentLine() const;

    // Empties the list, makes it if it is absent, and puts the cursor to the head.
    void RemoveAll();

    // Adds an empty line at the end, in a new list if it is absent, and returns it; the cursor stays.
    CResourceEntry AddLineTail();

private:
    CResourceSea* m_sea;
    std::wstring m_tag;
    std::size_t m_current = 0;
};
