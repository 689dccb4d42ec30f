// The line end of text files that are written here; reading takes either form on every platform.
#pragma once

namespace paramdb {

#ifdef _WIN32
inline constexpr char LineEnd[] = "\r\n";
#else
inline constexpr char LineEnd[] = "\n";
#endif

} // namespace paramdb
