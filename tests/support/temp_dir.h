// A folder of its own for the files of one test, removed with all its content at the end.
#pragma once

#include <paramdb/platform/core/utf8.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>

namespace test_support {

class TempDir {
public:
    TempDir() {
        std::random_device random;
        auto const parent = std::filesystem::temp_directory_path();
        for (int attempt = 0; attempt < 100; ++attempt) {
            std::uint64_t const number = (std::uint64_t{random()} << 32) | random();
            m_path = parent / ("paramdb-test-" + std::to_string(number));
            if (std::filesystem::create_directory(m_path))
                return;
        }
        throw std::runtime_error("no temporary folder could be made");
    }
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    std::filesystem::path const& path() const { return m_path; }
    // The path of a file in the folder; the name is UTF-8.
    std::filesystem::path operator/(std::u8string_view name) const {
        return m_path / std::filesystem::path(name);
    }

private:
    std::filesystem::path m_path;
};

// The path as wide text, one UTF-16 code unit in each character, as the library takes file names.
inline std::wstring WideName(std::filesystem::path const& path) {
    std::u8string const bytes = path.u8string();
    return paramdb::FromUtf8(std::string(bytes.begin(), bytes.end()));
}

inline void WriteBytes(std::filesystem::path const& path, std::string_view bytes) {
    std::filesystem::remove(path); // a new file is quicker than one overwritten
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw std::runtime_error("cannot write " + path.string());
}

inline std::string ReadBytes(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path.string());
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace test_support
