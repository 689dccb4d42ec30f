#include "tools/command.h"

#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <new>
#include <ostream>
#include <stdexcept>

namespace paramdb::tools {
namespace {

ExitCode RunVerb(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err) {
    CLI::App command("The parameter database of the test bench: load and examine parameter files.",
                     "paramdb");
    command.set_version_flag("--version", "paramdb " PARAMDB_VERSION, "Print the version and exit");
    command.set_help_flag("-h,--help", "Print this help and exit");
    command.allow_windows_style_options(false); // a leading slash begins a path
    command.require_subcommand(1);
    command.footer(std::string("`paramdb SUBCOMMAND --help` tells about one of them.\n\n") + ExitCodeHelp);

    auto const verbs = MakeVerbs();
    std::vector<CLI::App*> parsers;
    for (auto const& verb : verbs)
        parsers.push_back(&verb->AddTo(command));

    try {
        command.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (CLI::Error const& end) { // help and version come this way too
        return command.exit(end, out, err) == 0 ? ExitCode::Clean : ExitCode::NoLoad;
    }

    for (std::size_t index = 0; index < verbs.size(); ++index) {
        if (parsers[index]->parsed())
            return verbs[index]->Run(out, err);
    }
    return ExitCode::NoLoad;
}

} // namespace

int RunCommand(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err) {
    ExitCode code = ExitCode::NoLoad;
    try {
        code = RunVerb(arguments, out, err);
    } catch (std::bad_alloc const&) {
        err << "paramdb: out of memory\n";
    } catch (std::exception const& fault) {
        err << "paramdb: " << fault.what() << '\n';
    }
    if (!out.flush()) {
        err << "paramdb: standard output: cannot be written\n";
        code = ExitCode::NoLoad;
    }
    return static_cast<int>(code);
}

} // namespace paramdb::tools
