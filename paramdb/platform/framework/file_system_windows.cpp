#ifdef _WIN32

#include <paramdb/platform/core/windows_api.h>
#include <paramdb/platform/framework/file_system.h>

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <vector>

namespace paramdb::file_system {
namespace {

constexpr std::size_t LargestTransfer = std::size_t{1} << 30;
constexpr DWORD ShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

HANDLE Native(Handle handle) {
    return reinterpret_cast<HANDLE>(handle);
}

Handle FromNative(HANDLE handle) {
    return reinterpret_cast<Handle>(handle); // INVALID_HANDLE_VALUE is -1, as NoHandle
}

// The name as the system takes it: one beyond the classic limit gets the prefix that lifts the limit. Empty,
// with the error set, for one that it could only misunderstand.
std::wstring NativeName(std::wstring const& name) {
    if (name.empty() || name.find(L'\0') != std::wstring::npos) {
        SetLastError(name.empty() ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_NAME);
        return {};
    }
    if (name.starts_with(L"\\\\?\\") || name.starts_with(L"\\\\.\\"))
        return name;
    DWORD const needed = GetFullPathNameW(name.c_str(), 0, nullptr, nullptr);
    std::wstring full(needed, L'\0');
    DWORD const length = GetFullPathNameW(name.c_str(), needed, full.data(), nullptr);
    if (length == 0 || length >= needed)
        return name;
    full.resize(length);
    // A folder's limit is 12 below that of a file, so that a short file name fits into it.
    if (full.size() < MAX_PATH - 12)
        return name;
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC\\" + full.substr(2) : L"\\\\?\\" + full;
}

// The file behind a name, links followed; the name itself where that cannot be told.
std::wstring FinalName(HANDLE file, std::wstring const& name) {
    DWORD const needed = GetFinalPathNameByHandleW(file, nullptr, 0, FILE_NAME_NORMALIZED);
    if (needed == 0)
        return name;
    std::wstring final_name(needed, L'\0');
    DWORD const length = GetFinalPathNameByHandleW(file, final_name.data(), needed, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= needed)
        return name;
    final_name.resize(length);
    return final_name;
}

// Gives a file the attributes of another one and the list of who may do what with it, as far as that goes.
void TakeOverRights(std::wstring const& from, std::wstring const& to) {
    DWORD const attributes = GetFileAttributesW(from.c_str());
    DWORD size = 0;
    GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::max_align_t> rights(size / sizeof(std::max_align_t) + 1);
    if (GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size))
        SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data());
    if (attributes != INVALID_FILE_ATTRIBUTES)
        SetFileAttributesW(to.c_str(), attributes);
}

// Whether it may go well in a moment; a file that is not found has been put aside by another writer.
bool MeansInUse(DWORD code) {
    return code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION || code == ERROR_FILE_NOT_FOUND ||
           code == ERROR_UNABLE_TO_REMOVE_REPLACED || code == ERROR_UNABLE_TO_MOVE_REPLACEMENT ||
           code == ERROR_UNABLE_TO_MOVE_REPLACEMENT_2;
}

// One attempt to give a file the target's name.
bool MoveNow(std::wstring const& name, Target const& target) {
    if (MoveFileExW(name.c_str(), target.name.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    // That is one step for everybody, but no way while somebody has the old file open. If they leave it to be
    // removed, it can be put aside first.
    if (!MeansInUse(GetLastError()))
        return false;
    std::wstring const aside = NativeName(name + L".old");
    if (ReplaceFileW(target.name.c_str(), name.c_str(), aside.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS,
                     nullptr, nullptr)) {
        DeleteFileW(aside.c_str());
        return true;
    }
    DWORD const code = GetLastError();
    // The old file may be aside already: back with it, unless another writer's is in its place by now.
    if (!MoveFileExW(aside.c_str(), target.name.c_str(), 0) && GetLastError() == ERROR_ALREADY_EXISTS)
        DeleteFileW(aside.c_str());
    SetLastError(code);
    return false;
}

} // namespace

int const InUseError = ERROR_BUSY;
int const NoProgressError = ERROR_WRITE_FAULT;
int const TooLargeError = ERROR_FILE_TOO_LARGE;

int LastError() noexcept {
    return static_cast<int>(GetLastError());
}

std::wstring ErrorText(int code) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                  static_cast<DWORD>(code), 0, text, 512, nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L' '))
        --length;
    return length > 0 ? std::wstring(text, length) : L"error " + std::to_wstring(code);
}

bool MeansNotFound(int code) noexcept {
    // No such file, folder, drive, computer or share.
    return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND || code == ERROR_INVALID_DRIVE ||
           code == ERROR_BAD_NETPATH || code == ERROR_BAD_NET_NAME;
}

