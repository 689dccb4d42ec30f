#include "model_orders.h"

#include <algorithm>
#include <cwchar>
#include <sstream>
#include <type_traits>

namespace benchmarks {
namespace {

bool IsSeriesMark(wchar_t character) {
    return character == L'X' || character == L'x';
}

// The number behind a letter of a term, 0 without that letter. False for a bad term.
bool TakeNumber(std::wstring const& term, wchar_t letter, double& number) {
    number = 0;
    std::size_t const place = term.find(letter);
    if (place == std::wstring::npos)
        return true;
    bool const has_sign = place > 0 && (term[place - 1] == L'+' || term[place - 1] == L'-');
    if (place > 0 && !has_sign)
        return false;
    wchar_t const* const begin = term.c_str() + place + 1;
    wchar_t* end = nullptr;
    if (IsSeriesMark(*begin)) {
        number = 1;
        end = const_cast<wchar_t*>(begin + 1);
    } else if (letter == L'L') {
        number = static_cast<double>(std::wcstol(begin, &end, 10));
    } else {
        number = std::wcstod(begin, &end);
    }
    if (has_sign && term[place - 1] == L'-')
        number = -number;
    return *end == L'\0' || *end == L'+' || *end == L'-';
}

bool TakePosition(std::wstring const& term, ModelPosition& position) {
    auto const take = [&term](wchar_t letter, auto& field) {
        double number = 0;
        bool const is_good = TakeNumber(term, letter, number);
        field = static_cast<std::remove_reference_t<decltype(field)>>(number);
        return is_good;
    };
    if (!take(L'F', position.frequency) || !take(L'O', position.order) || !take(L'M', position.modulation) ||
        !take(L'L', position.lines) || !take(L'H', position.harmonic))
        return false;
    auto const has = [&term](wchar_t letter) { return term.find(letter) != std::wstring::npos; };
    if (has(L'F') && (has(L'H') || has(L'M')))
        return false;
    position.domain = (has(L'F') ? 1 : 0) + (has(L'O') || has(L'M') || has(L'H') ? 2 : 0);
    return true;
}

bool IsSeries(std::wstring const& term) {
    std::size_t const letter = term.find(L'H');
    return letter != std::wstring::npos && letter + 1 < term.size() && IsSeriesMark(term[letter + 1]);
}

} // namespace

std::vector<ModelPosition> ParseOrderDefinition(std::wstring text, std::size_t most) {
    std::erase(text, L' ');
    std::ranges::replace(text, L',', L'.');
    std::vector<ModelPosition> positions;
    std::vector<ModelPosition> series;
    std::wistringstream terms(text);
    std::wstring term;
    while (positions.size() < most && std::getline(terms, term, L';')) {
        ModelPosition position;
        if (!TakePosition(term, position) || (!series.empty() && !IsSeries(term)))
            return {};
        positions.push_back(position);
        if (IsSeries(term))
            series.push_back(position);
    }
    for (int harmonic = 2; !series.empty() && positions.size() + series.size() <= most; ++harmonic)
        for (ModelPosition position : series) {
            position.harmonic = static_cast<float>(harmonic);
            positions.push_back(position);
        }
    return positions;
}

} // namespace benchmarks
