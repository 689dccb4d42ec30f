#include "input.h"

#include <algorithm>
#include <tests/support/temp_dir.h>

namespace fuzz {

std::vector<std::string_view> SplitFiles(std::string_view input, std::size_t most) {
    std::vector<std::string_view> parts;
    while (parts.size() + 1 < most && input.find(FileSeparator) != input.npos) {
        std::size_t const end = input.find(FileSeparator);
        parts.push_back(input.substr(0, end));
        input.remove_prefix(end + 1);
    }
    parts.push_back(input);
    return parts;
}

std::filesystem::path const& ScratchFolder() {
    static test_support::TempDir const folder;
    return folder.path();
}

std::wstring ScratchFile(std::string const& name, std::string_view bytes) {
    auto const path = ScratchFolder() / name;
    test_support::WriteBytes(path, bytes);
    return test_support::WideName(path);
}

} // namespace fuzz