Handle Open(std::wstring const& name, OpenMode mode) {
    std::wstring const native = NativeName(name);
    if (native.empty())
        return NoHandle;
    DWORD const access = (mode.read ? GENERIC_READ : 0u) | (mode.write ? GENERIC_WRITE : 0u);
    DWORD const creation = mode.create ? (mode.truncate ? CREATE_ALWAYS : OPEN_ALWAYS)
                                       : (mode.truncate ? TRUNCATE_EXISTING : OPEN_EXISTING);
    return FromNative(
        CreateFileW(native.c_str(), access, ShareAll, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr));
}

bool Close(Handle handle) noexcept {
    return CloseHandle(Native(handle)) != 0;
}

std::int64_t Read(Handle handle, void* buffer, std::size_t count) noexcept {
    DWORD done = 0;
    if (ReadFile(Native(handle), buffer, static_cast<DWORD>(std::min(count, LargestTransfer)), &done,
                 nullptr))
        return done;
    return GetLastError() == ERROR_BROKEN_PIPE ? 0 : -1; // the end of a pipe
}

std::int64_t Write(Handle handle, void const* buffer, std::size_t count) noexcept {
    DWORD done = 0;
    if (WriteFile(Native(handle), buffer, static_cast<DWORD>(std::min(count, LargestTransfer)), &done,
                  nullptr))
        return done;
    return -1;
}

bool Flush(Handle handle) noexcept {
    DWORD const type = GetFileType(Native(handle));
    return type == FILE_TYPE_DISK ? FlushFileBuffers(Native(handle)) != 0 : type != FILE_TYPE_UNKNOWN;
}

std::int64_t Seek(Handle handle, std::int64_t offset, From from) noexcept {
    LARGE_INTEGER distance;
    LARGE_INTEGER position;
    distance.QuadPart = offset;
    DWORD const method = from == From::begin ? FILE_BEGIN : from == From::current ? FILE_CURRENT : FILE_END;
    return SetFilePointerEx(Native(handle), distance, &position, method) ? position.QuadPart : -1;
}

std::int64_t Length(Handle handle) noexcept {
    LARGE_INTEGER length;
    return GetFileSizeEx(Native(handle), &length) ? length.QuadPart : -1;
}

bool FindTarget(std::wstring const& name, Target& target) {
    std::wstring const native = NativeName(name);
    if (native.empty())
        return false;
    target = {};
    target.name = native;
    // Opening for writing finds what may not be written: a directory, a read-only file, one without the
    // right.
    HANDLE const file = CreateFileW(native.c_str(), GENERIC_WRITE, ShareAll, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_NOT_FOUND;
    struct Closing {
        HANDLE file;
        ~Closing() { CloseHandle(file); }
    } const closing{file};
    target.exists = true;
    target.direct = GetFileType(file) != FILE_TYPE_DISK;
    BY_HANDLE_FILE_INFORMATION information{};
    bool const read_only = !target.direct && GetFileInformationByHandle(file, &information) != 0 &&
                           (information.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (!target.direct)
        target.name = FinalName(file, native);
    if (read_only) // some systems let the mighty open it
        SetLastError(ERROR_ACCESS_DENIED);
    return !read_only;
}

Handle OpenDirect(Target const& target) {
    return Open(target.name, {.read = false, .write = true});
}

Handle CreateBeside(Target const& target, NativeText& name) {
    static std::atomic<unsigned> counter{0};
    std::size_t const slash = target.name.find_last_of(L"\\/:");
    std::wstring const folder =
        slash == std::wstring::npos ? std::wstring() : target.name.substr(0, slash + 1);
    std::wstring const prefix = folder + L".paramdb-" + std::to_wstring(GetCurrentProcessId()) + L"-";
    constexpr int MostTries = 1000; // files of that name can only be left over from a crash
    for (int attempt = 0; attempt < MostTries; ++attempt) {
        name = NativeName(prefix + std::to_wstring(counter++) + L".tmp");
        HANDLE const file = CreateFileW(name.c_str(), GENERIC_WRITE, ShareAll, nullptr, CREATE_NEW,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        if (file != INVALID_HANDLE_VALUE)
            return FromNative(file);
        if (GetLastError() != ERROR_FILE_EXISTS)
            break;
    }
    return NoHandle;
}

bool MoveOver(NativeText const& name, Target const& target) {
    if (target.exists)
        TakeOverRights(target.name, name);
    // Virus scanners and indexers open every new file for a moment, and a file that somebody has open without
    // leave to remove it cannot be replaced. Whoever keeps it longer makes this fail.
    constexpr DWORD LongestWait = 128; // ms; twice that in all
    for (DWORD wait = 1; !MoveNow(name, target); wait *= 2) {
        DWORD const code = GetLastError();
        if (!MeansInUse(code) || wait > LongestWait)
            return false;
        Sleep(wait);
    }
    return true;
}

void Remove(NativeText const& name) noexcept {
    DeleteFileW(name.c_str());
}

} // namespace paramdb::file_system

#endif
