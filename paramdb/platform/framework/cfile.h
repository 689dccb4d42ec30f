// A binary file, read and written in place, that other programs may have open at the same time.
//
// Names are wide text; on Windows also beyond 260 characters. The operations are virtual so that a host or a
// test can put a file of its own, such as one in memory, beneath the readers and writers. An object belongs
// to one thread at a time. Nothing is buffered here: a written byte is with the system at once.
#pragma once

#include <paramdb/platform/core/export.h>

#include <cstdint>
#include <stdexcept>
#include <string>

// What a failed operation of CFile throws, by value.
class PARAMDB_API CFileException : public std::runtime_error {
public:
    // A code of 0 stands for no error.
    explicit CFileException(int code = 0);

    // The system's error number: errno, on Windows the value of GetLastError.
    [[nodiscard]] int Code() const noexcept { return m_code; }

    // The system's text for it, as what() gives it in UTF-8.
    [[nodiscard]] std::wstring Text() const;

    // Whether there is no file, or no folder, of that name.
    [[nodiscard]] bool IsNotFound() const noexcept;

private:
    int m_code;
};

class PARAMDB_API CFile {
public:
    // To be combined. The sharing is always shareDenyNone and the type always binary.
    enum OpenFlags : unsigned {
        modeRead = 0x0000,
        modeWrite = 0x0001,
        modeReadWrite = 0x0002,
        shareDenyNone = 0x0040,
        modeCreate = 0x1000,     // makes a missing file, empties an existing one
        modeNoTruncate = 0x2000, // with modeCreate: keeps the content of an existing file
        typeBinary = 0x8000,
    };
    enum SeekPosition { begin = 0, current = 1, end = 2 };

    CFile() = default;

    // Opens, or throws CFileException.
    CFile(wchar_t const* name, unsigned flags);

    // Takes over an open descriptor (on Windows a HANDLE) and will close it.
    explicit CFile(std::intptr_t handle) noexcept : m_handle(handle) {}

    CFile(CFile&& other) noexcept;
    CFile& operator=(CFile&& other) noexcept; // closes what was open here, silently

    // Closes silently; call Close where a failure matters.
    virtual ~CFile();

    // True once the file is open. False, with the reason in `error` if given, for a name that cannot be
    // opened, a null name, a directory (in every mode on every platform), or an object that is open already.
    // Opening a pipe for reading may wait for its writer.
    virtual bool Open(wchar_t const* name, unsigned flags, CFileException* error = nullptr);
    [[nodiscard]] virtual bool IsOpen() const noexcept;

    // Reads `count` bytes, fewer only at the end of the file, and returns how many. Throws on a failure.
    virtual unsigned Read(void* buffer, unsigned count);

    // Writes all bytes, or throws; part of them may have been written then.
    virtual void Write(void const* buffer, unsigned count);

    // Waits until what was written is on the medium. Nothing to do for pipes and terminals. Throws on a
    // failure.
    virtual void Flush();

    // The new position from the start of the file. Throws where there is none, as in a pipe or below 0.
    virtual std::int64_t Seek(std::int64_t offset, SeekPosition from);
    [[nodiscard]] virtual std::int64_t GetPosition() const;
    [[nodiscard]] virtual std::int64_t GetLength() const;

    // Closes and throws if that fails; the object is closed either way. Nothing to do for a closed one.
    virtual void Close();

private:
    std::intptr_t m_handle = -1;
};
