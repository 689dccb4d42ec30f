#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cfile.h>
#include <paramdb/platform/framework/file_system.h>

#include <utility>

namespace file_system = paramdb::file_system;

namespace {

// The result of a call of the system, or its error as an exception.
std::int64_t Checked(std::int64_t result) {
    if (result < 0)
        throw CFileException(file_system::LastError());
    return result;
}

} // namespace

CFileException::CFileException(int code)
    : std::runtime_error(code == 0 ? std::string() : paramdb::ToUtf8(file_system::ErrorText(code))),
      m_code(code) {}

std::wstring CFileException::Text() const {
    return paramdb::FromUtf8(what());
}

bool CFileException::IsNotFound() const noexcept {
    return file_system::MeansNotFound(m_code);
}

CFile::CFile(wchar_t const* name, unsigned flags) {
    CFileException error;
    if (!CFile::Open(name, flags, &error))
        throw error;
}

CFile::CFile(CFile&& other) noexcept : m_handle(std::exchange(other.m_handle, file_system::NoHandle)) {}

CFile& CFile::operator=(CFile&& other) noexcept {
    std::intptr_t const taken = std::exchange(other.m_handle, file_system::NoHandle);
    std::intptr_t const old = std::exchange(m_handle, taken);
    if (old != file_system::NoHandle)
        file_system::Close(old);
    return *this;
}

CFile::~CFile() {
    if (m_handle != file_system::NoHandle)
        file_system::Close(m_handle);
}

bool CFile::Open(wchar_t const* name, unsigned flags, CFileException* error) {
    if (m_handle != file_system::NoHandle) {
        if (error)
            *error = CFileException(file_system::InUseError);
        return false;
    }
    file_system::OpenMode mode;
    mode.write = (flags & (modeWrite | modeReadWrite)) != 0;
    mode.read = (flags & modeReadWrite) != 0 || !mode.write;
    mode.create = (flags & modeCreate) != 0;
    mode.truncate = mode.create && (flags & modeNoTruncate) == 0;
    m_handle = file_system::Open(name ? name : L"", mode);
    if (m_handle == file_system::NoHandle && error)
        *error = CFileException(file_system::LastError());
    return m_handle != file_system::NoHandle;
}

bool CFile::IsOpen() const noexcept {
    return m_handle != file_system::NoHandle;
}

unsigned CFile::Read(void* buffer, unsigned count) {
    unsigned done = 0;
    while (done < count) {
        auto const got =
            Checked(file_system::Read(m_handle, static_cast<char*>(buffer) + done, count - done));
        if (got == 0)
            break;
        done += static_cast<unsigned>(got);
    }
    return done;
}

void CFile::Write(void const* buffer, unsigned count) {
    unsigned done = 0;
    while (done < count) {
        auto const rest = static_cast<char const*>(buffer) + done;
        auto const put = Checked(file_system::Write(m_handle, rest, count - done));
        if (put == 0) // would go on for ever
            throw CFileException(file_system::NoProgressError);
        done += static_cast<unsigned>(put);
    }
}

void CFile::Flush() {
    Checked(file_system::Flush(m_handle) ? 0 : -1);
}

std::int64_t CFile::Seek(std::int64_t offset, SeekPosition from) {
    auto const origin = from == begin     ? file_system::From::begin
                        : from == current ? file_system::From::current
                                          : file_system::From::end;
    return Checked(file_system::Seek(m_handle, offset, origin));
}

std::int64_t CFile::GetPosition() const {
    return Checked(file_system::Seek(m_handle, 0, file_system::From::current));
}

std::int64_t CFile::GetLength() const {
    return Checked(file_system::Length(m_handle));
}

void CFile::Close() {
    if (m_handle != file_system::NoHandle)
        Checked(file_system::Close(std::exchange(m_handle, file_system::NoHandle)) ? 0 : -1);
}
