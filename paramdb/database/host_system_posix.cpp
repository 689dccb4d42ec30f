#ifndef _WIN32

#include <paramdb/database/host_system.h>

#include <cstdlib>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace paramdb::database {

void ShutDownSocket(std::intptr_t socket) noexcept {
    shutdown(static_cast<int>(socket), SHUT_RDWR);
}

std::string UserAtHost() {
    std::string text;
    char buffer[4096];
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr)
        text = found->pw_name;
    char host[256] = {};
    if (gethostname(host, sizeof host - 1) == 0 && host[0] != '\0')
        text.append("@").append(host);
    return text;
}

} // namespace paramdb::database

#endif
