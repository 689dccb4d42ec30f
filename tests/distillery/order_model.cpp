#include "order_model.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <limits>
#include <optional>
#include <ostream>
#include <tuple>

namespace {

constexpr std::wstring_view Alphabet = L"FOMHLXx0123456789+-.;, e*";

bool SameNumber(float left, float right) {
    if (std::isnan(left) || std::isnan(right))
        return std::isnan(left) && std::isnan(right);
    return left == right && std::signbit(left) == std::signbit(right);
}

std::wstring WithoutBlanks(std::wstring const& text) {
    std::wstring clean;
    for (wchar_t const character : text)
        if (character != L' ')
            clean += character == L',' ? L'.' : character;
    return clean;
}

// The pieces between separators; nothing behind the last one is no piece.
std::vector<std::wstring> Split(std::wstring text) {
    std::vector<std::wstring> pieces;
    while (!text.empty()) {
        auto const end = text.find(L';');
        pieces.push_back(text.substr(0, end));
        text = end == std::wstring::npos ? L"" : text.substr(end + 1);
    }
    return pieces;
}

struct Letter {
    bool is_there = false;
    bool is_bad = false;
    bool is_series = false;
    double value = 0;
};

Letter ReadLetter(std::wstring const& term, wchar_t name) {
    Letter letter;
    auto const place = term.find(name);
    if (place == std::wstring::npos)
        return letter;
    letter.is_there = true;
    wchar_t const before = place == 0 ? L'+' : term[place - 1];
    if (before != L'+' && before != L'-') {
        letter.is_bad = true;
        return letter;
    }
    wchar_t const* const begin = term.c_str() + place + 1;
    wchar_t* end = nullptr;
    if (*begin == L'X' || *begin == L'x') {
        letter.is_series = true;
        letter.value = 1;
        end = const_cast<wchar_t*>(begin) + 1;
    } else if (name == L'L') {
        long long const limits[] = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
        letter.value = static_cast<double>(std::clamp(std::wcstoll(begin, &end, 10), limits[0], limits[1]));
    } else {
        letter.value = std::wcstod(begin, &end);
        if (end == begin) // where there is no number some C libraries take the sign alone and make -0 of it
            letter.value = 0;
    }
    if (before == L'-')
        letter.value = -letter.value;
    letter.is_bad = *end != L'\0' && *end != L'+' && *end != L'-';
    return letter;
}

struct ParsedTerm {
    OrderPosition position;
    bool is_series = false;
};

std::optional<ParsedTerm> ReadTerm(std::wstring const& term) {
    Letter const f = ReadLetter(term, L'F');
    Letter const o = ReadLetter(term, L'O');
    Letter const m = ReadLetter(term, L'M');
    Letter const l = ReadLetter(term, L'L');
    Letter const h = ReadLetter(term, L'H');
    if (f.is_bad || o.is_bad || m.is_bad || l.is_bad || h.is_bad)
        return std::nullopt;
    if (f.is_there && (h.is_there || m.is_there))
        return std::nullopt;
    ParsedTerm parsed;
    parsed.position.frequency = static_cast<float>(f.value);
    parsed.position.order = static_cast<float>(o.value);
    parsed.position.modulation = static_cast<float>(m.value);
    parsed.position.harmonic = static_cast<float>(h.value);
    parsed.position.lines = l.value >= 2147483647.0 ? 2147483647 : static_cast<int>(l.value);
    parsed.position.domain = (f.is_there ? 1 : 0) + (o.is_there || m.is_there || h.is_there ? 2 : 0);
    parsed.is_series = h.is_series;
    return parsed;
}

} // namespace

bool operator==(OrderPosition const& left, OrderPosition const& right) {
    return SameNumber(left.frequency, right.frequency) && SameNumber(left.order, right.order) &&
           SameNumber(left.harmonic, right.harmonic) && SameNumber(left.modulation, right.modulation) &&
           left.lines == right.lines && left.domain == right.domain;
}

std::ostream& operator<<(std::ostream& out, OrderPosition const& position) {
    return out << "F" << position.frequency << " O" << position.order << " H" << position.harmonic << " M"
               << position.modulation << " L" << position.lines << " in " << position.domain;
}

