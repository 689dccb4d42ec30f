// `paramdb name`: loads parameter files and tells the name of an id.
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

class NameVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand("name", "Load parameter files and tell the name of an id");
        AddLastWordsArgument(verb, m_words, "KIND ID");
        AddFormatOption(verb, m_format);
        verb.footer("KIND is one of\n  " + KindList() +
                    ".\nAn id of a mode may be that of a virtual mode. For an ID with a minus put -- before "
                    "the files.\n\n"
                    "Example:\n"
                    "  paramdb name gearbox.lake mode 11\n\n" +
                    ExitCodeHelp + "\nAn id that is not there, or has no name, is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const split = SplitLastWords(m_words, 2);
        if (!split) {
            err << "paramdb: a KIND and an ID are required behind the files\n";
            return ExitCode::NoLoad;
        }
        Kind const* const kind = FindKind(split->words[0]);
        if (kind == nullptr) {
            err << "paramdb: " << UnknownKind(split->words[0], m_words.front());
            return ExitCode::NoLoad;
        }
        std::wstring const word = FromUtf8(split->words[1]);
        auto const id = ReadId(word);
        if (!id) {
            err << "paramdb: " << ShownWord(word)
                << ": the ID is a number of 32 bits; `paramdb id` looks for a name\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(split->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        return Answer(*kind, *id, out, err) ? ExitCodeOf(*load) : ExitCode::Findings;
    }

private:
    bool Answer(Kind const& kind, int id, std::ostream& out, std::ostream& err) const {
        auto const name = NameOf(kind, CQtParamInstance(), id);
        auto const near = name ? std::vector<NamedId>() : NearestIds(id, RowsOf(kind));
        bool const is_named = name && !name->empty();
        if (!name)
            err << "paramdb: " << id << ": no such " << kind.word << DidYouMean(near) << '\n';
        else if (!is_named)
            err << "paramdb: " << kind.word << ' ' << id << " has no name\n";
        if (m_format == ReportFormat::Json)
            PrintJson(out, JsonAnswer(kind, id, name, near));
        else if (is_named)
            out << Printable(*name) << '\n';
        return is_named;
    }

    static Json JsonAnswer(Kind const& kind, int id, std::optional<std::wstring> const& name,
                           std::vector<NamedId> const& near) {
        Json nearest = Json::array();
        for (NamedId const& row : near)
            nearest.push_back({{"id", row.id}, {"name", JsonText(row.name)}});
        return {{"kind", kind.word},
                {"id", id},
                {"name", JsonText(name.value_or(L""))},
                {"is_there", name.has_value()},
                {"nearest", std::move(nearest)}};
    }

    std::vector<std::string> m_words;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeNameVerb() {
    return std::make_unique<NameVerb>();
}

} // namespace paramdb::tools
