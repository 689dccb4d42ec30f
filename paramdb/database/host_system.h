// What the databases need of the operating system beyond files.
#pragma once

#include <cstdint>
#include <string>

namespace paramdb::database {

// Ends both directions of a socket, so that whoever waits for it wakes up. The socket stays open. Any thread.
void ShutDownSocket(std::intptr_t socket) noexcept;

// "user@host", in UTF-8; what is not known is left out.
std::string UserAtHost();

} // namespace paramdb::database
