#include "tests/support/program_run.h"
#include "tests/tools/command_nodes.h"
#include "tests/tools/command_run.h"
#include "tools/completion.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

std::size_t Count(std::string const& text, std::string const& part) {
    std::size_t count = 0;
    for (std::size_t place = text.find(part); place != text.npos; place = text.find(part, place + 1))
        ++count;
    return count;
}

} // namespace

TEST(Completion, HoldsEverySubcommandAndOption) {
    CommandNode const command = WholeCommand();
    std::string const bash = BashCompletion(command);
    std::string const zsh = ZshCompletion(command);
    std::string const fish = FishCompletion(command);
    for (CommandNode const* node : AllNodes(command)) {
        SCOPED_TRACE(node->path);
        EXPECT_EQ(Count(bash, "\n    '" + node->path + "')\n"), 1u);
        std::string function = "_paramdb" + (node->path.empty() ? "" : '_' + node->path);
        std::replace(function.begin(), function.end(), ' ', '_');
        EXPECT_EQ(Count(zsh, '\n' + function + "() {\n"), 1u);
        for (CommandOption const& option : node->options)
            for (std::string const& name : option.names) {
                EXPECT_NE(Count(bash, name), 0u) << name;
                EXPECT_NE(Count(zsh, name), 0u) << name;
                EXPECT_NE(
                    Count(fish, name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1)),
                    0u)
                    << name;
            }
    }
}

TEST(Completion, IsPrinted) {
    auto const bash = RunCommand({"completion", "bash"});
    auto const zsh = RunCommand({"completion", "zsh"});
    auto const fish = RunCommand({"completion", "fish"});
    EXPECT_TRUE(bash.out.ends_with("\ncomplete -F _paramdb paramdb\n"));
    EXPECT_TRUE(zsh.out.starts_with("#compdef paramdb\n"));
    EXPECT_NE(fish.out.find("\ncomplete -c paramdb -f\n"), std::string::npos);
    EXPECT_NE(fish.out.find(" -l quiet "), std::string::npos); // with the options of the command itself
    for (auto const& run : {bash, zsh, fish}) {
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
    }
    EXPECT_EQ(RunCommand({"completion", "csh"}).err,
              "SHELL: csh not in {bash,zsh,fish}\nRun with --help for more information.\n");
}

#ifndef _WIN32 // the shells themselves, which Windows has not

namespace {

using Texts = std::vector<std::string>;

// A shell completes the last word of a line; "@" in it is the folder of the test.
class ShellTest : public CommandTest {
protected:
    ShellTest() {
        File(u8"gear one.lake", "");
        File(u8"other.txt", "");
    }

    std::string Script(std::string const& text) { return File(u8"script", text); }

    std::string InFolder(std::string text) const {
        for (std::size_t at = text.find('@'); at != text.npos; at = text.find('@'))
            text.replace(at, 1, Folder());
        return text;
    }

