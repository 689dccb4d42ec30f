#include "tools/completion.h"

namespace paramdb::tools {
namespace {

constexpr char FishBegin[] = R"sh(# Completion of paramdb in fish; `paramdb completion fish` prints it.

# Whether the words so far have chosen this subcommand, "" for none.
function __paramdb_is
    set -l verb ''
    for word in (commandline -opc)
        switch "$verb:$word"
)sh";

constexpr char FishMiddle[] = R"sh(        end
    end
    test "$verb" = "$argv[1]"
end

complete -c paramdb -f
)sh";

std::string FishQuoted(std::string const& text) {
    std::string quoted = "'";
    for (char const character : text) {
        if (character == '\\' || character == '\'')
            quoted += '\\';
        quoted += character == '\n' ? ' ' : character;
    }
    return quoted + '\'';
}

std::string Condition(CommandNode const& node) {
    return "-n " + FishQuoted("__paramdb_is " + FishQuoted(node.path));
}

void AddOption(std::string& script, std::string const& begin, CommandOption const& option) {
    script += begin;
    for (std::string const& name : option.names)
        script += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.takes_file)
        script += " -r -F";
    else if (!option.is_flag)
        script += option.values.empty() ? " -x" : " -x -a " + FishQuoted(Joined(option.values, " "));
    script += " -d " + FishQuoted(option.help) + '\n';
}

} // namespace

std::string FishCompletion(CommandNode const& command) {
    auto const nodes = AllNodes(command);
    std::string script = FishBegin;
    for (CommandNode const* node : nodes)
        for (CommandNode const& verb : node->verbs)
            script += "            case " + FishQuoted(node->path + ':' + verb.name) +
                      "\n                set verb " + FishQuoted(verb.path) + '\n';
    script += FishMiddle;
    for (CommandOption const& option : command.options)
        AddOption(script, "complete -c paramdb", option);
    for (CommandNode const* node : nodes) {
        std::string const begin = "complete -c paramdb " + Condition(*node);
        for (CommandNode const& verb : node->verbs)
            script += begin + " -a " + FishQuoted(verb.name) + " -d " + FishQuoted(verb.about) + '\n';
        if (node == &command)
            continue;
        for (CommandOption const& option : node->options)
            if (option.names.back() != "--help") // which the command has too
                AddOption(script, begin, option);
        if (!node->word_values.empty())
            script += begin + " -a " + FishQuoted(Joined(node->word_values, " ")) + '\n';
        if (node->takes_files)
            script += begin + " -F\n";
    }
    return script;
}

} // namespace paramdb::tools
