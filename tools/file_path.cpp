#include "tools/file_path.h"

namespace paramdb::tools {

std::filesystem::path PathOf(std::string const& name) {
    return std::u8string(name.begin(), name.end());
}

std::string NameOf(std::filesystem::path const& path) {
    std::u8string const name = path.u8string();
    return {name.begin(), name.end()};
}

} // namespace paramdb::tools
