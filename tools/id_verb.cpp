// `paramdb id`: loads parameter files and tells which ids have a name.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/id_words.h"
#include "tools/last_words.h"
#include "tools/loading.h"
#include "tools/nearest_names.h"
#include "tools/report.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

Kind const& InstrumentKind() {
    return Kinds()[Clavis::qInstrument];
}

class IdVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand("id", "Load parameter files and tell which ids have a name");
        AddLastWordsArgument(verb, m_words, "KIND NAME");
        verb.add_option("-i,--instrument", m_instrument,
                        "Only parameters of this instrument, an id or a name")
            ->type_name("INSTRUMENT");
        AddFormatOption(verb, m_format);
        verb.footer("KIND is one of\n  " + KindList() +
                    ".\nParameters of several instruments may have one name: all of them are listed. "
                    "Where\nseveral rows have the name, the first id is the one that a host gets.\n\n"
                    "Examples:\n"
                    "  paramdb id gearbox.lake mode '1. gear drive'\n"
                    "  paramdb id gearbox.lake parameter 'Mesh H1' --instrument 1001\n\n" +
                    ExitCodeHelp + "\nA name that is not there is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const split = SplitLastWords(m_words, 2);
        if (!split) {
            err << "paramdb: a KIND and a NAME are required behind the files\n";
            return ExitCode::NoLoad;
        }
        Kind const* const kind = FindKind(split->words[0]);
        if (kind == nullptr) {
            err << "paramdb: " << UnknownKind(split->words[0], m_words.front());
            return ExitCode::NoLoad;
        }
        if (m_instrument && kind != &Kinds()[Clavis::qInstrParam]) {
            err << "paramdb: --instrument goes with the kind parameter alone\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(split->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        bool const is_found = Answer(*kind, FromUtf8(split->words[1]), out, err);
        return is_found ? ExitCodeOf(*load) : ExitCode::Findings;
    }

private:
    // An id with the instrument of a parameter; none for another kind.
    struct Found {
        int id;
        NamedId instrument;
    };

    static NamedId InstrumentOf(int parameter) {
        CQtParamInstance const parameters;
        int const instrument = parameters.InstrumentParameterToInstrument(parameter);
        return Named(parameters.Instrument(), instrument);
    }

    // The instrument of the option; none, and a line on the stream, if there is no such one.
    std::optional<NamedId> ChosenInstrument(std::ostream& err) const {
        CQtParamInstance const parameters;
        std::wstring const word = FromUtf8(*m_instrument);
        auto const rows = RowsOf(InstrumentKind());
        std::vector<NamedId> near;
        if (auto const id = ReadId(word)) {
            if (parameters.IsValidInstrument(*id))
                return Named(parameters.Instrument(), *id);
            near = NearestIds(*id, rows);
        } else {
            auto const ids = IdsOf(InstrumentKind(), parameters, word);
            if (!ids.empty())
                return NamedId{ids.front(), word};
            near = NearestNames(word, rows);
        }
        err << "paramdb: " << ShownWord(word) << ": no such instrument" << DidYouMean(near) << '\n';
        return std::nullopt;
    }

    bool Answer(Kind const& kind, std::wstring const& name, std::ostream& out, std::ostream& err) const {
        std::vector<Found> found;
        std::vector<NamedId> near;
        std::optional<NamedId> instrument;
        if (m_instrument)
            instrument = ChosenInstrument(err);
        if (instrument || !m_instrument) {
            auto const is_meant = [&](int id) {
                return !instrument || InstrumentOf(id).id == instrument->id;
            };
            bool const has_instrument = &kind == &Kinds()[Clavis::qInstrParam];
            for (int const id : IdsOf(kind, CQtParamInstance(), name)) {
                if (is_meant(id))
                    found.push_back({id, has_instrument ? InstrumentOf(id) : NamedId()});
            }
            if (found.empty()) {
                auto rows = RowsOf(kind);
                std::erase_if(rows, [&](NamedId const& row) { return !is_meant(row.id); });
                near = NearestNames(name, rows);
                err << "paramdb: " << ShownWord(name) << ": no such " << kind.word
                    << (instrument ? " of instrument " + Shown(*instrument) : "") << DidYouMean(near) << '\n';
            }
        }
        if (m_format == ReportFormat::Json)
            PrintJson(out, JsonAnswer(kind, name, found, near));
        else
            PrintText(out, found);
        return !found.empty();
    }

    // One id stands by itself; parameters of several instruments are told apart.
    static void PrintText(std::ostream& out, std::vector<Found> const& found) {
        using enum TextTable::Align;
        TextTable table({Right, Left});
        bool const are_several = found.size() > 1;
        if (are_several && found.front().instrument.id != -1)
            table.Add({"Parameter", "Instrument"});
        for (Found const& entry : found)
            table.Add({std::to_string(entry.id), are_several ? Shown(entry.instrument) : ""});
        table.Print(out);
    }

    static Json JsonAnswer(Kind const& kind, std::wstring const& name, std::vector<Found> const& found,
                           std::vector<NamedId> const& near) {
        Json list = Json::array();
        for (Found const& entry : found) {
            list.push_back({{"id", entry.id}});
            if (&kind == &Kinds()[Clavis::qInstrParam])
                list.back()["instrument"] = ToJson(entry.instrument);
        }
        Json nearest = Json::array();
        for (NamedId const& row : near)
            nearest.push_back({{"id", row.id}, {"name", JsonText(row.name)}});
        return {{"kind", kind.word},
                {"name", ToUtf8(name)},
                {"found", std::move(list)},
                {"nearest", std::move(nearest)}};
    }

    std::vector<std::string> m_words;
    std::optional<std::string> m_instrument;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeIdVerb() {
    return std::make_unique<IdVerb>();
}

} // namespace paramdb::tools
