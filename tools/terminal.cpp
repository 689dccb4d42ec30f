#include "tools/terminal.h"

#ifdef _WIN32

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/core/windows_api.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <iostream>
#include <shellapi.h>

namespace paramdb::tools {
namespace {

constexpr DWORD ColourMode = 0x0004; // ENABLE_VIRTUAL_TERMINAL_PROCESSING, which older headers lack
constexpr DWORD NoConsole = ~DWORD{0};

// Lets a console show colours if it can; returns its mode before.
DWORD EnableColours(DWORD handle_name) {
    HANDLE const handle = GetStdHandle(handle_name);
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) == 0)
        return NoConsole;
    SetConsoleMode(handle, mode | ColourMode);
    return mode;
}

void Restore(DWORD handle_name, DWORD mode) {
    if (mode != NoConsole)
        SetConsoleMode(GetStdHandle(handle_name), mode);
}

bool ShowsColours(DWORD handle_name) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(handle_name), &mode) != 0 && (mode & ColourMode) != 0;
}

} // namespace

Utf8Terminal::Utf8Terminal()
    : m_previous_code_page(GetConsoleOutputCP()), m_previous_mode(_setmode(_fileno(stdout), _O_BINARY)),
      m_previous_error_mode(_setmode(_fileno(stderr), _O_BINARY)) {
    SetConsoleOutputCP(CP_UTF8);
    m_previous_output = EnableColours(STD_OUTPUT_HANDLE);
    m_previous_error_output = EnableColours(STD_ERROR_HANDLE);
    // The console shows each write by itself, so that a character must not come in pieces.
    std::setvbuf(stdout, nullptr, _IOFBF, std::size_t{1} << 16);
}

Utf8Terminal::~Utf8Terminal() {
    std::fflush(stdout);
    std::fflush(stderr);
    if (m_previous_mode != -1)
        _setmode(_fileno(stdout), m_previous_mode);
    if (m_previous_error_mode != -1)
        _setmode(_fileno(stderr), m_previous_error_mode);
    if (m_previous_code_page != 0)
        SetConsoleOutputCP(m_previous_code_page);
    // In the opposite order: both may be the same console.
    Restore(STD_ERROR_HANDLE, m_previous_error_output);
    Restore(STD_OUTPUT_HANDLE, m_previous_output);
}

bool IsErrorTerminal() {
    return _isatty(_fileno(stderr)) != 0;
}

bool IsColourTerminal(std::ostream const& stream) {
    return (stream.rdbuf() == std::cout.rdbuf() && ShowsColours(STD_OUTPUT_HANDLE)) ||
           (stream.rdbuf() == std::cerr.rdbuf() && ShowsColours(STD_ERROR_HANDLE));
}

std::vector<std::string> Utf8Arguments(int count, char const* const* arguments) {
    int wide_count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &wide_count);
    if (wide == nullptr)
        return {arguments + (count > 0 ? 1 : 0), arguments + count};
    std::vector<std::string> result;
    for (int index = 1; index < wide_count; ++index)
        result.push_back(ToUtf8(wide[index]));
    LocalFree(wide);
    return result;
}

} // namespace paramdb::tools

#else

#include <cerrno>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace paramdb::tools {

Utf8Terminal::Utf8Terminal() {
    // A descriptor that was closed before the start would be the one of the next file that is opened, and
    // what is meant for standard output would end in that file. In its place stands one on which nothing
    // works.
    for (int const standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(standard, F_GETFD) == -1 && errno == EBADF)
            static_cast<void>(open("/dev/null", standard == STDIN_FILENO ? O_WRONLY : O_RDONLY));
}

Utf8Terminal::~Utf8Terminal() = default;

bool IsErrorTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

bool IsColourTerminal(std::ostream const& stream) {
    return (stream.rdbuf() == std::cout.rdbuf() && isatty(STDOUT_FILENO) != 0) ||
           (stream.rdbuf() == std::cerr.rdbuf() && isatty(STDERR_FILENO) != 0);
}

std::vector<std::string> Utf8Arguments(int count, char const* const* arguments) {
    return {arguments + (count > 0 ? 1 : 0), arguments + count};
}

} // namespace paramdb::tools

#endif
