#include "tools/completion.h"

namespace paramdb::tools {
namespace {

constexpr char Begin[] = R"sh(# Completion of paramdb in fish; `paramdb completion fish` prints it.

# Whether the words so far have chosen this subcommand, "" for none.
function __paramdb_is
    set -l verb ''
    for word in (commandline -opc)
        switch "$verb:$word"
)sh";

constexpr char Middle[] = R"sh(        end
    end
    test "$verb" = "$argv[1]"
end

complete -c paramdb -f
)sh";

std::string Quoted(std::string const& text) {
    std::string quoted = "'";
    for (char const character : text) {
        if (character == '\\' || character == '\'')
            quoted += '\\';
        quoted += character == '\n' ? ' ' : character;
    }
    return quoted + '\'';
}

std::string Condition(CommandNode const& node) {
    return "-n " + Quoted("__paramdb_is " + Quoted(node.path));
}

void AddOption(std::string& script, std::string const& begin, CommandOption const& option) {
    script += begin;
    for (std::string const& name : option.names)
        script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.takes_file)
        script += " -r -F";
    else if (!option.is_flag)
        script += option.values.empty() ? " -x" : " -x -a " + Quoted(Joined(option.values, " "));
    script += " -d " + Quoted(option.help) + '\n';
}

} // namespace

std::string FishCompletion(CommandNode const& command) {
    auto const nodes = AllNodes(command);
    std::string script = Begin;
    for (CommandNode const* node : nodes)
        for (CommandNode const& verb : node->verbs)
            script += "            case " + Quoted(node->path + ':' + verb.name) +
                      "\n                set verb " + Quoted(verb.path) + '\n';
    script += Middle;
    for (CommandOption const& option : command.options)
        AddOption(script, "complete -c paramdb", option);
    for (CommandNode const* node : nodes) {
        std::string const begin = "complete -c paramdb " + Condition(*node);
        for (CommandNode const& verb : node->verbs)
            script += begin + " -a " + Quoted(verb.name) + " -d " + Quoted(verb.about) + '\n';
        if (node == &command)
            continue;
        for (CommandOption const& option : node->options)
            if (option.names.back() != "--help") // which the command has too
                AddOption(script, begin, option);
        if (!node->word_values.empty())
            script += begin + " -a " + Quoted(Joined(node->word_values, " ")) + '\n';
        if (node->takes_files)
            script += begin + " -F\n";
    }
    return script;
}

} // namespace paramdb::tools
