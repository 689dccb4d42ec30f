// A folder whose name is longer than the 260 characters that Windows once set as the limit.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <tests/support/temp_dir.h>

namespace test_support {

// The path in the form that std::filesystem takes at any length.
inline std::filesystem::path AnyLength(std::filesystem::path const& path) {
#ifdef _WIN32
    return {LR"(\\?\)" + std::filesystem::absolute(path).make_preferred().wstring()};
#else
    return path;
#endif
}

class DeepFolder {
public:
    explicit DeepFolder(TempDir const& parent) : m_path(parent.path()) {
        // One name may have 255 units, which are bytes on other systems.
        for (char8_t const* const character : {u8"a", u8"\u00E4", u8"\u4E2D", u8"\U0001F600"}) {
            std::u8string name;
            for (int count = 0; count < 60; ++count)
                name += character;
            m_path /= name;
            std::filesystem::create_directory(AnyLength(m_path));
        }
    }
    DeepFolder(DeepFolder const&) = delete;
    DeepFolder& operator=(DeepFolder const&) = delete;
    ~DeepFolder() { Remove(); }

    std::filesystem::path const& path() const { return m_path; }

    // Removes the folder; false if there is a file in it.
    bool Remove() {
        std::error_code fault;
        return std::filesystem::remove(AnyLength(m_path), fault);
    }

private:
    std::filesystem::path m_path;
};

} // namespace test_support
