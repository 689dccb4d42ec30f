// The manual page paramdb(1), made from the command as data (command_tree.h).
#pragma once

#include "tools/command_tree.h"

#include <string>

namespace paramdb::tools {

// The page in the language of man(7), as ASCII text. The version stands at its foot: "paramdb 1.0.0".
std::string ManualPage(CommandNode const& command, std::string const& version);

} // namespace paramdb::tools
