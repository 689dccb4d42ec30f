#ifdef _WIN32

#include <paramdb/database/host_system.h>
#include <paramdb/platform/core/utf8.h>

#include <iterator>
// The sockets come first: the other header would bring those of an earlier version.
#include <windows.h>
#include <winsock2.h>

namespace paramdb::database {

void ShutDownSocket(std::intptr_t socket) noexcept {
    shutdown(static_cast<SOCKET>(socket), SD_BOTH);
}

std::string UserAtHost() {
    std::string text;
    wchar_t user[257];
    DWORD size = static_cast<DWORD>(std::size(user));
    if (GetUserNameW(user, &size) && size > 0)
        text = ToUtf8({user, size - 1});
    wchar_t host[256];
    size = static_cast<DWORD>(std::size(host));
    if (GetComputerNameExW(ComputerNameDnsHostname, host, &size))
        text += "@" + ToUtf8({host, size});
    return text;
}

} // namespace paramdb::database

#endif