    // What a shell prints, line by line; what it says to standard error is a failure.
    static Texts Lines(Texts const& arguments) {
        auto const run = test_support::RunProgram("/usr/bin/env", arguments);
        EXPECT_EQ(run.code, 0) << arguments[0];
        EXPECT_EQ(run.err, "") << arguments[0];
        Texts lines;
        std::istringstream text(run.out);
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }
};

using BashTest = ShellTest;
using ZshTest = ShellTest;
using FishTest = ShellTest;

constexpr char BashDriver[] = R"sh(
source "$1"
cd "${1%/*}"
shift
COMP_WORDS=("$@")
COMP_CWORD=$(($# - 1))
_paramdb
((${#COMPREPLY[@]} == 0)) || printf '%s\n' "${COMPREPLY[@]}"
complete -p paramdb
)sh";

// Types each line into a shell on a terminal of its own, and the key for completion.
constexpr char ZshDriver[] = R"sh(
zmodload zsh/zpty || exit 3
zpty shell zsh -f -i
zpty -w shell 'PS1= PS2= RPS1=; stty -echo cols 300; autoload -Uz compinit; compinit -D -u; source '${(q)1}
zpty -w shell 'show() { print -r -- "{$BUFFER}"; BUFFER=; zle accept-line }; zle -N show; bindkey "^X" show'
zpty -w shell 'print -r rea""dy'
zpty -r -m shell out '*ready*' || exit 4
shift
for line; do
    zpty -w -n shell $line$'\t\C-X'
    zpty -r -m shell out '*{*}*' || exit 5
    print -r -- ${${out##*\{}%%\}*}
done
zpty -d shell
)sh";

} // namespace

TEST_F(BashTest, Completes) {
    std::string const script = Script(BashCompletion(SmallCommand()));
    struct Case {
        Texts words;
        Texts completions;
    };
    Case const cases[] = {
        {{""}, {"show", "db", "shell"}},
        {{"s"}, {"show", "shell"}},
        {{"--"}, {"--help", "--color"}},
        {{"--color", ""}, {"auto", "never"}},
        {{"--color", "=", "n"}, {"never"}},
        {{"--color", "="}, {"auto", "never"}},
        {{"--color=n"}, {"--color=never"}},
        {{"--color", "never", "d"}, {"db"}},
        {{"db", ""}, {"list"}},
        {{"db", "list", "@/o"}, {"@/other.txt"}},
        {{"show", "-"}, {"-h", "--help", "-k", "--key", "-t", "--table", "-o", "--output", "--color"}},
        {{"show", "--t"}, {"--table"}},
        {{"show", "-t", "T"}, {"Trigger"}},
        {{"show", "--key", ""}, {}},
        {{"show", "-o", "@/g"}, {"@/gear one.lake"}},
        {{"show", "--output=@/g"}, {"--output=@/gear one.lake"}},
        {{"show", "x", "M"}, {"Mode"}},
        {{"show", "@/"}, {"@/gear one.lake", "@/other.txt", "@/script"}},
        {{"show", "--", "-"}, {}},
        {{"show", "db", "l"}, {}},
        {{"shell", "@/o"}, {}},
        {{"shell", "b"}, {"bash"}},
        {{"shell", "--color", "a"}, {"auto"}},
        {{"nonsense", "d"}, {"db"}},
    };
    for (Case const& test : cases) {
        Texts arguments = {"bash", "--norc", "-c", BashDriver, "bash", script, "paramdb"};
        for (std::string const& word : test.words)
            arguments.push_back(InFolder(word));
        Texts expected;
        for (std::string const& completion : test.completions)
            expected.push_back(InFolder(completion));
        expected.emplace_back("complete -F _paramdb paramdb");
        Texts lines = Lines(arguments);
        if (test.words.back() == "@/") // in no certain order
            std::sort(lines.begin(), lines.end() - 1);
        EXPECT_EQ(lines, expected) << Joined(test.words, " ");
    }
}

TEST_F(BashTest, CompletesTheWholeCommand) {
    std::string const script = Script(BashCompletion(WholeCommand()));
    auto const complete = [&](Texts const& words) {
        Texts arguments = {"bash", "--norc", "-c", BashDriver, "bash", script, "paramdb"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        Texts lines = Lines(arguments);
        lines.pop_back();
        return lines;
    };
    EXPECT_EQ(complete({"loa"}), Texts{"load"});
    EXPECT_EQ(complete({"load", "--format", ""}), (Texts{"text", "json"}));
    EXPECT_EQ(complete({"key", "--lang", "d"}), Texts{"de"});
    EXPECT_EQ(complete({"show", "a.lake", "IpTrackPo"}), Texts{"IpTrackPolygon"});
    EXPECT_EQ(complete({"name", "a.lake", "mo"}), Texts{"mode"});
    EXPECT_EQ(complete({"check", "--explain", "P201"}), Texts{"P201"});
    EXPECT_EQ(complete({"completion", ""}), (Texts{"bash", "zsh", "fish"}));
}

TEST_F(ZshTest, Completes) {
    std::string const script = Script(ZshCompletion(SmallCommand()));
    struct Case {
        char const* line;
        char const* completed;
    };
    Case const cases[] = {
        {"paramdb sho", "paramdb show "},
        {"paramdb show --ke", "paramdb show --key="},
        {"paramdb show --table=Tr", "paramdb show --table=Trigger "},
        {"paramdb show -t Tr", "paramdb show -t Trigger "},
        {"paramdb show x Mo", "paramdb show x Mode "},
        {"paramdb show -o @/g", "paramdb show -o @/gear\\ one.lake "},
        {"paramdb --color n", "paramdb --color never "},
        {"paramdb --color never db l", "paramdb --color never db list "},
        {"paramdb shell z", "paramdb shell zsh "},
        {"paramdb shell z --colo", "paramdb shell z --color="},
    };
    Texts arguments = {"zsh", "-f", "-c", ZshDriver, "zsh", script};
    Texts expected;
    for (Case const& test : cases) {
        arguments.push_back(InFolder(test.line));
        expected.push_back(InFolder(test.completed));
    }
    EXPECT_EQ(Lines(arguments), expected);
}

TEST_F(ZshTest, CompletesTheWholeCommand) {
    std::string const script = Script(ZshCompletion(WholeCommand()));
    EXPECT_EQ(Lines({"zsh", "-n", script}), Texts());
    EXPECT_EQ(Lines({"zsh", "-f", "-c", ZshDriver, "zsh", script, "paramdb loa", "paramdb key --lang=d",
                     "paramdb show a.lake IpTrackPolygonM", "paramdb completion z"}),
              (Texts{"paramdb load ", "paramdb key --lang=de ", "paramdb show a.lake IpTrackPolygonM",
                     "paramdb completion zsh "}));
}

TEST_F(FishTest, Completes) {
    std::string const script = Script(FishCompletion(SmallCommand()));
    struct Case {
        char const* line;
        Texts completions;
    };
    Case const cases[] = {
        {"paramdb s",
         {"shell\tShells \xC3\xBC \xE4\xB8\xAD \xF0\x9F\x98\x80", "show\tShow [rows]: it's all"}},
        {"paramdb db ", {"list\tList"}},
        {"paramdb --color n", {"never\tColours"}},
        {"paramdb show --k", {"--key\tThe key"}},
        {"paramdb show -t Tr", {"Trigger\tTables to show"}},
        {"paramdb show --key ", {}},
        {"paramdb show x Mo", {"Mode"}},
        {"paramdb show @/g", {"@/gear one.lake"}},
        {"paramdb shell z", {"zsh"}},
        {"paramdb shell @/g", {}},
        {"paramdb shell z --", {"--color\tColours", "--help\tHelp"}},
    };
    for (Case const& test : cases) {
        Texts expected;
        for (std::string const& completion : test.completions)
            expected.push_back(InFolder(completion));
        EXPECT_EQ(Lines({"fish", "--no-config", "-c", "source $argv[1]; complete -C $argv[2]", script,
                         InFolder(test.line)}),
                  expected)
            << test.line;
    }
}

TEST_F(FishTest, CompletesTheWholeCommand) {
    std::string const script = Script(FishCompletion(WholeCommand()));
    EXPECT_EQ(Lines({"fish", "--no-execute", script}), Texts());
    EXPECT_EQ(
        Lines({"fish", "--no-config", "-c", "source $argv[1]; complete -C 'paramdb completion '", script}),
        (Texts{"bash", "fish", "zsh"}));
}

#endif
