#include "tools/temporary_folder.h"

#include <random>
#include <string>

namespace paramdb::tools {

TemporaryFolder::TemporaryFolder(std::filesystem::path const& parent, std::error_code& fault) {
    std::random_device random;
    constexpr int most_tries = 100;
    for (int attempt = 0; attempt < most_tries; ++attempt) {
        m_path = parent / (".paramdb-" + std::to_string(random()) + ".tmp");
        if (std::filesystem::create_directory(m_path, fault) || fault)
            return;
    }
    m_path.clear(); // another one's
    fault = std::make_error_code(std::errc::file_exists);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

} // namespace paramdb::tools
