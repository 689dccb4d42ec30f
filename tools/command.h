// The `paramdb` command without its process: arguments in, text and an exit code out.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace paramdb::tools {

// Runs the command with these arguments, which are UTF-8 and do not hold the program's name. Answers go to
// `out`, messages and faults to `err`. Returns 0, 1 or 2 (see ExitCode), also 2 if `out` does not take the
// answer. Throws nothing. Uses the process-wide sources, tables and message sink, so only one run at a time.
int RunCommand(std::vector<std::string> const& arguments, std::ostream& out, std::ostream& err);

} // namespace paramdb::tools
