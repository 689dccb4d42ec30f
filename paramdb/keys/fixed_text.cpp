#include <paramdb/keys/fixed_text.h>

#include <algorithm>
#include <type_traits>
#include <utility>

CFixedText::CFixedText(wchar_t const* text) {
    if (text != nullptr)
        Assign(std::wstring_view(text));
}

void CFixedText::Assign(std::wstring_view text) {
    Assign(text, [](wchar_t character) { return character; });
}

void CFixedText::ReserveAll() {
    Reserve(Capacity);
    SetLength(0);
}

wchar_t* CFixedText::Reserve(std::size_t length) {
    std::size_t const needed = std::min(length + 1, Capacity);
    if (length > 0 && needed > m_capacity) {
        wchar_t* const text = new wchar_t[needed];
        delete[] m_text;
        m_text = text;
        m_capacity = static_cast<std::uint32_t>(needed);
    }
    return m_text;
}

void CFixedText::SetLength(std::size_t length) {
    m_length = static_cast<std::uint32_t>(length);
    if (m_text != nullptr)
        m_text[length] = L'\0';
}

void CFixedText::Swap(CFixedText& other) noexcept {
    std::swap(m_text, other.m_text);
    std::swap(m_length, other.m_length);
    std::swap(m_capacity, other.m_capacity);
}

std::strong_ordering operator<=>(CFixedText const& left, CFixedText const& right) {
    auto const unsigned_order = [](wchar_t a, wchar_t b) {
        using Unit = std::make_unsigned_t<wchar_t>;
        return static_cast<Unit>(a) <=> static_cast<Unit>(b);
    };
    auto const a = left.view();
    auto const b = right.view();
    return std::lexicographical_compare_three_way(a.begin(), a.end(), b.begin(), b.end(), unsigned_order);
}
