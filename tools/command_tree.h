// The command as data: its subcommands, what they take, what they say about it. Shell completion and the
// manual page are made of it, so that they have whatever a verb adds to the command.
#pragma once

#include "tools/help_notes.h"

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

// An option, or a word without name such as FILE.
struct CommandOption {
    std::vector<std::string> names = {};  // as they are typed: "-t", "--table"; one without dash for a word
    std::string label = {};               // of the value, such as "TAG"; empty for a flag, and for a word
    std::vector<std::string> values = {}; // all that it takes, where they are known
    bool is_flag = false;
    bool takes_file = false; // the value is the name of a file
    bool is_required = false;
    bool is_repeated = false;
    std::string help = {};
};

struct CommandNode {
    std::string name;               // "load"
    std::string path;               // what is typed behind "paramdb": "db list"; empty for the command itself
    std::string about;              // in a sentence without point
    std::vector<std::string> usage; // lines such as "paramdb load [OPTIONS] FILE..."
    std::vector<CommandOption> options;
    std::vector<CommandOption> words;
    std::vector<std::string> word_values; // what a word may be beside a file, or instead of one
    bool takes_files = false;             // whether words are names of files
    HelpNotes notes;
    std::vector<CommandNode> verbs;
};

// The tree below the command. What is hidden from its help is left out.
CommandNode DescribeCommand(CLI::App const& command);

// The node itself and all below it, in the order of the help.
std::vector<CommandNode const*> AllNodes(CommandNode const& command);

// Texts with a separator between them.
std::string Joined(std::vector<std::string> const& texts, std::string const& separator);

} // namespace paramdb::tools
