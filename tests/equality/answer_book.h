// A text file of answers, a line for each: UTF-8, LF, and floating numbers by their bits, so that two files
// are the same exactly when all answers are.
#pragma once

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cstring.h>
#include <paramdb/platform/numeric/ratio.h>

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

namespace equality {

class AnswerBook {
public:
    // One line: what has been asked, and what came back, with blanks between them.
    template <class... Parts>
    void Tell(std::string_view question, Parts const&... parts) {
        m_text += question;
        (Add(parts), ...);
        m_text += '\n';
    }
    std::string const& Text() const { return m_text; }

private:
    // Any NaN is as good as another: its sign depends on the order of operands in the machine's instructions.
    void Add(double value) { Add(std::isnan(value) ? "nan" : Hex(std::bit_cast<std::uint64_t>(value))); }
    void Add(float value) { Add(std::isnan(value) ? "nan" : Hex(std::bit_cast<std::uint32_t>(value))); }
    void Add(std::integral auto value) { Add(std::to_string(value)); }
    void Add(std::string const& text) { m_text.append(" ").append(text); }
    void Add(char const* text) { m_text.append(" ").append(text); }
    void Add(wchar_t const* text) { Add(text == nullptr ? "null" : Quoted(text)); }
    void Add(CString const& text) { Add(Quoted(text.GetString())); }
    void Add(std::wstring const& text) { Add(Quoted(text)); }
    void Add(numeric::CRatio const& ratio) {
        Add(ratio.numerator());
        Add(ratio.denominator());
        Add(ratio.value());
    }

    // Line feeds in a text become "\n".
    static std::string Quoted(std::wstring_view text) {
        std::string quoted = "\"";
        for (char const c : paramdb::ToUtf8(text))
            quoted += c == '\n' ? std::string("\\n") : std::string(1, c);
        return quoted + '"';
    }
    static std::string Hex(std::uint64_t bits) {
        std::string digits;
        do
            digits.insert(digits.begin(), "0123456789abcdef"[bits % 16]);
        while ((bits /= 16) != 0);
        return digits;
    }

    std::string m_text;
};

} // namespace equality
