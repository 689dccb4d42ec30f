#include "program_run.h"

#include "temp_dir.h"

#ifdef _WIN32
#include <paramdb/platform/core/windows_api.h>
#else
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
extern char** environ;
#endif

namespace test_support {
namespace {

#ifdef _WIN32

// One argument of a command line, as programs take it apart again: backslashes before a quote stand twice.
std::wstring Quoted(std::wstring const& argument) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (wchar_t const unit : argument) {
        if (unit == L'"')
            text.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        text += unit;
    }
    return text.append(backslashes, L'\\') + L'"';
}

HANDLE InheritedFile(wchar_t const* name, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    return CreateFileW(name, access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, creation,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

int Run(std::string const& program, std::vector<std::string> const& arguments,
        std::filesystem::path const& out, std::filesystem::path const& err) {
    std::wstring const path = std::filesystem::path(paramdb::FromUtf8(program)).make_preferred().wstring();
    std::wstring line = Quoted(path);
    for (std::string const& argument : arguments)
        line += L' ' + Quoted(paramdb::FromUtf8(argument));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = InheritedFile(L"NUL", GENERIC_READ, OPEN_EXISTING);
    start.hStdOutput = InheritedFile(out.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    start.hStdError = InheritedFile(err.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process{};
    bool const started = CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                        nullptr, nullptr, &start, &process) != 0;
    for (HANDLE const file : {start.hStdInput, start.hStdOutput, start.hStdError})
        CloseHandle(file);
    if (!started)
        return -1;
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

#else

int Run(std::string const& program, std::vector<std::string> const& arguments,
        std::filesystem::path const& out, std::filesystem::path const& err) {
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&files, 2, err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = 0;
    int const fault = posix_spawn(&process, program.c_str(), &files, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    int status = 0;
    if (fault != 0 || waitpid(process, &status, 0) != process || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

#endif

} // namespace

ProgramRun RunProgram(std::string const& program, std::vector<std::string> const& arguments) {
    TempDir const folder;
    auto const out = folder / u8"out";
    auto const err = folder / u8"err";
    WriteBytes(out, "");
    WriteBytes(err, "");
    int const code = Run(program, arguments, out, err);
    return {code, ReadBytes(out), ReadBytes(err)};
}

} // namespace test_support
