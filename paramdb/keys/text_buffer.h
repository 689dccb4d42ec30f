// A text of bounded length in a buffer of its own, for texts that are put together without the heap.
//
//     CTextBuffer<100> text;
//     text += L"line ";
//     text += 17;
//
// What goes beyond the capacity is dropped, and the text is always terminated.
#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string_view>

// Capacity counts the terminator.
template <std::size_t Capacity>
class CTextBuffer {
public:
    CTextBuffer() { Clear(); }

    void Clear() {
        m_length = 0;
        m_text[0] = L'\0';
    }

    CTextBuffer& operator+=(std::wstring_view text) {
        std::size_t const count = std::min(text.size(), Capacity - 1 - m_length);
        *std::copy_n(text.data(), count, m_text + m_length) = L'\0';
        m_length += count;
        return *this;
    }
    // The same for one of many short texts whose lengths are known: some units at a time, the last of them
    // twice, where a call would take longer.
    CTextBuffer& Append(std::wstring_view text) {
        constexpr std::size_t few = 4;
        std::size_t const count = std::min(text.size(), Capacity - 1 - m_length);
        if (count < few)
            return *this += text;
        wchar_t* const to = m_text + m_length;
        for (std::size_t unit = 0; unit < count - few; unit += few)
            std::memcpy(to + unit, text.data() + unit, few * sizeof(wchar_t));
        std::memcpy(to + count - few, text.data() + count - few, few * sizeof(wchar_t));
        m_length += count;
        m_text[m_length] = L'\0';
        return *this;
    }
    CTextBuffer& operator+=(wchar_t const* text) { return *this += std::wstring_view(text); }
    CTextBuffer& operator+=(wchar_t unit) = delete; // it would be taken for a number
    // A number in decimal digits.
    CTextBuffer& operator+=(int number) {
        char digits[12] = {};
        return AppendAscii(digits, std::to_chars(std::begin(digits), std::end(digits), number).ptr);
    }
    CTextBuffer& AppendAscii(char const* first, char const* last) {
        for (; first != last && m_length < Capacity - 1; ++first)
            m_text[m_length++] = static_cast<wchar_t>(*first);
        m_text[m_length] = L'\0';
        return *this;
    }

    bool IsEmpty() const { return m_length == 0; }
    wchar_t const* c_str() const { return m_text; }
    std::wstring_view view() const { return {m_text, m_length}; }

private:
    wchar_t m_text[Capacity];
    std::size_t m_length;
};
