// A folder of a test's own, removed with all its content at the end, and whole files by wide name.
#pragma once

#include <paramdb/platform/core/utf8.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::random_device random;
        do {
            m_path = std::filesystem::temp_directory_path() / ("paramdb-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(m_path));
    }
    TemporaryFolder(TemporaryFolder const&) = delete;
    TemporaryFolder& operator=(TemporaryFolder const&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    // The full name of a file or folder in here.
    [[nodiscard]] std::wstring Name(std::wstring_view file) const { return Wide(m_path / Native(file)); }
    [[nodiscard]] std::wstring Name() const { return Wide(m_path); }

    // How many files and folders there are.
    [[nodiscard]] std::size_t Count() const {
        std::filesystem::directory_iterator const files(m_path);
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    [[nodiscard]] static std::filesystem::path Native(std::wstring_view name) {
        std::string const bytes = paramdb::ToUtf8(name);
        return {std::u8string(bytes.begin(), bytes.end())};
    }
    static void Write(std::wstring_view name, std::string_view content) {
        std::ofstream(Native(name), std::ios::binary) << content;
    }
    [[nodiscard]] static std::string Read(std::wstring_view name) {
        std::ifstream file(Native(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    static std::wstring Wide(std::filesystem::path const& path) {
        std::u8string const bytes = path.u8string();
        return paramdb::FromUtf8(std::string(bytes.begin(), bytes.end()));
    }

    std::filesystem::path m_path;
};
