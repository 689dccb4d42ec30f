// A folder for files on their way to somewhere else.
#pragma once

#include <filesystem>
#include <system_error>

namespace paramdb::tools {

// A new folder in another one, gone with all its files at the end unless it was moved.
class TemporaryFolder {
public:
    // `fault` tells why there is none.
    TemporaryFolder(std::filesystem::path const& parent, std::error_code& fault);
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder();

    std::filesystem::path const& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace paramdb::tools
