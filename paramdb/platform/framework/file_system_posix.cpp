#ifndef _WIN32

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/file_system.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace paramdb::file_system {
namespace {

// A read or write of more than this may be refused by the system.
constexpr std::size_t LargestTransfer = std::size_t{1} << 30;

int Fd(Handle handle) {
    return static_cast<int>(handle);
}

// The call again for as long as a signal interrupts it.
template <class Call>
auto Retry(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

// The name as the system takes it; empty, with the error set, for one that it could only misunderstand.
std::string NativeName(std::wstring const& name) {
    if (name.empty() || name.find(L'\0') != std::wstring::npos) {
        errno = name.empty() ? ENOENT : EINVAL;
        return {};
    }
    return ToUtf8(name);
}

std::string FolderOf(std::string const& name) {
    std::size_t const slash = name.rfind('/');
    return slash == std::string::npos ? std::string() : name.substr(0, slash + 1);
}

// Follows the links of a name up to the file itself, which need not exist. Links of the process's own
// descriptors do not lead to a name but to an open file; `own_descriptor` tells that one was met.
bool FollowLinks(std::string& name, bool& own_descriptor) {
    constexpr int MostLinks = 40;
    for (int link = 0; link < MostLinks; ++link) {
        own_descriptor = own_descriptor || name.starts_with("/proc/") || name.starts_with("/dev/fd/");
        struct stat status {};
        if (lstat(name.c_str(), &status) != 0)
            return errno == ENOENT;
        if (!S_ISLNK(status.st_mode))
            return true;
        char goal[PATH_MAX];
        ssize_t const length = readlink(name.c_str(), goal, sizeof goal);
        if (length < 0)
            return false;
        std::string_view const text(goal, static_cast<std::size_t>(length));
        name = text.starts_with('/') ? std::string(text) : FolderOf(name).append(text);
    }
    errno = ELOOP;
    return false;
}

bool IsNothingToFlush(int code) {
    return code == EINVAL || code == ENOTSUP || code == ENOSYS || code == EROFS;
}

} // namespace

int const InUseError = EBUSY;
int const NoProgressError = EIO;
int const TooLargeError = EFBIG;

int LastError() noexcept {
    return errno;
}

std::wstring ErrorText(int code) {
    return FromUtf8(std::generic_category().message(code));
}

bool MeansNotFound(int code) noexcept {
    return code == ENOENT || code == ENOTDIR;
}

Handle Open(std::wstring const& name, OpenMode mode) {
    std::string const native = NativeName(name);
    if (native.empty())
        return NoHandle;
    int flags = O_CLOEXEC | O_NOCTTY;
    flags |= mode.read && mode.write ? O_RDWR : mode.write ? O_WRONLY : O_RDONLY;
    flags |= mode.create ? O_CREAT : 0;
    flags |= mode.truncate ? O_TRUNC : 0;
    int const fd = Retry([&] { return ::open(native.c_str(), flags, 0666); });
    if (fd < 0)
        return NoHandle;
    struct stat status {};
    if (fstat(fd, &status) == 0 && S_ISDIR(status.st_mode)) { // opens for reading, but has no bytes to read
        ::close(fd);
        errno = EISDIR;
        return NoHandle;
    }
    return fd;
}

bool Close(Handle handle) noexcept {
    // Not again after an interruption: the descriptor is gone and its number may be another file's by now.
    return ::close(Fd(handle)) == 0 || errno == EINTR;
}

std::int64_t Read(Handle handle, void* buffer, std::size_t count) noexcept {
    return Retry([=] { return ::read(Fd(handle), buffer, std::min(count, LargestTransfer)); });
}

std::int64_t Write(Handle handle, void const* buffer, std::size_t count) noexcept {
    return Retry([=] { return ::write(Fd(handle), buffer, std::min(count, LargestTransfer)); });
}

bool Flush(Handle handle) noexcept {
    return Retry([=] { return ::fsync(Fd(handle)); }) == 0 || IsNothingToFlush(errno);
}

std::int64_t Seek(Handle handle, std::int64_t offset, From from) noexcept {
    int const whence = from == From::begin ? SEEK_SET : from == From::current ? SEEK_CUR : SEEK_END;
    return ::lseek(Fd(handle), static_cast<off_t>(offset), whence);
}

std::int64_t Length(Handle handle) noexcept {
    struct stat status {};
    return fstat(Fd(handle), &status) == 0 ? static_cast<std::int64_t>(status.st_size) : -1;
}

bool FindTarget(std::wstring const& name, Target& target) {
    std::string native = NativeName(name);
    if (native.empty())
        return false;
    target = {};
    struct stat status {};
    target.exists = ::stat(native.c_str(), &status) == 0;
    if (!target.exists && errno != ENOENT)
        return false;
    if (target.exists && S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return false;
    }
    if (target.exists && faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) != 0)
        return false;
    target.direct = target.exists && !S_ISREG(status.st_mode);
    if (!target.direct && !FollowLinks(native, target.direct))
        return false;
    target.name = target.direct ? name : FromUtf8(native);
    target.permissions = status.st_mode & 0777u;
    target.owner = status.st_uid;
    target.group = status.st_gid;
    return true;
}

Handle OpenDirect(Target const& target) {
    // At the end, not at the start: standard output that was sent to a file may hold something already.
    std::string const native = NativeName(target.name);
    return Retry([&] { return ::open(native.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC | O_NOCTTY); });
}

Handle CreateBeside(Target const& target, NativeText& name) {
    // A name of its own length: one made from the target's could be longer than the file system allows.
    static std::atomic<unsigned> counter{0};
    std::string const prefix = FolderOf(ToUtf8(target.name)) + ".paramdb-" + std::to_string(getpid()) + "-";
    constexpr int MostTries = 1000; // files of that name can only be left over from a crash
    for (int attempt = 0; attempt < MostTries; ++attempt) {
        std::string native = prefix + std::to_string(counter++) + ".tmp";
        int const flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;
        int const fd = Retry([&] { return ::open(native.c_str(), flags, target.exists ? 0600 : 0666); });
        if (fd < 0 && errno == EEXIST)
            continue;
        if (fd < 0)
            return NoHandle;
        // Only a privileged user may give files away; for all others the new file is simply theirs.
        bool const owned = target.exists && ::fchown(fd, target.owner, target.group) == 0;
        static_cast<void>(owned);
        if (target.exists && ::fchmod(fd, target.permissions) != 0) {
            int const code = errno;
            ::close(fd);
            ::unlink(native.c_str());
            errno = code;
            return NoHandle;
        }
        name = std::move(native); // nothing that could fail: the file is there
        return fd;
    }
    return NoHandle;
}

bool MoveOver(NativeText const& name, Target const& target) {
    std::string const to = ToUtf8(target.name);
    std::string const folder = FolderOf(to);
    if (::rename(name.c_str(), to.c_str()) != 0)
        return false;
    // The new name lasts once its folder is on the medium. The replacement is done, so this is no failure any
    // more.
    int const fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        Retry([=] { return ::fsync(fd); });
        ::close(fd);
    }
    return true;
}

void Remove(NativeText const& name) noexcept {
    ::unlink(name.c_str());
}

} // namespace paramdb::file_system

#endif
