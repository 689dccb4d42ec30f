#include "tools/terminal.h"

#ifdef _WIN32

#include <paramdb/platform/core/utf8.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace paramdb::tools {

Utf8Terminal::Utf8Terminal()
    : m_previous_code_page(GetConsoleOutputCP()), m_previous_mode(_setmode(_fileno(stdout), _O_BINARY)) {
    SetConsoleOutputCP(CP_UTF8);
}

Utf8Terminal::~Utf8Terminal() {
    std::fflush(stdout);
    if (m_previous_mode != -1)
        _setmode(_fileno(stdout), m_previous_mode);
    if (m_previous_code_page != 0)
        SetConsoleOutputCP(m_previous_code_page);
}

bool IsErrorTerminal() {
    return _isatty(_fileno(stderr)) != 0;
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

#include <unistd.h>

namespace paramdb::tools {

Utf8Terminal::Utf8Terminal() = default;

Utf8Terminal::~Utf8Terminal() = default;

bool IsErrorTerminal() {
    return isatty(STDERR_FILENO) != 0;
}

std::vector<std::string> Utf8Arguments(int count, char const* const* arguments) {
    return {arguments + (count > 0 ? 1 : 0), arguments + count};
}

} // namespace paramdb::tools

#endif
