// The command: any arguments over any two files. An input is the arguments, one a line, up to a blank line,
// and behind that the files, which are there as a.lake and b.lake.
//
// Everything happens in a fresh folder. An argument never leads out of it, and of databases only those in a
// file can be named.
#include "tools/command.h"

#include "support/expect.h"
#include "support/input.h"
#include "support/message_watch.h"

#include <filesystem>
#include <sstream>
#include <tests/support/temp_dir.h>

namespace {

constexpr std::string_view Sqlite = "sqlite3:";

// Numbers and patterns of keys may hold what else could begin another place.
bool IsOfNumbers(std::string_view argument) {
    return !argument.empty() && argument[0] != '/' && argument[0] != '.' &&
           argument.find_first_not_of("0123456789*/:,.-") == argument.npos &&
           argument.find("/.") == argument.npos;
}

// The argument as a name in the folder. A zero cannot stand in one.
std::string Tame(std::string_view argument) {
    std::string tame(argument.substr(0, argument.find('\0')));
    if (IsOfNumbers(tame))
        return tame;
    std::size_t const begin = tame.starts_with(Sqlite) ? Sqlite.size() : 0;
    for (std::size_t place = begin; place < tame.size(); ++place) {
        char const byte = tame[place];
        bool const leads_up = byte == '.' && place + 1 < tame.size() && tame[place + 1] == '.';
        if (byte == '/' || byte == '\\' || byte == ':' || byte == '~' || leads_up)
            tame[place] = '_';
    }
    return tame;
}

std::vector<std::string> ArgumentsOf(std::string_view text) {
    std::vector<std::string> arguments;
    while (!text.empty()) {
        std::size_t const end = text.find('\n');
        arguments.push_back(Tame(text.substr(0, end)));
        text.remove_prefix(end == text.npos ? text.size() : end + 1);
    }
    return arguments;
}

// A folder to be in while an object of this class lives.
class WorkingFolder {
public:
    WorkingFolder() : m_before(std::filesystem::current_path()) {
        std::filesystem::current_path(m_folder.path());
    }
    WorkingFolder(WorkingFolder const&) = delete;
    WorkingFolder& operator=(WorkingFolder const&) = delete;
    ~WorkingFolder() { std::filesystem::current_path(m_before); }

    void Write(char8_t const* name, std::string_view bytes) const {
        test_support::WriteBytes(m_folder / name, bytes);
    }

private:
    test_support::TempDir m_folder;
    std::filesystem::path m_before;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string_view const input = fuzz::TextOf(data, size);
    std::size_t const end = std::min(input.find("\n\n"), input.size());
    auto const arguments = ArgumentsOf(input.substr(0, end));
    auto const files = fuzz::SplitFiles(input.substr(std::min(end + 2, input.size())), 2);

    WorkingFolder const folder;
    folder.Write(u8"a.lake", files[0]);
    folder.Write(u8"b.lake", files.back());
    fuzz::MessageWatch messages;
    std::ostringstream out;
    std::ostringstream err;
    int const code = paramdb::tools::RunCommand(arguments, out, err);
    fuzz::Expect(code >= 0 && code <= 2, "one of the exit codes");
    fuzz::Expect(code != 2 || !err.view().empty() || !out.view().empty(), "a reason for a failure");
    fuzz::Expect(err.view().find("out of memory") == std::string_view::npos,
                 "memory enough for a small file");
    fuzz::Expect(messages.TakeCount() == 0, "all messages in the output of the command");
    return 0;
}
