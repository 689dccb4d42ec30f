#include "tools/wrong_word.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/command_tree.h"
#include "tools/nearest_names.h"
#include "tools/report.h"

#include <CLI/CLI.hpp>

namespace paramdb::tools {
namespace {

std::string Near(std::string const& word, std::vector<std::string> const& names) {
    std::vector<std::wstring> texts;
    for (std::string const& name : names)
        texts.push_back(FromUtf8(name));
    std::vector<std::wstring_view> const views(texts.begin(), texts.end());
    std::vector<std::string> near;
    for (std::size_t const place : NearestNames(FromUtf8(word), views))
        near.push_back(names[place]);
    return DidYouMean(near);
}

// Long names alone: each short one is as near as any other.
void AddLongNames(CommandNode const& node, std::vector<std::string>& names) {
    for (CommandOption const& option : node.options)
        for (std::string const& name : option.names)
            if (name.starts_with("--"))
                names.push_back(name);
}

bool IsOption(std::string const& word) {
    return word.size() > 1 && word[0] == '-' && word != "--";
}

} // namespace

std::string WrongWordText(CLI::App const& command) {
    CommandNode const root = DescribeCommand(command);
    CommandNode const* node = &root;
    for (CLI::App const* app = &command; !app->get_subcommands().empty();) {
        app = app->get_subcommands().front();
        for (CommandNode const& verb : node->verbs)
            if (verb.name == app->get_name()) {
                node = &verb;
                break;
            }
    }
    for (std::string const& word : command.remaining()) {
        std::string const shown = "paramdb: " + Printable(FromUtf8(word));
        if (IsOption(word)) {
            std::string const name = word.substr(0, word.find('='));
            std::vector<std::string> names;
            AddLongNames(*node, names);
            if (node != &root)
                AddLongNames(root, names);
            return shown + ": no such option" + (name.size() > 2 ? Near(name, names) : "") + '\n';
        }
        if (word == "--" || node->verbs.empty())
            continue;
        std::vector<std::string> names;
        for (CommandNode const& verb : node->verbs)
            names.push_back(verb.name);
        return shown + ": no such subcommand" + Near(word, names) + '\n';
    }
    return "";
}

} // namespace paramdb::tools
