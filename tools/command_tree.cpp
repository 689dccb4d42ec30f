#include "tools/command_tree.h"

#include "tools/check/codes.h"
#include "tools/kinds.h"
#include "tools/table_names.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace paramdb::tools {
namespace {

// Tags as they are typed without quotes: "Mode".
std::vector<std::string> TableWords() {
    std::vector<std::string> words;
    for (TableDescription const& table : Catalogue()) {
        std::string const tag = TagOf(table); // "<TMode>"
        words.push_back(tag.substr(2, tag.size() - 3));
    }
    return words;
}

// What a value or word of that label may be; nothing where that is not known beforehand.
std::vector<std::string> ValuesOfLabel(std::string_view label) {
    std::vector<std::string> values;
    if (label == "TAG")
        values = TableWords();
    if (label == "KIND" || label == "KINDS")
        for (Kind const& kind : Kinds())
            values.emplace_back(kind.word);
    if (label == "CODE")
        for (check::Code const& code : check::Codes())
            values.emplace_back(code.code);
    return values;
}

// The label with the values behind it, "FORM:{text,json}", taken apart.
void TakeLabel(CommandOption& option, std::string const& text) {
    std::size_t const begin = text.find('{');
    option.label = text.substr(0, text.find(':'));
    if (begin == text.npos) {
        option.values = ValuesOfLabel(option.label);
        return;
    }
    std::size_t const end = std::min(text.find('}', begin), text.size());
    for (std::size_t place = begin + 1; place < end;) {
        std::size_t const comma = std::min(text.find(',', place), end);
        option.values.push_back(text.substr(place, comma - place));
        place = comma + 1;
    }
}

CommandOption Describe(CLI::Option const& given) {
    CommandOption option;
    for (std::string const& name : given.get_snames())
        option.names.push_back('-' + name);
    for (std::string const& name : given.get_lnames())
        option.names.push_back("--" + name);
    bool const is_word = option.names.empty();
    if (is_word)
        option.names.push_back(given.get_name(true));
    option.is_flag = given.get_items_expected_max() == 0;
    if (!option.is_flag)
        TakeLabel(option, given.get_type_name());
    option.takes_file = option.values.empty() && (option.label == "FILE" || option.label == "OUT");
    option.is_required = given.get_required();
    option.is_repeated = given.get_expected_max() >= CLI::detail::expected_max_vector_size;
    option.help = given.get_description();
    return option;
}

std::vector<std::string> UsageLines(CLI::App const& app, std::string const& path) {
    std::vector<std::string> lines;
    auto const formatter = std::dynamic_pointer_cast<CLI::Formatter>(app.get_formatter());
    if (!formatter)
        return lines;
    std::istringstream text(formatter->make_usage(&app, path));
    for (std::string line; std::getline(text, line);) {
        std::size_t const begin = line.find("paramdb");
        if (begin != line.npos)
            lines.push_back(line.substr(begin));
    }
    return lines;
}

// What the words are, as the usage has them: "FILE... KIND ID".
void DescribeWords(CommandNode& node) {
    bool is_free = false;
    for (CommandOption const& word : node.words) {
        is_free = is_free || word.values.empty();
        node.word_values.insert(node.word_values.end(), word.values.begin(), word.values.end());
    }
    node.takes_files = is_free;
    if (!is_free)
        return;
    for (std::string const& line : node.usage) {
        std::istringstream words(line);
        for (std::string word; words >> word;) {
            std::erase_if(word, [](char character) { return character == '[' || character == ']'; });
            for (std::string const& value : ValuesOfLabel(word))
                node.word_values.push_back(value);
        }
    }
}

CommandNode Describe(CLI::App const& app, std::string const& path) {
    CommandNode node;
    node.name = app.get_name();
    node.path = path;
    node.about = app.get_description();
    node.usage = UsageLines(app, path.empty() ? "paramdb" : "paramdb " + path);
    for (CLI::Option const* option : app.get_options()) {
        if (option->get_group().empty()) // is hidden
            continue;
        (option->get_positional() ? node.words : node.options).push_back(Describe(*option));
    }
    DescribeWords(node);
    node.notes = ReadHelpNotes(app.get_footer());
    for (CLI::App const* verb : app.get_subcommands([](CLI::App const*) { return true; }))
        if (!verb->get_name().empty() && !verb->get_group().empty())
            node.verbs.push_back(
                Describe(*verb, path.empty() ? verb->get_name() : path + ' ' + verb->get_name()));
    return node;
}

void AddNodes(CommandNode const& node, std::vector<CommandNode const*>& nodes) {
    nodes.push_back(&node);
    for (CommandNode const& verb : node.verbs)
        AddNodes(verb, nodes);
}

} // namespace

CommandNode DescribeCommand(CLI::App const& command) {
    return Describe(command, "");
}

std::vector<CommandNode const*> AllNodes(CommandNode const& command) {
    std::vector<CommandNode const*> nodes;
    AddNodes(command, nodes);
    return nodes;
}

std::string Joined(std::vector<std::string> const& texts, std::string const& separator) {
    std::string joined;
    for (std::string const& text : texts)
        joined += (&text == texts.data() ? "" : separator) + text;
    return joined;
}

} // namespace paramdb::tools
