// `paramdb interval`: where the intervals of an order definition lie in one measurement.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/id_choice.h"
#include "tools/interval_report.h"
#include "tools/loading.h"
#include "tools/outer_word.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class IntervalFormatter : public CLI::Formatter {
public:
    std::string make_usage(CLI::App const*, std::string name) const override {
        return "Usage: " + name + " [OPTIONS] FILE... DEFINITION\n       " + name +
               " [OPTIONS] FILE... --parameter ID\n";
    }
};

class IntervalVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "interval", "Load parameter files and place the intervals of an order definition");
        verb.formatter(std::make_shared<IntervalFormatter>());
        verb.add_option("FILE", m_words, "Parameter files as for load, then without --parameter a definition")
            ->required()
            ->type_name("");
        verb.add_option("-p,--parameter", m_parameter,
                        "The definition of this instrument parameter, an id or a name")
            ->type_name("ID");
        AddDriveOptions(verb, m_options);
        verb.add_option("-n,--lines", m_line_count, "How many lines the spectrum has (default: no end)")
            ->type_name("N");
        AddFormatOption(verb, m_format);
        verb.footer(
            std::string("Mode, rotor and gear that are not given are chosen by the parameter; the report\n"
                        "says which and why. A band of orders stays in orders; with a speed it is shown in\n"
                        "Hz too. --lines and --line-distance are those of the spectrum; its distance is in\n"
                        "orders where the band is.\n\n"
                        "Examples:\n"
                        "  paramdb interval gearbox.lake 'H1-L2;H1+L2' --mode 11 --rotor 1 --gear 90\n"
                        "  paramdb interval gearbox.lake --parameter 1025 --rpm 3000 -d 0.5 -n 1024\n\n") +
            ExitCodeHelp + "\nAn interval that cannot be placed is a finding, and none as well.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        std::string definition;
        auto const files = Files(definition, err);
        if (files.empty())
            return ExitCode::NoLoad;
        auto const load = LoadFiles(files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;

        CQtParamInstance const parameters;
        if (m_options.mode && !ChooseId("mode", std::to_string(*m_options.mode), parameters, err))
            return ExitCode::Findings;
        int parameter = -1;
        std::wstring text = FromUtf8(definition);
        if (m_parameter) {
            auto const chosen = ChooseParameter(*m_parameter, std::nullopt, parameters, err);
            if (!chosen || !TakeDefinition(parameters, *chosen, text, err))
                return ExitCode::Findings;
            parameter = *chosen;
        }
        DriveQuestion const question{.parameter = parameter,
                                     .gear = BaseOrderReference(parameters, parameter),
                                     .trigger = parameters.TriggerId(parameter)};
        auto const report =
            MakeIntervalReport(parameters, parameter, text, ChooseDrive(parameters, m_options, question),
                               m_options, m_line_count);
        Print(out, err, report);
        return report.HasFault() ? ExitCode::Findings : ExitCodeOf(*load);
    }

private:
    // The files and the definition; no files after telling what is wrong.
    std::vector<std::string> Files(std::string& definition, std::ostream& err) const {
        if (m_parameter)
            return m_words;
        auto const split = SplitOuterWord(m_words);
        if (!split || IsFile(split->words.front())) {
            err << "paramdb: files and a DEFINITION are required; for one that is in a file, add "
                   "--parameter ID\n";
            return {};
        }
        definition = split->words.front();
        return split->files;
    }

    static bool TakeDefinition(CQtParamInstance const& parameters, int parameter, std::wstring& text,
                               std::ostream& err) {
        wchar_t const* const definition =
            parameters.SpecIntervalDefinition(static_cast<unsigned int>(parameter));
        if (definition == nullptr) {
            err << "paramdb: parameter " << parameter
                << " has no order definition; <TIpSpectralValue> and <TIpSpectralTrack> have them\n";
            return false;
        }
        text = definition;
        return true;
    }

    void Print(std::ostream& out, std::ostream& err, IntervalReport const& report) const {
        if (report.meaning.verdict != OrderVerdict::Good)
            err << "paramdb: " << Printable(report.definition) << ": no intervals, the definition is "
                << VerdictWord(report.meaning.verdict) << "; `paramdb order` explains it\n";
        if (m_format == ReportFormat::Json) {
            PrintJson(out, ToJson(report));
            return;
        }
        if (report.meaning.verdict != OrderVerdict::Good)
            return;
        PrintDrive(out, report, true);
        out << '\n';
        PrintBands(out, report);
    }

    std::vector<std::string> m_words;
    std::optional<std::string> m_parameter;
    DriveOptions m_options;
    unsigned int m_line_count = 0;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeIntervalVerb() {
    return std::make_unique<IntervalVerb>();
}

} // namespace paramdb::tools
