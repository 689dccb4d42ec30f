// `paramdb completion`: prints the script with which a shell completes the command.
#include "tools/completion.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class CompletionVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        m_command = &command;
        CLI::App& verb = *command.add_subcommand(
            "completion", "Print the script with which a shell completes this command");
        verb.add_option("SHELL", m_shell, "The shell: bash, zsh or fish")
            ->required()
            ->check(CLI::IsMember({"bash", "zsh", "fish"}))
            ->type_name("");
        verb.footer("An installation puts the scripts where the shells look for them. For one session:\n"
                    "  bash  source <(paramdb completion bash)\n"
                    "  zsh   source <(paramdb completion zsh)\n"
                    "  fish  paramdb completion fish | source\n"
                    "\n"
                    "Examples:\n"
                    "  paramdb completion bash > paramdb.bash\n"
                    "  paramdb completion fish\n"
                    "\n"
                    "Exit codes:\n"
                    "  0  printed\n"
                    "  2  no such shell");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream&) override {
        CommandNode const command = DescribeCommand(*m_command);
        if (m_shell == "bash")
            out << BashCompletion(command);
        else if (m_shell == "zsh")
            out << ZshCompletion(command);
        else
            out << FishCompletion(command);
        return ExitCode::Clean;
    }

private:
    CLI::App const* m_command = nullptr; // lives as long as the run
    std::string m_shell;
};

} // namespace

std::unique_ptr<Verb> MakeCompletionVerb() {
    return std::make_unique<CompletionVerb>();
}

} // namespace paramdb::tools
