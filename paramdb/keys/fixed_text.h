// A text field of a key or row: at most 199 characters, ended by a zero.
//
// Names and definitions are short and many, so a text takes the room of its characters and not of its
// capacity, and moving a row moves a pointer. Characters behind a zero do not count. An assignment uses the
// room that is there.
#pragma once

#include <paramdb/platform/core/export.h>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

class PARAMDB_API CFixedText {
public:
    // Room for a text with its end.
    static constexpr std::size_t Capacity = 200;

    CFixedText() = default;
    // Cuts what is longer than 199 characters; null is the empty text.
    CFixedText(wchar_t const* text);
    CFixedText(std::wstring_view text) { Assign(text); }
    CFixedText(CFixedText const& other) { Assign(other.view()); }
    CFixedText(CFixedText&& other) noexcept { Swap(other); }
    CFixedText& operator=(CFixedText const& other) {
        Assign(other.view());
        return *this;
    }
    CFixedText& operator=(CFixedText&& other) noexcept {
        Swap(other);
        return *this;
    }
    ~CFixedText() { delete[] m_text; }

    // The text with its end; valid until the next assignment.
    operator wchar_t const*() const { return m_text != nullptr ? m_text : L""; }
    wchar_t const* c_str() const { return *this; }
    std::wstring_view view() const { return {c_str(), m_length}; }

    // The bytes held outside of this object.
    std::size_t HeapBytes() const { return m_capacity * sizeof(wchar_t); }

    // Takes characters of another type, each widened by the function, up to the first zero and 199 at most.
    template <class Character, class Widen>
    void Assign(std::basic_string_view<Character> text, Widen widen) {
        wchar_t* const target = Reserve(text.size());
        std::size_t length = 0;
        for (; length < text.size() && length + 1 < Capacity && text[length] != Character(); ++length)
            target[length] = widen(text[length]);
        SetLength(length);
    }

    // Empties the text and makes room for any, so that no later assignment allocates.
    void ReserveAll();

    // Order and equality of the code units as unsigned numbers; a beginning of a text comes before it.
    friend PARAMDB_API std::strong_ordering operator<=>(CFixedText const& left, CFixedText const& right);
    friend bool operator==(CFixedText const& left, CFixedText const& right) {
        return left.view() == right.view();
    }
    friend bool operator==(CFixedText const& left, wchar_t const* right) { return left.view() == right; }

private:
    void Assign(std::wstring_view text);
    // Makes room for that many characters and an end, or as many as fit; drops the text where it must.
    wchar_t* Reserve(std::size_t length);
    void SetLength(std::size_t length);
    void Swap(CFixedText& other) noexcept;

    wchar_t* m_text = nullptr; // owned; null: empty
    std::uint32_t m_length = 0;
    std::uint32_t m_capacity = 0;
};
