// A piece of a test in a process of its own, for what would change the whole test program: its user, its
// limits, its mounted file systems, its working folder. Not on Windows.
#pragma once

#include <array>
#include <exception>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace test_support {

// Runs the action, which tells what went wrong or nothing, and returns that. Nothing of what the action
// changes reaches this process but the files.
template <class Action>
std::string InChild(Action const& action) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        return "no pipe";
    pid_t const child = fork();
    if (child == 0) {
        std::string text;
        try {
            text = action();
        } catch (std::exception const& fault) {
            text = std::string("exception: ") + fault.what();
        }
        bool const told = write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size());
        _exit(told ? 0 : 1);
    }
    close(ends[1]);
    std::string text;
    std::array<char, 512> bytes{};
    for (ssize_t count = 0; (count = read(ends[0], bytes.data(), bytes.size())) > 0;)
        text.append(bytes.data(), static_cast<std::size_t>(count));
    close(ends[0]);
    int status = -1;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return text + "the child did not end by itself";
    return text;
}

// Gives up all rights of the superuser, if the process has them; not to be undone.
inline bool BecomeNobody() {
    constexpr unsigned nobody = 65534;
    return geteuid() != 0 || (setgid(nobody) == 0 && setuid(nobody) == 0);
}

} // namespace test_support
