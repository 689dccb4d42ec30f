#include "tools/completion.h"

namespace paramdb::tools {
namespace {

constexpr char BashBegin[] = R"sh(# Completion of paramdb in bash; `paramdb completion bash` prints it.

# Names of files that begin with $1, behind what there is already, each behind $2.
_paramdb_add_files() {
    local name
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        COMPREPLY+=("$2$name")
    done < <(compgen -f -- "$1")
}

_paramdb() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} begin=
    local verb= behind_dashes= kind= values= options= words= files= i
    COMPREPLY=()

    # "--format=json" comes as three words, or as one where = does not part words.
    if [[ $word == --*=* ]]; then
        before=${word%%=*} begin=$before= word=${word#*=}
    elif [[ $word == = ]]; then
        word=
    elif [[ $before == = ]] && ((COMP_CWORD > 2)); then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi

    for ((i = 1; i < COMP_CWORD; ++i)); do
        case "$verb:${COMP_WORDS[i]}" in
        *:--) behind_dashes=yes ;;
)sh";

constexpr char BashMiddle[] = R"sh(        esac
    done

    case $verb in
)sh";

constexpr char BashEnd[] = R"sh(    esac

    if [[ $kind == value && -z $behind_dashes ]]; then
        mapfile -t COMPREPLY < <(compgen -P "$begin" -W "$values" -- "$word")
    elif [[ $kind == file && -z $behind_dashes ]]; then
        _paramdb_add_files "$word" "$begin"
    elif [[ $word == -* && -z $behind_dashes ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
        if [[ -n $files ]]; then
            _paramdb_add_files "$word" "$begin"
        fi
    fi
}

complete -F _paramdb paramdb
)sh";

// A text for the shell as it is.
std::string BashQuoted(std::string const& text) {
    std::string quoted = "'";
    for (char const character : text)
        quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return quoted + '\'';
}

// What a value is, for the options that take one.
void AddValues(std::string& script, std::vector<CommandOption> const& options) {
    for (CommandOption const& option : options) {
        if (option.is_flag)
            continue;
        script += "        " + Joined(option.names, "|") + ") kind=";
        if (option.takes_file)
            script += "file";
        else
            script +=
                "value" + (option.values.empty() ? "" : " values=" + BashQuoted(Joined(option.values, " ")));
        script += " ;;\n";
    }
}

void AddNode(std::string& script, CommandNode const& node, CommandNode const& command) {
    std::vector<std::string> options;
    std::vector<std::string> words = node.word_values;
    for (CommandOption const& option : node.options)
        options.insert(options.end(), option.names.begin(), option.names.end());
    if (&node != &command)
        for (CommandOption const& option : command.options)
            if (option.names.back() != "--help") // which the node has too
                options.insert(options.end(), option.names.begin(), option.names.end());
    for (CommandNode const& verb : node.verbs)
        words.push_back(verb.name);
    script += "    " + BashQuoted(node.path) + ")\n";
    script += "        options=" + BashQuoted(Joined(options, " ")) + '\n';
    if (!words.empty())
        script += "        words=" + BashQuoted(Joined(words, " ")) + '\n';
    if (node.takes_files)
        script += "        files=yes\n";
    script += "        case $before in\n";
    AddValues(script, node.options);
    if (&node != &command)
        AddValues(script, command.options);
    script += "        esac\n        ;;\n";
}

} // namespace

std::string BashCompletion(CommandNode const& command) {
    auto const nodes = AllNodes(command);
    std::string script = BashBegin;
    for (CommandNode const* node : nodes)
        for (CommandNode const& verb : node->verbs)
            script += "        " + BashQuoted(node->path + ':' + verb.name) +
                      ") verb=" + BashQuoted(verb.path) + " ;;\n";
    script += BashMiddle;
    for (CommandNode const* node : nodes)
        AddNode(script, *node, command);
    return script + BashEnd;
}

} // namespace paramdb::tools
