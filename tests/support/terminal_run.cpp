#include "terminal_run.h"

#ifndef _WIN32

#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
extern char** environ;

namespace test_support {

ProgramRun RunOnTerminal(std::string const& program, std::vector<std::string> const& arguments) {
    int const screen = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (screen == -1 || grantpt(screen) != 0 || unlockpt(screen) != 0)
        return {-1, "", "no terminal"};
    std::string const name = ptsname(screen);
    int const terminal = open(name.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    std::vector<std::string> words{program};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&files, terminal, 1);
    posix_spawn_file_actions_adddup2(&files, terminal, 2);
    pid_t process = 0;
    int const fault = posix_spawn(&process, program.c_str(), &files, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    close(terminal);
    ProgramRun run{-1, "", ""};
    if (fault == 0) {
        char bytes[4096];
        // The end of the last program on the terminal is an error here.
        for (ssize_t count = 0; (count = read(screen, bytes, sizeof bytes)) > 0;)
            run.out.append(bytes, static_cast<std::size_t>(count));
        int status = 0;
        if (waitpid(process, &status, 0) == process && WIFEXITED(status))
            run.code = WEXITSTATUS(status);
    }
    close(screen);
    return run;
}

} // namespace test_support

#endif