OrderList ModelOfOrders(std::wstring const& text, std::size_t room) {
    std::vector<ParsedTerm> terms;
    for (std::wstring const& piece : Split(WithoutBlanks(text))) {
        if (terms.size() == room)
            break;
        auto const term = ReadTerm(piece);
        if (!term || (!terms.empty() && terms.back().is_series && !term->is_series))
            return {true, {}};
        terms.push_back(*term);
    }
    OrderList list;
    std::vector<OrderPosition> series;
    for (ParsedTerm const& term : terms) {
        list.positions.push_back(term.position);
        if (term.is_series)
            series.push_back(term.position);
    }
    for (float harmonic = 2; !series.empty() && list.positions.size() + series.size() <= room; ++harmonic)
        for (OrderPosition position : series) {
            position.harmonic = harmonic;
            list.positions.push_back(position);
        }
    return list;
}

std::wstring OrderTexts::Number() {
    static constexpr wchar_t const* numbers[] = {
        L"0",           L"1",    L"2",     L"12",    L"0.5",   L"1,5",        L".5",
        L"5.",          L"100",  L"1e3",   L"1e+2",  L"1e-2",  L"2147483647", L"2147483648",
        L"99999999999", L"1e39", L"1e400", L"1e-50", L"00012", L"3 2",        L"",
        L"x",           L"X",    L"0x1f",  L"-3",    L"+4",    L"16777217",   L"-2147483648",
        L"1e5,",        L"3.25",
    };
    return numbers[Below(static_cast<int>(std::size(numbers)))];
}

std::wstring OrderTexts::Term(bool series) {
    std::wstring letters = Below(2) > 0 ? L"OMHL" : L"FOL";
    std::wstring term;
    for (int count = Below(4); count >= 0 && !letters.empty(); --count) {
        auto const place = static_cast<std::size_t>(Below(static_cast<int>(letters.size())));
        wchar_t const letter = letters[place];
        letters.erase(place, 1);
        if (letter == L'H' && series)
            continue;
        if (!term.empty() || Below(4) == 0)
            term += Below(2) > 0 ? L"+" : L"-";
        std::wstring number = letter == L'H' ? std::to_wstring(Below(9)) : Number();
        term += letter + number;
        if (Below(6) == 0)
            term += L" ";
    }
    if (!series)
        return term;
    if (term.find(L'F') != std::wstring::npos)
        term.clear();
    return term + (term.empty() ? L"" : L"+") + (Below(2) > 0 ? L"HX" : L"Hx");
}

std::wstring OrderTexts::Valid() {
    std::wstring text;
    int const terms = Below(5) > 0 ? 1 + Below(5) : 1 + Below(40);
    int const first_series = Below(3) == 0 ? Below(terms) : terms;
    for (int term = 0; term < terms; ++term)
        text += (term > 0 ? L";" : L"") + Term(term >= first_series);
    return Below(6) == 0 ? text + L";" : text;
}

wchar_t OrderTexts::Character() {
    return Below(60) == 0 ? L'\t'
                          : Alphabet[static_cast<std::size_t>(Below(static_cast<int>(Alphabet.size())))];
}

std::wstring OrderTexts::Mutated() {
    std::wstring text = Valid();
    for (int change = 1 + Below(3); change > 0; --change) {
        auto const place = static_cast<std::size_t>(Below(static_cast<int>(text.size()) + 1));
        switch (Below(3)) {
        case 0:
            text.insert(place, 1, Character());
            break;
        case 1:
            text.erase(std::min(place, text.size()), 1);
            break;
        default:
            if (place < text.size())
                text[place] = Character();
        }
    }
    return text;
}

std::wstring OrderTexts::Random() {
    std::wstring text;
    for (int length = Below(Below(3) == 0 ? 40 : 9); length > 0; --length)
        text += Character();
    return text;
}

std::wstring OrderTexts::Any() {
    switch (Below(3)) {
    case 0:
        return Valid();
    case 1:
        return Mutated();
    default:
        return Random();
    }
}
