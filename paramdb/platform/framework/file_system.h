// What the file classes need of the operating system, the one place where its calls are made. A helper of
// CFile and ReplaceFileWith, not for hosts.
//
// Functions that fail leave the system's error number for LastError, which holds until the next call on that
// thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace paramdb::file_system {

// A descriptor, on Windows a HANDLE.
using Handle = std::intptr_t;
inline constexpr Handle NoHandle = -1;

struct OpenMode {
    bool read = false;
    bool write = false;
    bool create = false;   // make it if it is missing
    bool truncate = false; // empty it if it is there
};

enum class From { begin, current, end };

// A name as the system takes it.
#ifdef _WIN32
using NativeText = std::wstring;
#else
using NativeText = std::string;
#endif

// The errors of an object that has a file open already, of a file that takes no more bytes without saying
// why, and of one that has more than can be read.
extern int const InUseError;
extern int const NoProgressError;
extern int const TooLargeError;

[[nodiscard]] int LastError() noexcept;
[[nodiscard]] std::wstring ErrorText(int code);
[[nodiscard]] bool MeansNotFound(int code) noexcept;

// NoHandle on a failure; a directory and a name with a zero in it are failures. Others may open the same file
// in any way.
[[nodiscard]] Handle Open(std::wstring const& name, OpenMode mode);
// False on a failure; the handle is gone either way.
bool Close(Handle handle) noexcept;

// The number of bytes moved, which may be fewer than wanted and is 0 only at the end of the file; -1 on a
// failure.
[[nodiscard]] std::int64_t Read(Handle handle, void* buffer, std::size_t count) noexcept;
[[nodiscard]] std::int64_t Write(Handle handle, void const* buffer, std::size_t count) noexcept;

// Waits for the medium; true where there is nothing to wait for.
[[nodiscard]] bool Flush(Handle handle) noexcept;
// -1 on a failure.
[[nodiscard]] std::int64_t Seek(Handle handle, std::int64_t offset, From from) noexcept;
[[nodiscard]] std::int64_t Length(Handle handle) noexcept;

// Where a file's new content has to go.
struct Target {
    std::wstring name;   // with links followed
    bool direct = false; // no regular file: write into it, there is nothing to replace
    bool exists = false;
    unsigned permissions = 0; // of an existing target
    unsigned owner = 0;
    unsigned group = 0;
};

// Finds the target of a name and whether it may be written; false for one that may not, or that is a
// directory.
[[nodiscard]] bool FindTarget(std::wstring const& name, Target& target);
[[nodiscard]] Handle OpenDirect(Target const& target);
// Makes a new file beside the target, with its permissions, and tells its name.
[[nodiscard]] Handle CreateBeside(Target const& target, NativeText& name);
// Gives the file the target's name in one step and makes that last. An exception leaves both as they were.
[[nodiscard]] bool MoveOver(NativeText const& name, Target const& target);
void Remove(NativeText const& name) noexcept;

} // namespace paramdb::file_system
