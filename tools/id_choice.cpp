#include "tools/id_choice.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/id_words.h"
#include "tools/kinds.h"
#include "tools/nearest_names.h"
#include "tools/report.h"

#include <algorithm>
#include <functional>
#include <ostream>

namespace paramdb::tools {
namespace {

using Accepts = std::function<bool(int id)>;

// A choice among the ids of a kind that are accepted.
class Choice {
public:
    Choice(Kind const& kind, CQtParamInstance const& parameters, Accepts accepts)
        : m_kind(kind), m_parameters(parameters), m_accepts(std::move(accepts)) {}

    std::vector<int> Ids(std::string const& word) const {
        auto const number = ReadId(FromUtf8(word));
        if (number && NameOf(m_kind, m_parameters, *number))
            return Accepted({*number});
        return Accepted(IdsOf(m_kind, m_parameters, FromUtf8(word)));
    }

    // "; did you mean ...?"
    std::string Suggestion(std::string const& word) const {
        auto rows = RowsOf(m_kind);
        std::erase_if(rows, [this](NamedId const& row) { return !m_accepts(row.id); });
        auto const number = ReadId(FromUtf8(word));
        return DidYouMean(number ? NearestIds(*number, rows) : NearestNames(FromUtf8(word), rows));
    }

private:
    std::vector<int> Accepted(std::vector<int> ids) const {
        std::erase_if(ids, [this](int id) { return !m_accepts(id); });
        return ids;
    }

    Kind const& m_kind;
    CQtParamInstance const& m_parameters;
    Accepts m_accepts;
};

void TellMiss(std::ostream& err, std::string const& word, std::string const& what,
              std::string const& suggestion) {
    err << "paramdb: " << ShownWord(FromUtf8(word)) << ": no such " << what << suggestion << '\n';
}

void TellCandidates(std::ostream& err, std::string const& word, std::vector<int> const& ids,
                    CQtParamInstance const& parameters) {
    err << "paramdb: " << Printable(FromUtf8(word)) << ": " << ids.size()
        << " parameters have that name; choose one by its id or with --instrument\n";
    using enum TextTable::Align;
    TextTable table({Right, Left});
    table.Add({"Parameter", "Instrument"});
    for (int const id : ids) {
        int const instrument = parameters.InstrumentParameterToInstrument(id);
        table.Add({std::to_string(id), Shown(Named(parameters.Instrument(), instrument))});
    }
    table.Print(err);
}

} // namespace

std::optional<int> ChooseId(std::string_view kind, std::string const& word,
                            CQtParamInstance const& parameters, std::ostream& err) {
    Choice const choice(*FindKind(kind), parameters, [](int) { return true; });
    auto const ids = choice.Ids(word);
    if (!ids.empty())
        return ids.front();
    TellMiss(err, word, std::string(kind), choice.Suggestion(word));
    return std::nullopt;
}

std::optional<int> ChooseParameter(std::string const& word, std::optional<int> instrument,
                                   CQtParamInstance const& parameters, std::ostream& err) {
    Choice const choice(*FindKind("parameter"), parameters, [&](int id) {
        return !instrument || parameters.InstrumentParameterToInstrument(id) == *instrument;
    });
    auto const ids = choice.Ids(word);
    if (ids.size() == 1)
        return ids.front();
    if (ids.empty()) {
        std::string what = "parameter";
        if (instrument)
            what.append(" of instrument ").append(std::to_string(*instrument));
        TellMiss(err, word, what, choice.Suggestion(word));
    } else {
        TellCandidates(err, word, ids, parameters);
    }
    return std::nullopt;
}

} // namespace paramdb::tools
