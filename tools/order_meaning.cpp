#include "tools/order_meaning.h"

#include <paramdb/distillery/order_interpreter.h>
#include <paramdb/distillery/spec_interval_store.h>

#include "tools/short_number.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace paramdb::tools {
namespace {

// Each summand with its sign, but for the plus of the first.
class Sum {
public:
    void Add(bool is_negative, std::string const& summand) {
        if (m_text.empty())
            m_text = is_negative ? "- " : "";
        else
            m_text += is_negative ? " - " : " + ";
        m_text += summand;
    }
    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

void AddNumber(Sum& sum, float number, char const* before, char const* behind) {
    if (number == 0)
        return;
    std::string text = before;
    text.append(ShortNumber(std::fabs(number))).append(behind);
    sum.Add(number < 0, text);
}

void AddLines(Sum& sum, int lines) {
    if (lines == 0)
        return;
    long long const number = lines;
    std::string text = std::to_string(number < 0 ? -number : number);
    text += number == 1 || number == -1 ? " line" : " lines";
    sum.Add(number < 0, text);
}

void Pair(OrderMeaning& meaning) {
    std::size_t const count = meaning.positions.size();
    if (count == 0)
        return;
    meaning.verdict = count > 1 && count % 2 == 1 ? OrderVerdict::Odd : OrderVerdict::Good;
    if (count == 1)
        meaning.intervals.emplace_back(0, 0);
    else if (meaning.verdict == OrderVerdict::Good)
        for (std::size_t place = 0; place < count; place += 2)
            meaning.intervals.emplace_back(place, place + 1);
}

} // namespace

std::size_t OrderMeaning::FirstOfSeries() const {
    auto const first = std::find_if(text.positions.begin(), text.positions.end(),
                                    [](WrittenPosition const& position) { return position.is_series; });
    return static_cast<std::size_t>(first - text.positions.begin());
}

std::size_t OrderMeaning::Harmonics() const {
    std::size_t const length = text.positions.size() - FirstOfSeries();
    return length == 0 ? 0 : (positions.size() - FirstOfSeries()) / length;
}

OrderMeaning MeaningOf(std::wstring const& definition) {
    OrderMeaning meaning;
    meaning.text = ReadOrderText(definition);
    if (meaning.text.fault) {
        meaning.verdict = OrderVerdict::Bad;
        return meaning;
    }
    std::array<OrderMeaning::Position, CQtSpecIntervalStore::max_orders> positions;
    unsigned int const count = OrderInterpreter::GetSpecPositions(definition.c_str(), positions.data(),
                                                                  CQtSpecIntervalStore::max_orders);
    meaning.positions.assign(positions.begin(), positions.begin() + count);
    Pair(meaning);
    return meaning;
}

char const* DomainWord(QVSpecIntervalEntry::domain_t domain) {
    switch (domain) {
    case QVSpecIntervalEntry::FrequencyDomain:
        return "frequency";
    case QVSpecIntervalEntry::OrderDomain:
        return "order";
    case QVSpecIntervalEntry::MixedDomain:
        return "mixed";
    default:
        return "lines";
    }
}

std::string ValueText(OrderMeaning::Position const& position, wchar_t letter) {
    switch (letter) {
    case L'F':
        return ShortNumber(position.frequency());
    case L'O':
        return ShortNumber(position.order());
    case L'H':
        return ShortNumber(position.harmonic());
    case L'M':
        return ShortNumber(position.modulation());
    default:
        return std::to_string(position.lines());
    }
}

std::string SumText(OrderMeaning::Position const& position) {
    Sum sum;
    AddNumber(sum, position.frequency(), "", " Hz");
    AddNumber(sum, position.harmonic(), "", " x base order");
    AddNumber(sum, position.order(), "order ", "");
    AddNumber(sum, position.modulation(), "", " x modulation");
    AddLines(sum, position.lines());
    return sum.text().empty() ? "0" : sum.text();
}

} // namespace paramdb::tools
