// `paramdb rotors`: loads parameter files and lists rotors with their ratios, speed sources and order
// sources.
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/report.h"
#include "tools/rotor_listing.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class RotorsVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "rotors", "Load parameter files and list the rotors with their ratios and order sources");
        AddFilesArgument(verb, m_files);
        auto* const mode =
            verb.add_option("-m,--mode", m_mode, "The rotors in the gear of this mode")->type_name("ID");
        verb.add_option("-p,--physical-mode", m_physical_mode, "The rotors of this physical mode")
            ->type_name("ID")
            ->excludes(mode);
        AddFormatOption(verb, m_format);
        verb.footer(std::string("Example:\n"
                                "  paramdb rotors gearbox.lake --mode 11\n\n") +
                    ExitCodeHelp + "\nThat there is no rotor to list is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const load = LoadFiles(m_files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        CQtParamInstance const parameters;
        auto physical_mode = m_physical_mode;
        if (m_mode)
            physical_mode = parameters.PhysModeId(*m_mode);
        auto const list = physical_mode == -1 && m_mode ? std::vector<PhysicalModeRotors>()
                                                        : CollectRotors(parameters, physical_mode);
        if (list.empty())
            err << "paramdb: " << WhyNone(physical_mode) << '\n';
        if (!list.empty() || m_format == ReportFormat::Json)
            PrintRotors(out, list, m_format);
        return list.empty() ? ExitCode::Findings : ExitCodeOf(*load);
    }

private:
    std::string WhyNone(std::optional<int> physical_mode) const {
        if (m_mode && physical_mode == -1)
            return "mode " + std::to_string(*m_mode) + " has no physical mode";
        if (physical_mode)
            return "physical mode " + std::to_string(*physical_mode) + " has no rotors";
        return "there are no rotors";
    }

    std::vector<std::string> m_files;
    std::optional<int> m_mode;
    std::optional<int> m_physical_mode;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeRotorsVerb() {
    return std::make_unique<RotorsVerb>();
}

} // namespace paramdb::tools
