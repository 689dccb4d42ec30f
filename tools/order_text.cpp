#include "tools/order_text.h"

#include <paramdb/distillery/spec_interval_store.h>
#include <paramdb/tables/number_text.h>

#include "tools/report.h"

#include <algorithm>

namespace paramdb::tools {
namespace {

constexpr std::size_t None = std::wstring_view::npos;

// The definition as the interpreter sees it, blanks removed and commas turned into points, with the place of
// each character in the text and behind the last one the length of the text.
struct Normalised {
    explicit Normalised(std::wstring_view given) {
        for (std::size_t place = 0; place < given.size(); ++place) {
            if (given[place] == L' ')
                continue;
            text += given[place] == L',' ? L'.' : given[place];
            places.push_back(place);
        }
        places.push_back(given.size());
    }

    std::wstring text;
    std::vector<std::size_t> places;
};

std::string Quoted(wchar_t character) {
    return "'" + Printable(std::wstring_view(&character, 1)) + "'";
}

bool IsSign(wchar_t character) {
    return character == L'+' || character == L'-';
}

bool IsSeriesMark(wchar_t character) {
    return character == L'X' || character == L'x';
}

// Reads one position. The places of its faults are within it.
class PositionReader {
public:
    explicit PositionReader(std::wstring_view text) : m_text(text), m_is_seen(text.size(), false) {}

    WrittenPosition Read() {
        for (wchar_t const letter : {L'F', L'O', L'M', L'L', L'H'})
            ReadTerm(letter);
        CheckCompany();
        std::sort(m_terms.begin(), m_terms.end(),
                  [](Found const& left, Found const& right) { return left.begin < right.begin; });
        WrittenPosition position;
        position.is_series = m_is_series;
        for (Found const& found : m_terms)
            position.terms.push_back(found.term);
        for (std::size_t place = 0; place < m_text.size(); ++place)
            if (!m_is_seen[place])
                position.ignored += m_text[place];
        return position;
    }

    // The first fault from the left.
    std::optional<OrderFault> const& fault() const { return m_fault; }

private:
    struct Found {
        std::size_t begin;
        OrderTerm term;
    };

    void Note(std::size_t place, std::string reason) {
        if (!m_fault || place < m_fault->place)
            m_fault = {place, std::move(reason)};
    }

    // The letter counts where it stands first.
    void ReadTerm(wchar_t letter) {
        std::size_t const place = m_text.find(letter);
        if (place == None)
            return;
        bool const has_sign = place > 0 && IsSign(m_text[place - 1]);
        if (place > 0 && !has_sign)
            Note(place, Quoted(letter) + " needs a + or - before it");

        std::wstring_view rest = m_text.substr(place + 1);
        std::size_t const length = rest.size();
        bool const is_series = !rest.empty() && IsSeriesMark(rest[0]);
        if (is_series)
            rest.remove_prefix(1);
        else if (letter == L'L')
            TakeLong(rest);
        else
            TakeDouble(rest);
        bool const has_number = rest.size() < length;
        std::size_t const end = m_text.size() - rest.size();
        if (!rest.empty() && !IsSign(rest[0]))
            Note(end, Quoted(rest[0]) +
                          (has_number ? " cannot follow the number of " : " cannot be the number of ") +
                          Quoted(letter));

        std::size_t const begin = has_sign ? place - 1 : place;
        std::fill(m_is_seen.begin() + static_cast<std::ptrdiff_t>(begin),
                  m_is_seen.begin() + static_cast<std::ptrdiff_t>(end), true);
        m_terms.push_back({begin, {letter, std::wstring(m_text.substr(begin, end - begin)), has_number}});
        m_is_series = m_is_series || (letter == L'H' && is_series);
    }

    // A frequency does not go together with what the base order scales.
    void CheckCompany() {
        std::size_t const frequency = m_text.find(L'F');
        for (wchar_t const letter : {L'H', L'M'}) {
            std::size_t const other = m_text.find(letter);
            if (frequency != None && other != None)
                Note(std::max(frequency, other),
                     "'F' and " + Quoted(letter) + " cannot stand in one position");
        }
    }

    std::wstring_view m_text;
    std::vector<bool> m_is_seen;
    std::vector<Found> m_terms;
    bool m_is_series = false;
    std::optional<OrderFault> m_fault;
};

} // namespace

OrderText ReadOrderText(std::wstring_view text) {
    Normalised const given(text);
    OrderText result;
    bool has_series = false;
    for (std::size_t begin = 0; begin < given.text.size();) {
        if (result.positions.size() == CQtSpecIntervalStore::max_orders) {
            result.is_cut = true;
            break;
        }
        std::size_t const end = std::min(given.text.find(L';', begin), given.text.size());
        PositionReader reader(std::wstring_view(given.text).substr(begin, end - begin));
        WrittenPosition position = reader.Read();
        result.fault = reader.fault();
        if (!result.fault && has_series && !position.is_series)
            result.fault = {0, "behind a position with HX every position needs an HX"};
        if (result.fault) {
            result.fault->place = given.places[begin + result.fault->place];
            break;
        }
        has_series = has_series || position.is_series;
        result.positions.push_back(std::move(position));
        begin = end + 1;
    }
    return result;
}

} // namespace paramdb::tools
