// Completion of the command in shells: a script for each, made from the command as data (command_tree.h).
//
// A script completes subcommands, options, the values that are known beforehand (formats, languages, kinds,
// tags of tables, codes of findings), and names of files. It never runs the command.
#pragma once

#include "tools/command_tree.h"

#include <string>

namespace paramdb::tools {

std::string BashCompletion(CommandNode const& command);
std::string ZshCompletion(CommandNode const& command);
std::string FishCompletion(CommandNode const& command);

} // namespace paramdb::tools
