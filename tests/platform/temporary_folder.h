// A temporary folder whose files are known by wide names, as the platform layer takes them.
#pragma once

#include <paramdb/platform/core/utf8.h>

#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <tests/support/temp_dir.h>

class TemporaryFolder {
public:
    // The full name of a file or folder in here.
    [[nodiscard]] std::wstring Name(std::wstring_view file) const {
        return test_support::WideName(m_folder.path() / Native(file));
    }
    [[nodiscard]] std::wstring Name() const { return test_support::WideName(m_folder.path()); }

    // How many files and folders there are.
    [[nodiscard]] std::size_t Count() const {
        std::filesystem::directory_iterator const files(m_folder.path());
        return static_cast<std::size_t>(std::distance(begin(files), end(files)));
    }

    [[nodiscard]] static std::filesystem::path Native(std::wstring_view name) {
        std::string const bytes = paramdb::ToUtf8(name);
        return {std::u8string(bytes.begin(), bytes.end())};
    }
    static void Write(std::wstring_view name, std::string_view content) {
        test_support::WriteBytes(Native(name), content);
    }
    [[nodiscard]] static std::string Read(std::wstring_view name) {
        return test_support::ReadBytes(Native(name));
    }

private:
    test_support::TempDir m_folder;
};
