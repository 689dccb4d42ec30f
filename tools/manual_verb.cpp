// `paramdb man`: prints the manual page.
#include "tools/manual.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class ManualVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        m_command = &command;
        CLI::App& verb = *command.add_subcommand("man", "Print the manual page of this command for man");
        verb.footer("An installation puts the page where man looks for it.\n"
                    "\n"
                    "Examples:\n"
                    "  paramdb man > paramdb.1\n"
                    "\n"
                    "Exit codes:\n"
                    "  0  printed\n"
                    "  2  wrong arguments");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream&) override {
        std::string version = m_command->version();
        version.erase(version.find_last_not_of('\n') + 1);
        out << ManualPage(DescribeCommand(*m_command), version);
        return ExitCode::Clean;
    }

private:
    CLI::App const* m_command = nullptr; // lives as long as the run
};

} // namespace

std::unique_ptr<Verb> MakeManualVerb() {
    return std::make_unique<ManualVerb>();
}

} // namespace paramdb::tools
