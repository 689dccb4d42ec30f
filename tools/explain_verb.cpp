// `paramdb explain`: all about one instrument parameter.
#include <paramdb/query/param_instance.h>

#include "tools/id_choice.h"
#include "tools/language_option.h"
#include "tools/loading.h"
#include "tools/outer_word.h"
#include "tools/parameter_report.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class ExplainVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb =
            *command.add_subcommand("explain", "Load parameter files and explain an instrument parameter");
        AddLastWordsArgument(verb, m_words, "PARAMETER");
        verb.add_option("-i,--instrument", m_instrument, "The parameter of that name under this instrument")
            ->type_name("ID");
        AddDriveOptions(verb, m_options);
        AddLanguageOption(verb, m_language);
        AddFormatOption(verb, m_format);
        verb.footer(
            std::string(
                "PARAMETER is an id or a name. Mode, rotor and gear that are not given are chosen by\n"
                "the parameter; the report says which and why. With a speed, bands of orders are\n"
                "shown in Hz too.\n\n"
                "Examples:\n"
                "  paramdb explain gearbox.lake 1025 --rpm 3000\n"
                "  paramdb explain gearbox.lake 'Mesh H1' --mode 41 --lang de\n\n") +
            ExitCodeHelp + "\nThat there is no such parameter, or several of that name, is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const words = SplitOuterWord(m_words);
        if (!words) {
            err << "paramdb: a FILE is required before the PARAMETER\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(words->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        CQtParamInstance const parameters;
        auto const parameter = ChooseParameter(words->words.front(), m_instrument, parameters, err);
        if (!parameter ||
            (m_options.mode && !ChooseId("mode", std::to_string(*m_options.mode), parameters, err)))
            return ExitCode::Findings;
        LanguageInForce const language(m_language);
        PrintParameter(out, ExplainParameter(parameters, *parameter, m_options), m_format);
        return ExitCodeOf(*load);
    }

private:
    std::vector<std::string> m_words;
    std::optional<int> m_instrument;
    DriveOptions m_options;
    std::optional<CLibMgr::Language> m_language;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeExplainVerb() {
    return std::make_unique<ExplainVerb>();
}

} // namespace paramdb::tools
