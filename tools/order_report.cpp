#include "tools/order_report.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/order_meaning.h"
#include "tools/short_number.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

char const* LetterMeaning(wchar_t letter) {
    switch (letter) {
    case L'F':
        return "frequency in Hz";
    case L'O':
        return "order";
    case L'H':
        return "multiple of the base order";
    case L'M':
        return "modulation";
    default:
        return "spectral lines";
    }
}

void PrintHead(std::ostream& out, OrderQuestion const& question) {
    if (question.parameter.id != -1)
        out << "Parameter   " << Shown(question.parameter) << '\n';
    if (question.base_order.id != -1)
        out << "Base order  " << Shown(question.base_order) << '\n';
    out << "Definition  " << Printable(question.definition) << '\n';
}

void PrintFault(std::ostream& out, std::wstring_view definition, OrderFault const& fault) {
    std::size_t const width = TextWidth(Printable(definition.substr(0, fault.place)));
    out << "            " << std::string(width, ' ') << "^\n" << fault.reason << '\n';
}

void PrintTerms(std::ostream& out, OrderMeaning const& meaning) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Left, Right, Left});
    table.Add({"Position", "Domain", "Term", "Value", "Meaning"});
    for (std::size_t place = 0; place < meaning.text.positions.size(); ++place) {
        auto const& position = meaning.positions[place];
        std::vector<std::string> cells{std::to_string(place + 1), DomainWord(position.domain())};
        for (OrderTerm const& term : meaning.text.positions[place].terms) {
            cells.push_back(Printable(term.text));
            cells.push_back(ValueText(position, term.letter));
            cells.emplace_back(LetterMeaning(term.letter));
            table.Add(std::move(cells));
            cells.assign(2, "");
        }
        if (meaning.text.positions[place].terms.empty())
            table.Add(std::move(cells));
    }
    table.Print(out);
}

// What is easily overlooked.
void PrintRemarks(std::ostream& out, OrderMeaning const& meaning) {
    std::size_t const written = meaning.text.positions.size();
    for (std::size_t place = 0; place < written; ++place) {
        std::string const name = "Position " + std::to_string(place + 1);
        WrittenPosition const& position = meaning.text.positions[place];
        for (OrderTerm const& term : position.terms)
            if (!term.has_number)
                out << name << ": '" << Printable(term.text) << "' has no number and counts as 0.\n";
        if (!position.ignored.empty())
            out << name << ": '" << Printable(position.ignored) << "' is not looked at.\n";
    }
    if (meaning.text.is_cut)
        out << "Only the first " << written << " positions count.\n";
    if (!meaning.HasSeries())
        return;
    std::size_t const first = meaning.FirstOfSeries() + 1;
    if (meaning.Harmonics() < 2)
        out << "A series, but there is no room for a second harmonic.\n";
    else if (first == written)
        out << "Position " << first << " is repeated for the harmonics 2 to " << meaning.Harmonics() << ".\n";
    else
        out << "Positions " << first << " to " << written << " are repeated for the harmonics 2 to "
            << meaning.Harmonics() << ".\n";
}

void PrintIntervals(std::ostream& out, OrderMeaning const& meaning) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Left, Left});
    table.Add({"Interval", "Positions", "Lower", "Upper"});
    std::size_t number = 0;
    for (auto const& [lower, upper] : meaning.intervals) {
        std::string pair = std::to_string(lower + 1);
        if (upper != lower)
            pair.append(" and ").append(std::to_string(upper + 1));
        table.Add({std::to_string(++number), pair, SumText(meaning.positions[lower]),
                   SumText(meaning.positions[upper])});
    }
    out << '\n';
    table.Print(out);
}

