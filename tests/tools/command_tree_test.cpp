#include "tests/tools/command_nodes.h"

#include <gtest/gtest.h>
#include <set>

using namespace paramdb::tools;

using Texts = std::vector<std::string>;

namespace {

CommandOption const* FindOption(CommandNode const& node, std::string const& name) {
    for (CommandOption const& option : node.options)
        if (std::find(option.names.begin(), option.names.end(), name) != option.names.end())
            return &option;
    return nullptr;
}

} // namespace

TEST(CommandTree, HoldsWhatAVerbAdds) {
    CLI::App command("What it is.", "paramdb");
    command.footer("Notes\n\nExit codes:\n  0  good");
    CLI::App& verb = *command.add_subcommand("verb", "What it does");
    Texts words;
    Texts tables;
    std::string form;
    std::string file;
    bool flag = false;
    int number = 0;
    verb.add_option("FILE", words, "The files")->required()->type_name("");
    verb.add_option("-t,--table", tables, "Tables")->allow_extra_args(false)->type_name("TAG");
    verb.add_option("--form", form, "Form")->check(CLI::IsMember({"text", "json"}))->type_name("FORM");
    verb.add_option("-o,--output", file, "Out")->type_name("FILE");
    verb.add_option("-n", number, "Number")->type_name("N");
    verb.add_flag("--flag", flag, "Flag");
    verb.add_option("--hidden", number, "Hidden")->group("");
    command.add_subcommand("hidden", "Hidden")->group("");
    CLI::App& inner = *verb.add_subcommand("inner", "Inner");
    inner.add_option("SHELL", form, "Shell")->check(CLI::IsMember({"bash", "zsh"}))->type_name("");

    CommandNode const tree = DescribeCommand(command);
    EXPECT_EQ(tree.path, "");
    EXPECT_EQ(tree.about, "What it is.");
    EXPECT_EQ(tree.notes.paragraphs, std::vector<Texts>{{"Notes"}});
    EXPECT_EQ(tree.notes.exit_codes, Texts{"  0  good"});
    ASSERT_EQ(tree.verbs.size(), 1u);
    CommandNode const& node = tree.verbs[0];
    EXPECT_EQ(node.path, "verb");
    EXPECT_EQ(node.about, "What it does");
    EXPECT_EQ(node.usage, Texts{"paramdb verb [OPTIONS] FILE... [SUBCOMMAND]"});
    EXPECT_TRUE(node.takes_files);
    EXPECT_EQ(node.word_values, Texts());
    ASSERT_EQ(node.words.size(), 1u);
    EXPECT_EQ(node.words[0].names, Texts{"FILE"});
    EXPECT_TRUE(node.words[0].is_required && node.words[0].is_repeated);

    ASSERT_EQ(node.options.size(), 6u); // with --help
    CommandOption const* option = FindOption(node, "--table");
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(option->names, (Texts{"-t", "--table"}));
    EXPECT_EQ(option->label, "TAG");
    EXPECT_EQ(option->values.size(), 103u);
    EXPECT_EQ(std::count(option->values.begin(), option->values.end(), "Mode"), 1);
    EXPECT_TRUE(option->is_repeated && !option->is_flag && !option->takes_file && !option->is_required);
    option = FindOption(node, "--form");
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(option->label, "FORM");
    EXPECT_EQ(option->values, (Texts{"text", "json"}));
    EXPECT_FALSE(option->is_repeated);
    option = FindOption(node, "-o");
    ASSERT_NE(option, nullptr);
    EXPECT_TRUE(option->takes_file);
    option = FindOption(node, "-n");
    ASSERT_NE(option, nullptr);
    EXPECT_EQ(option->label, "N");
    EXPECT_TRUE(option->values.empty() && !option->takes_file);
    option = FindOption(node, "--flag");
    ASSERT_NE(option, nullptr);
    EXPECT_TRUE(option->is_flag && option->label.empty());

    ASSERT_EQ(node.verbs.size(), 1u);
    EXPECT_EQ(node.verbs[0].path, "verb inner");
    EXPECT_EQ(node.verbs[0].usage, Texts{"paramdb verb inner [OPTIONS] [SHELL]"});
    EXPECT_EQ(node.verbs[0].word_values, (Texts{"bash", "zsh"}));
    EXPECT_FALSE(node.verbs[0].takes_files);
    Texts paths;
    for (CommandNode const* each : AllNodes(tree))
        paths.push_back(each->path);
    EXPECT_EQ(paths, (Texts{"", "verb", "verb inner"}));
}

TEST(CommandTree, KnowsTheWordsOfVerbs) {
    CommandNode const command = WholeCommand();
    struct Case {
        char const* path;
        bool takes_files;
        char const* value; // a word that it takes, or none
    };
    Case const cases[] = {{"load", true, nullptr},      {"show", true, "IpTrackPolygon"},
                          {"name", true, "mode"},       {"id", true, "parameter"},
                          {"order", true, nullptr},     {"diff", true, nullptr},
                          {"completion", false, "fish"}};
    for (Case const& test : cases) {
        CommandNode const* const node = FindNode(command, test.path);
        ASSERT_NE(node, nullptr) << test.path;
        EXPECT_EQ(node->takes_files, test.takes_files) << test.path;
        auto const& values = node->word_values;
        if (test.value == nullptr)
            EXPECT_TRUE(values.empty()) << test.path;
        else
            EXPECT_EQ(std::count(values.begin(), values.end(), test.value), 1) << test.path;
    }
    CommandOption const* const codes = FindOption(*FindNode(command, "check"), "--explain");
    ASSERT_NE(codes, nullptr);
    EXPECT_EQ(std::count(codes->values.begin(), codes->values.end(), "P201"), 1);
}

// What completion and manual lean on.
TEST(CommandTree, IsWellFormed) {
    CommandNode const command = WholeCommand();
    std::set<std::string> const common{"-q", "--quiet", "--color", "--version"};
    for (CommandNode const* node : AllNodes(command)) {
        SCOPED_TRACE(node->path);
        ASSERT_FALSE(node->usage.empty());
        EXPECT_TRUE(node->usage[0].starts_with("paramdb " + node->path)) << node->usage[0];
        EXPECT_FALSE(node->about.empty());
        std::set<std::string> names;
        for (CommandOption const& option : node->options) {
            for (std::string const& name : option.names) {
                EXPECT_TRUE(names.insert(name).second) << name;
                EXPECT_EQ(common.count(name), 0u) << name;
            }
            EXPECT_FALSE(option.help.empty()) << option.names[0];
            EXPECT_EQ(option.label.empty(), option.is_flag) << option.names[0];
        }
        if (node != &command) {
            EXPECT_FALSE(node->about.ends_with('.')) << node->about;
            EXPECT_FALSE(node->notes.examples.empty());
            EXPECT_FALSE(node->notes.exit_codes.empty());
        }
    }
}
