// `paramdb load`: reads parameter files, loads them and reports what was found.
#include "tools/load_report.h"
#include "tools/loading.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>

namespace paramdb::tools {
namespace {

class LoadVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "load", "Read parameter files, merge them in their order, load them, report");
        AddFilesArgument(verb, m_files);
        AddFormatOption(verb, m_format);
        verb.footer(std::string("Example:\n"
                                "  paramdb load gearbox.lake customer.lake\n\n") +
                    ExitCodeHelp);
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const load = LoadFiles(m_files, err);
        if (!load)
            return ExitCode::NoLoad;
        PrintLoadReport(out, *load, m_format);
        return ExitCodeOf(*load);
    }

private:
    std::vector<std::string> m_files;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeLoadVerb() {
    return std::make_unique<LoadVerb>();
}

} // namespace paramdb::tools
