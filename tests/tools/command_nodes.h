// The command as data, for the tests of what is made of it.
#pragma once

#include "tools/command_tree.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>

// The whole command with all verbs that this build has.
inline paramdb::tools::CommandNode WholeCommand() {
    CLI::App command("What it is.", "paramdb");
    auto const verbs = paramdb::tools::MakeVerbs();
    for (auto const& verb : verbs)
        verb->AddTo(command);
    return paramdb::tools::DescribeCommand(command);
}

// The node of that path, such as "db list"; null if there is none.
inline paramdb::tools::CommandNode const* FindNode(paramdb::tools::CommandNode const& command,
                                                   std::string const& path) {
    for (auto const* node : AllNodes(command))
        if (node->path == path)
            return node;
    return nullptr;
}

// A small command with each sort of option and word.
inline paramdb::tools::CommandNode SmallCommand() {
    using paramdb::tools::CommandNode;
    CommandNode command;
    command.name = "paramdb";
    command.about = "What it is.";
    command.usage = {"paramdb [OPTIONS] SUBCOMMAND"};
    command.options = {
        {.names = {"-h", "--help"}, .is_flag = true, .help = "Help"},
        {.names = {"--color"}, .label = "WHEN", .values = {"auto", "never"}, .help = "Colours"}};
    command.notes.paragraphs = {{"All of it."}};
    command.notes.exit_codes = {"  0  good"};
    CommandNode show;
    show.name = show.path = "show";
    show.about = "Show [rows]: it's all";
    show.usage = {"paramdb show [OPTIONS] FILE... TAG"};
    show.options = {{.names = {"-h", "--help"}, .is_flag = true, .help = "Help"},
                    {.names = {"-k", "--key"}, .label = "KEY", .help = "The key"},
                    {.names = {"-t", "--table"},
                     .label = "TAG",
                     .values = {"Mode", "Trigger"},
                     .is_repeated = true,
                     .help = "Tables\nto show"},
                    {.names = {"-o", "--output"}, .label = "FILE", .takes_file = true, .help = "Where to"}};
    show.word_values = {"Mode", "Trigger"};
    show.takes_files = true;
    show.notes.paragraphs = {{".first line", "second \\ line", "  as it - is", "  \"too\""}};
    show.notes.examples = {"paramdb show 'a b.lake' Mode"};
    show.notes.exit_codes = {"  0  good", "  1  bad", "And so on."};
    CommandNode db;
    db.name = db.path = "db";
    db.about = "Databases";
    db.usage = {"paramdb db SUBCOMMAND"};
    CommandNode list;
    list.name = "list";
    list.path = "db list";
    list.about = "List";
    list.usage = {"paramdb db list CONNECTION"};
    list.takes_files = true;
    CommandNode shell;
    shell.name = shell.path = "shell";
    shell.about = "Shells \xC3\xBC \xE4\xB8\xAD \xF0\x9F\x98\x80";
    shell.usage = {"paramdb shell NAME"};
    shell.word_values = {"bash", "zsh"};
    db.verbs = {list};
    command.verbs = {show, db, shell};
    return command;
}
