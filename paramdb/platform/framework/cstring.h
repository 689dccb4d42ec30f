// The string object that names, tags, labels and messages are handed over in.
//
// A value class over a standard wide string, one UTF-16 code unit in each character. Positions and lengths
// are ints and count units; positions outside the text are harmless everywhere and are treated as stated.
// Comparison goes by code unit and depends on no locale. Distinct objects may be used from distinct threads
// without a lock.
#pragma once

#include <paramdb/platform/core/export.h>

#include <compare>
#include <concepts>
#include <cstdarg>
#include <iosfwd>
#include <string>
#include <string_view>
#include <utility>

class PARAMDB_API CString {
public:
    CString() = default;
    CString(wchar_t const* text) : m_text(text ? text : L"") {} // null is the empty text
    CString(std::wstring const& text) : m_text(text) {}
    CString(std::wstring&& text) noexcept : m_text(std::move(text)) {}
    CString(std::wstring_view text) : m_text(text) {}
    CString(wchar_t const* text, int length); // that many units, also zeros; empty when null or not positive
    CString(wchar_t unit, int repeat);        // empty when not positive

    // The text, zero-terminated; valid until the object changes or dies.
    [[nodiscard]] wchar_t const* GetString() const noexcept { return m_text.c_str(); }
    operator wchar_t const*() const noexcept { return m_text.c_str(); }

    [[nodiscard]] int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }

    // One unit; zero for a position outside the text. SetAt outside the text does nothing.
    [[nodiscard]] wchar_t GetAt(int position) const noexcept;
    void SetAt(int position, wchar_t unit) noexcept;
    template <std::integral Position>
    [[nodiscard]] wchar_t operator[](Position position) const noexcept {
        return std::cmp_less(position, 0) || std::cmp_greater_equal(position, m_text.size())
                   ? L'\0'
                   : m_text[static_cast<std::size_t>(position)];
    }

    // Formatting with the rules of framework/format_text.h: %s is wide text on every platform, numbers do not
    // depend on the locale, any length. The arguments may point into this object. AppendFormat adds to the
    // end.
    void Format(wchar_t const* format, ...);
    void FormatV(wchar_t const* format, std::va_list arguments);
    void AppendFormat(wchar_t const* format, ...);

    void Append(wchar_t const* text) { m_text += text ? text : L""; }
    CString& operator+=(CString const& text);
    CString& operator+=(wchar_t const* text);
    CString& operator+=(std::wstring const& text);
    CString& operator+=(wchar_t unit);

    // Parts as new texts. A count below 0 is 0, a start below 0 is 0, what lies past the end is left out.
    [[nodiscard]] CString Left(int count) const;
    [[nodiscard]] CString Right(int count) const;
    [[nodiscard]] CString Mid(int start) const;
    [[nodiscard]] CString Mid(int start, int count) const;

    // Position of the first occurrence at or after `start`, of the last one in ReverseFind; -1 on a miss,
    // also for a start outside the text and a null text. An empty text is found at `start`.
    [[nodiscard]] int Find(wchar_t const* text, int start = 0) const noexcept;
    [[nodiscard]] int Find(wchar_t unit, int start = 0) const noexcept;
    [[nodiscard]] int ReverseFind(wchar_t unit) const noexcept;

    // Below, equal to or above 0; null is the empty text. NoCase compares what MakeLower makes of both.
    [[nodiscard]] int Compare(wchar_t const* text) const noexcept;
    [[nodiscard]] int CompareNoCase(wchar_t const* text) const;

    // Case by single units for Latin with its accents, Greek and Cyrillic; other units stay as they are.
    CString& MakeLower() noexcept;
    CString& MakeUpper() noexcept;

    // Removes white space from the ends: U+0009 to U+000D, U+0020, U+0085, U+00A0 and Unicode's other spaces.
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim();

    // Replaces every occurrence from the front and returns how many there were; none for an empty old text.
    int Replace(wchar_t const* old_text, wchar_t const* new_text);
    int Replace(wchar_t old_unit, wchar_t new_unit) noexcept;

    friend bool operator==(CString const& a, CString const& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator==(CString const& a, wchar_t const* b) noexcept { return a.Compare(b) == 0; }
    friend bool operator==(CString const& a, std::wstring const& b) noexcept { return a.m_text == b; }
    friend std::strong_ordering operator<=>(CString const& a, CString const& b) noexcept {
        return a.m_text.compare(b.m_text) <=> 0;
    }
    friend std::strong_ordering operator<=>(CString const& a, wchar_t const* b) noexcept {
        return a.Compare(b) <=> 0;
    }
    friend std::strong_ordering operator<=>(CString const& a, std::wstring const& b) noexcept {
        return a.m_text.compare(b) <=> 0;
    }

private:
    std::wstring m_text;
};

[[nodiscard]] PARAMDB_API CString operator+(CString const& a, CString const& b);
[[nodiscard]] PARAMDB_API CString operator+(CString const& a, wchar_t const* b);
[[nodiscard]] PARAMDB_API CString operator+(CString const& a, std::wstring const& b);
[[nodiscard]] PARAMDB_API CString operator+(CString const& a, wchar_t b);
[[nodiscard]] PARAMDB_API CString operator+(wchar_t const* a, CString const& b);
[[nodiscard]] PARAMDB_API CString operator+(std::wstring const& a, CString const& b);
[[nodiscard]] PARAMDB_API CString operator+(wchar_t a, CString const& b);

// Without this a stream would take the pointer and print an address; stream GetString() instead.
template <class Char, class Traits>
std::basic_ostream<Char, Traits>& operator<<(std::basic_ostream<Char, Traits>&, CString const&) = delete;