void PrintText(std::ostream& out, OrderQuestion const& question, OrderMeaning const& meaning) {
    PrintHead(out, question);
    if (meaning.text.fault) {
        PrintFault(out, question.definition, *meaning.text.fault);
        return;
    }
    if (meaning.verdict == OrderVerdict::Empty) {
        out << "It is empty: no positions and no intervals.\n";
        return;
    }
    out << '\n';
    PrintTerms(out, meaning);
    PrintRemarks(out, meaning);
    if (meaning.verdict == OrderVerdict::Odd)
        out << "\nNo intervals: of " << meaning.positions.size()
            << " positions one is left over. It takes a single one or an even number.\n";
    else
        PrintIntervals(out, meaning);
}

Json JsonPosition(OrderMeaning const& meaning, std::size_t place) {
    auto const& position = meaning.positions[place];
    Json terms = Json::array();
    Json ignored;
    if (place < meaning.text.positions.size()) {
        WrittenPosition const& written = meaning.text.positions[place];
        ignored = JsonText(written.ignored);
        for (OrderTerm const& term : written.terms) {
            Json const value = term.letter == L'F'   ? JsonNumber(position.frequency())
                               : term.letter == L'O' ? JsonNumber(position.order())
                               : term.letter == L'H' ? JsonNumber(position.harmonic())
                               : term.letter == L'M' ? JsonNumber(position.modulation())
                                                     : Json(position.lines());
            terms.push_back({{"text", ToUtf8(term.text)},
                             {"letter", ToUtf8(std::wstring_view(&term.letter, 1))},
                             {"value", value},
                             {"has_number", term.has_number}});
        }
    }
    return {{"terms", std::move(terms)},
            {"domain", DomainWord(position.domain())},
            {"frequency", JsonNumber(position.frequency())},
            {"order", JsonNumber(position.order())},
            {"harmonic", JsonNumber(position.harmonic())},
            {"modulation", JsonNumber(position.modulation())},
            {"lines", position.lines()},
            {"ignored", std::move(ignored)}};
}

Json JsonSeries(OrderMeaning const& meaning) {
    if (!meaning.HasSeries())
        return nullptr;
    return {{"first", meaning.FirstOfSeries() + 1},
            {"last", meaning.text.positions.size()},
            {"harmonics", meaning.Harmonics()}};
}

void PrintDocument(std::ostream& out, OrderQuestion const& question, OrderMeaning const& meaning) {
    Json fault;
    if (meaning.text.fault)
        fault = {{"place", meaning.text.fault->place}, {"reason", meaning.text.fault->reason}};
    Json positions = Json::array();
    for (std::size_t place = 0; place < meaning.positions.size(); ++place)
        positions.push_back(JsonPosition(meaning, place));
    Json intervals = Json::array();
    for (auto const& [lower, upper] : meaning.intervals)
        intervals.push_back({{"lower", lower + 1}, {"upper", upper + 1}});
    bool const is_bad = meaning.verdict == OrderVerdict::Bad;
    PrintJson(out, Json{{"parameter", ToJson(question.parameter)},
                        {"base_order", ToJson(question.base_order)},
                        {"definition", ToUtf8(question.definition)},
                        {"verdict", VerdictWord(meaning.verdict)},
                        {"fault", std::move(fault)},
                        {"positions", std::move(positions)},
                        {"written", is_bad ? 0 : meaning.text.positions.size()},
                        {"series", is_bad ? Json(nullptr) : JsonSeries(meaning)},
                        {"cut", meaning.text.is_cut},
                        {"intervals", std::move(intervals)}});
}

} // namespace

char const* VerdictWord(OrderVerdict verdict) {
    switch (verdict) {
    case OrderVerdict::Good:
        return "good";
    case OrderVerdict::Bad:
        return "bad";
    case OrderVerdict::Odd:
        return "odd";
    case OrderVerdict::Empty:
        break;
    }
    return "empty";
}

OrderVerdict PrintOrder(std::ostream& out, OrderQuestion const& question, ReportFormat format) {
    OrderMeaning const meaning = MeaningOf(question.definition);
    if (format == ReportFormat::Json)
        PrintDocument(out, question, meaning);
    else
        PrintText(out, question, meaning);
    return meaning.verdict;
}

} // namespace paramdb::tools
