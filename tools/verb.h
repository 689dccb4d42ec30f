// A verb of the command: `paramdb load` is one.
//
// Each verb stands in a file of its own as a class that nobody else sees, made by one function that verbs.cpp
// lists. The files to load come in through sources.h and loading.h, the answer goes out through report.h.
#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

// What the command answers to its caller. The verbs that compare or search use Findings for a difference or a
// miss.
enum class ExitCode { Clean = 0, Findings = 1, NoLoad = 2 };

// The exit codes in the words of a help text, to stand at its end.
extern char const* const ExitCodeHelp;

class Verb {
public:
    Verb() = default;
    Verb(Verb const&) = delete;
    Verb& operator=(Verb const&) = delete;
    virtual ~Verb() = default;

    // Adds the verb with its arguments to the command and returns what was added. The arguments are stored in
    // this object, which must outlive the parsing.
    virtual CLI::App& AddTo(CLI::App& command) = 0;

    // Does the work, after the arguments have been parsed. The answer goes to `out`; messages of the library
    // and faults go to `err`.
    virtual ExitCode Run(std::ostream& out, std::ostream& err) = 0;
};

// All verbs, new, in the order of the help text.
std::vector<std::unique_ptr<Verb>> MakeVerbs();

} // namespace paramdb::tools
