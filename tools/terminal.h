// What the command needs of the system it runs on: its arguments and its output as UTF-8.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace paramdb::tools {

// Makes the terminal show UTF-8, and standard output and standard error take bytes as they are, as long as an
// object lives. Only Windows has to be told: it would add a CR to every LF. Elsewhere a standard stream that
// was closed before the start is put in place, so that no file of the command is taken for it.
class Utf8Terminal {
public:
    Utf8Terminal();
    Utf8Terminal(Utf8Terminal const&) = delete;
    Utf8Terminal& operator=(Utf8Terminal const&) = delete;
    ~Utf8Terminal();

private:
    [[maybe_unused]] unsigned m_previous_code_page = 0;
    [[maybe_unused]] int m_previous_mode = 0;
    [[maybe_unused]] int m_previous_error_mode = 0;
    [[maybe_unused]] unsigned long m_previous_output = 0;
    [[maybe_unused]] unsigned long m_previous_error_output = 0;
};

// Whether standard error goes to a terminal, where a line can be written over.
bool IsErrorTerminal();

// Whether the stream is standard output or standard error and goes to a terminal that takes the sequences of
// colours. On Windows an object of Utf8Terminal must live: the console takes them from then on, if it can.
bool IsColourTerminal(std::ostream const& stream);

// The arguments of main without the program's name. On Windows those of main have lost every character that
// the code page lacks, so the system's own are taken; elsewhere the bytes are taken as they are.
std::vector<std::string> Utf8Arguments(int count, char const* const* arguments);

} // namespace paramdb::tools
