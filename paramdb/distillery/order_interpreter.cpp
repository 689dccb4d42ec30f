#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/tables/number_text.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Definition = QVSpecIntervalEntry::Definition;

constexpr wchar_t Separator = L';';

bool IsSign(wchar_t character) {
    return character == L'+' || character == L'-';
}
bool IsSeriesMark(wchar_t character) {
    return character == L'X' || character == L'x';
}

// A letter in a term: where its number begins, and whether a minus stands before it.
struct Token {
    std::wstring_view number;
    bool negative;
    bool is_series;
};

// Reads the terms of one position.
class TermParser {
public:
    explicit TermParser(std::wstring_view term) : m_term(term) {}

    // False for a bad position.
    bool Parse(Definition& position) {
        position.clear();
        if (!TakeFloat(L'F', position.frequency()) || !TakeFloat(L'O', position.order()) ||
            !TakeFloat(L'M', position.modulation()) || !TakeLines(position.lines()) ||
            !TakeFloat(L'H', position.harmonic()))
            return false;
        bool const has_frequency = Has(L'F');
        bool const has_relative = Has(L'H') || Has(L'M');
        if (has_frequency && has_relative)
            return false;
        if (has_frequency)
            position.domain() |= QVSpecIntervalEntry::FrequencyDomain;
        if (has_relative || Has(L'O'))
            position.domain() |= QVSpecIntervalEntry::OrderDomain;
        return true;
    }

    bool IsSeries() const {
        std::size_t const letter = m_term.find(L'H');
        return letter != std::wstring_view::npos && letter + 1 < m_term.size() &&
               IsSeriesMark(m_term[letter + 1]);
    }

private:
    bool Has(wchar_t letter) const { return m_term.find(letter) != std::wstring_view::npos; }

    // The first occurrence of the letter; false if no sign parts it from what stands before it.
    bool FindToken(wchar_t letter, std::optional<Token>& token) const {
        std::size_t const position = m_term.find(letter);
        if (position == std::wstring_view::npos)
            return true;
        if (position > 0 && !IsSign(m_term[position - 1]))
            return false;
        std::wstring_view const number = m_term.substr(position + 1);
        token = {number, position > 0 && m_term[position - 1] == L'-',
                 !number.empty() && IsSeriesMark(number[0])};
        return true;
    }

    // What may stand behind a number.
    static bool Ends(std::wstring_view rest) { return rest.empty() || IsSign(rest[0]); }

    bool TakeFloat(wchar_t letter, float& field) const {
        std::optional<Token> token;
        if (!FindToken(letter, token))
            return false;
        if (!token)
            return true;
        double value = 1;
        if (token->is_series)
            token->number.remove_prefix(1);
        else
            value = paramdb::TakeDouble(token->number);
        field = static_cast<float>(token->negative ? -value : value);
        return Ends(token->number);
    }

    bool TakeLines(int& field) const {
        std::optional<Token> token;
        if (!FindToken(L'L', token))
            return false;
        if (!token)
            return true;
        int value = 1;
        if (token->is_series)
            token->number.remove_prefix(1);
        else
            value = paramdb::TakeLong(token->number);
        using Limits = std::numeric_limits<int>;
        if (token->negative)
            value = value == Limits::min() ? Limits::max() : -value;
        field = value;
        return Ends(token->number);
    }

    std::wstring_view m_term;
};

// Blanks removed, commas turned into points.
std::wstring Normalised(wchar_t const* text) {
    std::wstring result = text;
    std::erase(result, L' ');
    std::ranges::replace(result, L',', L'.');
    return result;
}

// Parses the positions as they stand; false on a syntax error. A series begins at `first_series`, which is
// the count where there is none.
bool ParsePositions(std::wstring_view text, Definition* out, unsigned int max, unsigned int& count,
                    unsigned int& first_series) {
    bool has_series = false;
    count = first_series = 0;
    while (!text.empty() && count < max) {
        std::size_t const length = std::min(text.find(Separator), text.size());
        TermParser term(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
        if (!term.Parse(out[count]))
            return false;
        if (term.IsSeries() && !has_series)
            first_series = count;
        else if (has_series && !term.IsSeries())
            return false;
        has_series = has_series || term.IsSeries();
        ++count;
    }
    if (!has_series)
        first_series = count;
    return true;
}

} // namespace

unsigned int OrderInterpreter::GetSpecPositions(wchar_t const* text, Definition* out, unsigned int max) {
    if (text == nullptr || *text == L'\0')
        return 0;
    unsigned int count = 0;
    unsigned int first_series = 0;
    if (!ParsePositions(Normalised(text), out, max, count, first_series)) {
        PrWin::Output(
            8, 3,
            std::wstring(L"OrderInterpreter::GetSpecPositions(): Syntax error in order definition '") + text +
                L"', treating it as empty.\n");
        return 0;
    }
    unsigned int const series_end = count;
    unsigned int const series_size = series_end - first_series;
    for (int harmonic = 2; series_size > 0 && count <= max - series_size; ++harmonic) {
        for (unsigned int term = first_series; term < series_end; ++term) {
            out[count] = out[term];
            out[count++].harmonic() = static_cast<float>(harmonic);
        }
    }
    return count;
}
