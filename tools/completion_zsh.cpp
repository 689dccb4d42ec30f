#include "tools/completion.h"

namespace paramdb::tools {
namespace {

constexpr char ZshBegin[] = R"sh(#compdef paramdb
# Completion of paramdb in zsh; `paramdb completion zsh` prints it.

)sh";

constexpr char ZshEnd[] = R"sh(
if [[ $funcstack[1] == _paramdb ]]; then
    _paramdb "$@"
else
    compdef _paramdb paramdb
fi
)sh";

// Within single quotes.
std::string ZshQuoted(std::string const& text) {
    std::string quoted = "'";
    for (char const character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + '\'';
}

// With a backslash before each of these characters; a line end is a blank.
std::string Escaped(std::string const& text, std::string_view characters) {
    std::string escaped;
    for (char const character : text) {
        if (character == '\\' || characters.find(character) != characters.npos)
            escaped += '\\';
        escaped += character == '\n' ? ' ' : character;
    }
    return escaped;
}

std::string Function(CommandNode const& node) {
    std::string name = node.path.empty() ? "_paramdb" : "_paramdb_" + node.path;
    for (char& character : name)
        if (character == ' ')
            character = '_';
    return name;
}

// An option as _arguments takes it: '(-t --table)'{-t+,--table=}'[help]:TAG:(Mode Trigger)'.
std::string Spec(CommandOption const& option) {
    std::string tail = '[' + Escaped(option.help, "[]") + ']';
    if (!option.is_flag) {
        tail += ':' + Escaped(option.label.empty() ? "value" : option.label, ":") + ':';
        if (option.takes_file)
            tail += "_files";
        else
            tail += option.values.empty() ? " " : '(' + Joined(option.values, " ") + ')';
    }
    std::string const repeated = option.is_repeated ? "*" : "";
    std::string const excluded =
        option.is_repeated || option.names.size() < 2 ? "" : '(' + Joined(option.names, " ") + ')';
    std::string text;
    for (std::string const& name : option.names) {
        std::string head = name;
        if (!option.is_flag)
            head += name.starts_with("--") ? "=" : "+";
        text += "        " + ZshQuoted(repeated.empty() ? excluded + head + tail : repeated + head + tail) +
                " \\\n";
    }
    return text;
}

std::string WordSpec(CommandNode const& node) {
    std::string const values = '(' + Joined(node.word_values, " ") + ')';
    if (node.takes_files && node.word_values.empty())
        return "'*:file:_files'";
    if (node.takes_files)
        return ZshQuoted("*:word: _alternative \"words:word:" + values + "\" \"files:file:_files\"");
    if (!node.word_values.empty())
        return ZshQuoted("*:word:" + values);
    return "'*: : '";
}

void AddFunction(std::string& script, CommandNode const& node, CommandNode const& command) {
    script += Function(node) + "() {\n    local curcontext=$curcontext state state_descr line ret=1\n"
                               "    typeset -A opt_args\n";
    if (!node.verbs.empty()) {
        script += "    local -a verbs=(\n";
        for (CommandNode const& verb : node.verbs)
            script += "        " + ZshQuoted(Escaped(verb.name, ":") + ':' + Escaped(verb.about, "")) + '\n';
        script += "    )\n";
    }
    script += "    _arguments -s -C \\\n";
    for (CommandOption const& option : node.options)
        script += Spec(option);
    if (&node != &command)
        for (CommandOption const& option : command.options)
            if (option.names.back() != "--help")
                script += Spec(option);
    if (node.verbs.empty()) {
        script += "        " + WordSpec(node) + " && ret=0\n    return ret\n}\n\n";
        return;
    }
    script += "        '1: :->verb' '*:: :->words' && ret=0\n"
              "    case $state in\n"
              "    verb) _describe -t commands subcommand verbs && ret=0 ;;\n"
              "    words)\n"
              "        case $line[1] in\n";
    for (CommandNode const& verb : node.verbs)
        script += "        " + verb.name + ") " + Function(verb) + " && ret=0 ;;\n";
    script += "        esac\n"
              "        ;;\n"
              "    esac\n"
              "    return ret\n"
              "}\n\n";
}

} // namespace

std::string ZshCompletion(CommandNode const& command) {
    std::string script = ZshBegin;
    for (CommandNode const* node : AllNodes(command))
        AddFunction(script, *node, command);
    script.pop_back();
    return script + ZshEnd;
}

} // namespace paramdb::tools
