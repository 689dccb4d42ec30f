// The examples in the help of each subcommand, run one after the other as they stand there.
#include "tests/tools/command_nodes.h"
#include "tests/tools/command_run.h"

#include <algorithm>
#include <map>

using namespace paramdb::tools;
namespace fs = std::filesystem;

namespace {

// A folder with the files that examples name, in which the process works while it lives.
class ExampleFolder {
public:
    ExampleFolder() : m_before(fs::current_path()) {
        fs::path const gearbox = fs::path(PARAMDB_SOURCE_DIR) / "examples" / "gearbox";
        for (char const* const name : {"gearbox.lake", "customer.lake"})
            fs::copy_file(gearbox / name, m_folder.path() / name);
        std::string changed = test_support::ReadBytes(gearbox / "gearbox.lake");
        changed.replace(changed.find("\"Idle\""), 6, "\"Idling\"");
        test_support::WriteBytes(m_folder / u8"gearbox_new.lake", changed);
        fs::current_path(m_folder.path());
    }
    ExampleFolder(ExampleFolder const&) = delete;
    ExampleFolder& operator=(ExampleFolder const&) = delete;
    ~ExampleFolder() { fs::current_path(m_before); }

    // All files with what is in them.
    std::map<std::string, std::string> Content() const {
        std::map<std::string, std::string> content;
        for (auto const& entry : fs::recursive_directory_iterator(m_folder.path()))
            if (entry.is_regular_file())
                content[entry.path().string()] = test_support::ReadBytes(entry.path());
        return content;
    }

private:
    test_support::TempDir m_folder;
    fs::path m_before;
};

// The words of a command as a shell takes them: quotes, "*.lake", and the file behind ">".
struct ShellWords {
    std::vector<std::string> words;
    std::string target;
};

std::vector<std::string> Lakes() {
    std::vector<std::string> names;
    for (auto const& entry : fs::directory_iterator("."))
        if (entry.path().extension() == ".lake")
            names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

ShellWords ReadShellWords(std::string const& line) {
    ShellWords result;
    bool is_target = false;
    for (std::size_t place = 0; place < line.size();) {
        if (line[place] == ' ') {
            ++place;
            continue;
        }
        bool const is_bare = line[place] != '\'' && line[place] != '"';
        std::string word;
        while (place < line.size() && line[place] != ' ') {
            char const quote = line[place];
            if (quote != '\'' && quote != '"') {
                word += line[place++];
                continue;
            }
            std::size_t const end = line.find(quote, place + 1);
            EXPECT_NE(end, std::string::npos) << line;
            word += line.substr(place + 1, end - place - 1);
            place = std::min(end, line.size() - 1) + 1;
        }
        if (is_bare && word == ">")
            is_target = true;
        else if (is_target)
            result.target = word;
        else if (is_bare && word == "*.lake")
            std::ranges::copy(Lakes(), std::back_inserter(result.words));
        else
            result.words.push_back(word);
    }
    return result;
}

// The exit codes of examples whose answer is a finding.
std::map<std::string, int> const OtherCodes = {
    {"paramdb diff gearbox.lake gearbox_new.lake --rpm 3000", 1},
    {"paramdb diff gearbox.lake gearbox.lake,customer.lake --format html > diff.html", 1},
    {"paramdb report gearbox.lake customer.lake --lang de -o report.html", 1}, // as `check` finds it
    {"paramdb db diff sqlite3:bench.db#gearbox@3 sqlite3:bench.db#gearbox", 1},
};
// Those that answer with their exit code alone.
std::vector<std::string> const SilentExamples = {"paramdb format --check *.lake"};

using Examples = LoadTest;

} // namespace

TEST_F(Examples, OfEachSubcommandAreRight) {
    CommandNode const command = WholeCommand();
    bool const has_databases = FindNode(command, "db export") != nullptr;
    for (CommandNode const* node : AllNodes(command)) {
        ExampleFolder const folder;
        if (has_databases && node->path.starts_with("db")) {
            for (char const* const file :
                 {"gearbox.lake", "gearbox_new.lake", "gearbox.lake", "gearbox_new.lake"})
                ASSERT_EQ(RunCommand({"db", "export", file, "sqlite3:bench.db#gearbox"}).code, 0);
            ASSERT_EQ(
                RunCommand({"db", "import", "sqlite3:bench.db#gearbox", "--cache", "gearbox.copy"}).code, 0);
        }
        for (std::string const& example : node->notes.examples) {
            SCOPED_TRACE(example);
            if (example.find("postgresql:") != std::string::npos)
                continue; // asks for a server
            auto shell = ReadShellWords(example);
            ASSERT_GE(shell.words.size(), 2u);
            EXPECT_EQ(shell.words[0], "paramdb");
            shell.words.erase(shell.words.begin());
            auto const before = folder.Content();
            Reset();
            CommandRun const run = RunCommand(shell.words);
            auto const code = OtherCodes.find(example);
            EXPECT_EQ(run.code, code == OtherCodes.end() ? 0 : code->second);
            EXPECT_EQ(run.err, "");
            bool const is_silent = std::ranges::count(SilentExamples, example) > 0;
            EXPECT_EQ(run.out.empty() && folder.Content() == before, is_silent) << run.out;
            if (!shell.target.empty()) {
                EXPECT_NE(run.out, "");
                test_support::WriteBytes(shell.target, run.out);
            }
        }
    }
}

TEST(ShellWords, AreTakenAsAShellDoes) {
    auto const shell = ReadShellWords("paramdb id 'a b' \"c\" d'e f'g -o x > out.txt");
    EXPECT_EQ(shell.words, (std::vector<std::string>{"paramdb", "id", "a b", "c", "de fg", "-o", "x"}));
    EXPECT_EQ(shell.target, "out.txt");
}
