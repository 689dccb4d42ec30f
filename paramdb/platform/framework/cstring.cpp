#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/framework/format_text.h>

#include <algorithm>
#include <cstdint>

namespace {

std::size_t Count(int count) {
    return static_cast<std::size_t>(std::max(count, 0));
}

std::wstring_view View(wchar_t const* text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

int Position(std::size_t position) {
    return position == std::wstring::npos ? -1 : static_cast<int>(position);
}

bool IsSpace(wchar_t unit) {
    auto const c = static_cast<std::uint32_t>(unit);
    return (c >= 0x09 && c <= 0x0D) || c == 0x20 || c == 0x85 || c == 0xA0 || c == 0x1680 ||
           (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 || c == 0x202F || c == 0x205F ||
           c == 0x3000;
}

// A stretch of letters: capitals from `first` to `last`, every `step`-th unit, whose small letters lie
// `offset` higher.
struct CaseRange {
    std::uint32_t first, last, step, offset;
};

constexpr CaseRange CaseRanges[] = {
    {0x41, 0x5A, 1, 32},   {0xC0, 0xD6, 1, 32},   {0xD8, 0xDE, 1, 32},   {0x100, 0x12E, 2, 1},
    {0x132, 0x136, 2, 1},  {0x139, 0x147, 2, 1},  {0x14A, 0x176, 2, 1},  {0x179, 0x17D, 2, 1},
    {0x391, 0x3A1, 1, 32}, {0x3A3, 0x3AB, 1, 32}, {0x400, 0x40F, 1, 80}, {0x410, 0x42F, 1, 32},
};

wchar_t Lower(wchar_t unit) {
    auto const c = static_cast<std::uint32_t>(unit);
    for (CaseRange const& range : CaseRanges) {
        if (c >= range.first && c <= range.last && (c - range.first) % range.step == 0)
            return static_cast<wchar_t>(c + range.offset);
    }
    return c == 0x178 ? wchar_t{0xFF} : unit;
}

wchar_t Upper(wchar_t unit) {
    auto const c = static_cast<std::uint32_t>(unit);
    for (CaseRange const& range : CaseRanges) {
        std::uint32_t const capital = c - range.offset;
        if (c >= range.first + range.offset && capital <= range.last &&
            (capital - range.first) % range.step == 0)
            return static_cast<wchar_t>(capital);
    }
    return c == 0xFF ? wchar_t{0x178} : unit;
}

} // namespace

CString::CString(wchar_t const* text, int length) {
    if (text)
        m_text.assign(text, Count(length));
}

CString::CString(wchar_t unit, int repeat) : m_text(Count(repeat), unit) {}

wchar_t CString::GetAt(int position) const noexcept {
    return (*this)[position];
}

void CString::SetAt(int position, wchar_t unit) noexcept {
    if (position >= 0 && position < GetLength())
        m_text[Count(position)] = unit;
}

void CString::Format(wchar_t const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void CString::FormatV(wchar_t const* format, std::va_list arguments) {
    m_text = paramdb::FormatTextV(format, arguments);
}

void CString::AppendFormat(wchar_t const* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    m_text += paramdb::FormatTextV(format, arguments);
    va_end(arguments);
}

CString& CString::operator+=(CString const& text) {
    m_text += text.m_text;
    return *this;
}

CString& CString::operator+=(wchar_t const* text) {
    Append(text);
    return *this;
}

CString& CString::operator+=(std::wstring const& text) {
    m_text += text;
    return *this;
}

CString& CString::operator+=(wchar_t unit) {
    m_text += unit;
    return *this;
}

CString CString::Left(int count) const {
    return m_text.substr(0, Count(count));
}

CString CString::Right(int count) const {
    return m_text.substr(m_text.size() - std::min(m_text.size(), Count(count)));
}

CString CString::Mid(int start) const {
    return m_text.substr(std::min(m_text.size(), Count(start)));
}

CString CString::Mid(int start, int count) const {
    return m_text.substr(std::min(m_text.size(), Count(start)), Count(count));
}

int CString::Find(wchar_t const* text, int start) const noexcept {
    return text && start >= 0 ? Position(m_text.find(text, Count(start))) : -1;
}

int CString::Find(wchar_t unit, int start) const noexcept {
    return start >= 0 ? Position(m_text.find(unit, Count(start))) : -1;
}

int CString::ReverseFind(wchar_t unit) const noexcept {
    return Position(m_text.rfind(unit));
}

int CString::Compare(wchar_t const* text) const noexcept {
    return std::wstring_view(m_text).compare(View(text));
}

int CString::CompareNoCase(wchar_t const* text) const {
    CString a(*this);
    CString b(text);
    return a.MakeLower().m_text.compare(b.MakeLower().m_text);
}

CString& CString::MakeLower() noexcept {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Lower);
    return *this;
}

CString& CString::MakeUpper() noexcept {
    std::transform(m_text.begin(), m_text.end(), m_text.begin(), Upper);
    return *this;
}

CString& CString::TrimLeft() {
    m_text.erase(m_text.begin(), std::find_if_not(m_text.begin(), m_text.end(), IsSpace));
    return *this;
}

CString& CString::TrimRight() {
    m_text.erase(std::find_if_not(m_text.rbegin(), m_text.rend(), IsSpace).base(), m_text.end());
    return *this;
}

CString& CString::Trim() {
    TrimRight();
    return TrimLeft();
}

int CString::Replace(wchar_t const* old_text, wchar_t const* new_text) {
    // Copies, since either text may lie in this object.
    std::wstring const from(View(old_text));
    std::wstring const to(View(new_text));
    if (from.empty())
        return 0;
    int count = 0;
    std::wstring result;
    std::size_t done = 0;
    for (std::size_t hit = m_text.find(from); hit != std::wstring::npos; hit = m_text.find(from, done)) {
        result.append(m_text, done, hit - done).append(to);
        done = hit + from.size();
        ++count;
    }
    m_text = std::move(result.append(m_text, done));
    return count;
}

int CString::Replace(wchar_t old_unit, wchar_t new_unit) noexcept {
    auto const count = std::count(m_text.begin(), m_text.end(), old_unit);
    std::replace(m_text.begin(), m_text.end(), old_unit, new_unit);
    return static_cast<int>(count);
}

CString operator+(CString const& a, CString const& b) {
    return CString(a) += b;
}

CString operator+(CString const& a, wchar_t const* b) {
    return CString(a) += b;
}

CString operator+(CString const& a, std::wstring const& b) {
    return CString(a) += b;
}

CString operator+(CString const& a, wchar_t b) {
    return CString(a) += b;
}

CString operator+(wchar_t const* a, CString const& b) {
    return CString(a) += b;
}

CString operator+(std::wstring const& a, CString const& b) {
    return CString(a) += b;
}

CString operator+(wchar_t a, CString const& b) {
    return CString(a, 1) += b;
}
