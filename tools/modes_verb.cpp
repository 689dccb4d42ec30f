// `paramdb modes`: loads parameter files and lists the modes and the layout of virtual modes.
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/mode_listing.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>

namespace paramdb::tools {
namespace {

class ModesVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "modes", "Load parameter files and list the modes and the layout of virtual modes");
        AddFilesArgument(verb, m_files);
        AddFormatOption(verb, m_format);
        verb.footer(std::string("Example:\n"
                                "  paramdb modes gearbox.lake customer.lake\n\n") +
                    ExitCodeHelp);
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const load = LoadFiles(m_files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        PrintModeListing(out, CQtParamInstance(), m_format);
        return ExitCodeOf(*load);
    }

private:
    std::vector<std::string> m_files;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeModesVerb() {
    return std::make_unique<ModesVerb>();
}

} // namespace paramdb::tools
