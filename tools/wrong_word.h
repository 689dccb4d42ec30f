// What to tell about a word of the command line that nothing takes, with what may be meant by it.
#pragma once

#include <string>

namespace CLI {
class App;
}

namespace paramdb::tools {

// After a parsing that failed: "paramdb: --fromat: no such option; did you mean --format?" for the first
// option that is none, or "paramdb: lod: no such subcommand; did you mean load?" for a word where a
// subcommand should stand. Empty if there is neither.
std::string WrongWordText(CLI::App const& command);

} // namespace paramdb::tools
