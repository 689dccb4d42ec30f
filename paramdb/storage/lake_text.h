// A view of a text held by a lake, without a copy.
//
// A lake keeps the lines of a file as the bytes that were read, one character per byte, and texts that a
// program has assigned as wide strings. LakeText hides which of the two it is. A reader that wants every
// character of many texts asks once, through Visit, and then runs over plain characters.
//
// A view is valid as long as the line it was taken from stays in its lake and gets no other text.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace paramdb {

// The character that a byte of a parameter file stands for.
constexpr wchar_t Widen(char byte) {
    return static_cast<wchar_t>(static_cast<unsigned char>(byte));
}
constexpr wchar_t Widen(wchar_t character) {
    return character;
}

class PARAMDB_API LakeText {
public:
    constexpr LakeText() = default;
    constexpr LakeText(std::string_view bytes) : m_bytes(bytes.data()), m_size(bytes.size()) {}
    constexpr LakeText(std::wstring_view wide) : m_wide(wide.data()), m_size(wide.size()) {}

    constexpr std::size_t size() const { return m_size; }
    constexpr bool empty() const { return m_size == 0; }
    constexpr wchar_t operator[](std::size_t index) const {
        return m_wide != nullptr ? m_wide[index] : Widen(m_bytes[index]);
    }

    // Calls the function with a std::string_view of bytes or a std::wstring_view, whichever the lake holds.
    template <class Function>
    constexpr decltype(auto) Visit(Function&& function) const {
        return m_wide != nullptr ? function(std::wstring_view(m_wide, m_size))
                                 : function(std::string_view(m_bytes, m_size));
    }

    // A wide copy.
    std::wstring wide() const;

    // Equality, code unit by code unit, with a wide text.
    bool operator==(std::wstring_view other) const;

private:
    char const* m_bytes = nullptr;
    wchar_t const* m_wide = nullptr; // null: the text is m_bytes
    std::size_t m_size = 0;
};

} // namespace paramdb
