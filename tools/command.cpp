#include "tools/command.h"

#include "tools/colour.h"
#include "tools/quiet.h"
#include "tools/terminal.h"
#include "tools/verb.h"
#include "tools/wrong_word.h"

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <map>
#include <new>
#include <ostream>
#include <stdexcept>

namespace paramdb::tools {
namespace {

// What every subcommand takes, before its name or behind it.
struct CommonOptions {
    bool is_quiet = false;
    ColourChoice colour = ColourChoice::Auto;
};

void AddCommonOptions(CLI::App& command, CommonOptions& options) {
    command.add_flag("-q,--quiet", options.is_quiet,
                     "Print the answer alone: no messages of the load, no progress, no summary");
    static std::map<std::string, ColourChoice> const choices{
        {"auto", ColourChoice::Auto}, {"always", ColourChoice::Always}, {"never", ColourChoice::Never}};
    command
        .add_option_function<std::string>(
            "--color", [&options](std::string const& name) { options.colour = choices.at(name); },
            "When to use colours; auto: on a terminal, unless NO_COLOR is set (default: auto)")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->type_name("WHEN")
        ->take_last();
}

// Lets each subcommand leave to the command what it does not know itself.
void LeaveTheRestToParents(CLI::App& command) {
    for (CLI::App* const verb : command.get_subcommands([](CLI::App*) { return true; })) {
        verb->fallthrough();
        LeaveTheRestToParents(*verb);
    }
}

// The help of the subcommand that was asked for, or of the command. A group of hidden options leaves a second
// blank line there.
std::string HelpText(CLI::App const& command) {
    std::string text = command.help();
    for (std::size_t place = text.find("\n\n\n"); place != text.npos; place = text.find("\n\n\n", place))
        text.erase(place, 1);
    return text;
}

// The options of the run, on a stream while it lives.
class StreamOptions {
public:
    StreamOptions(std::ostream& stream, CommonOptions const& options) : m_stream(stream) {
        SetQuiet(stream, options.is_quiet);
        SetColoured(stream, WantsColour(options.colour, IsColourTerminal(stream), std::getenv("NO_COLOR"),
                                        std::getenv("TERM")));
    }
    StreamOptions(StreamOptions const&) = delete;
    StreamOptions& operator=(StreamOptions const&) = delete;
    ~StreamOptions() {
        SetQuiet(m_stream, false);
        SetColoured(m_stream, false);
    }

private:
    std::ostream& m_stream;
};

ExitCode RunVerb(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err) {
    CLI::App command("The parameter database of the test bench: load and examine parameter files.",
                     "paramdb");
    command.set_version_flag("--version", "paramdb " PARAMDB_VERSION, "Print the version and exit");
    command.set_help_flag("-h,--help", "Print this help and exit");
    command.allow_windows_style_options(false); // a leading slash begins a path
    command.require_subcommand(1);
    command.footer(
        std::string("`paramdb SUBCOMMAND --help` tells about one of them. The options stand before the\n"
                    "subcommand or behind it. Answers go to standard output, all else to standard error.\n"
                    "\n") +
        ExitCodeHelp);
    CommonOptions options;
    AddCommonOptions(command, options);

    auto const verbs = MakeVerbs();
    std::vector<CLI::App*> parsers;
    for (auto const& verb : verbs)
        parsers.push_back(&verb->AddTo(command));
    LeaveTheRestToParents(command);

    try {
        command.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (CLI::CallForHelp const&) {
        out << HelpText(command);
        return ExitCode::Clean;
    } catch (CLI::Success const& end) { // version
        command.exit(end, out, err);
        return ExitCode::Clean;
    } catch (CLI::Error const& fault) {
        std::string const wrong_word = WrongWordText(command);
        if (wrong_word.empty())
            command.exit(fault, out, err);
        else
            err << wrong_word << "Run with --help for more information.\n";
        return ExitCode::NoLoad;
    }

    StreamOptions const out_options(out, options);
    StreamOptions const err_options(err, options);
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
