// The parts of an input, and the folder in which fuzzers write their files.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace fuzz {

inline std::string_view TextOf(std::uint8_t const* data, std::size_t size) {
    return {reinterpret_cast<char const*>(data), size};
}

// Stands between two files of one input.
inline constexpr char FileSeparator = '\x1E';

// At least one part, and no more than `most`; the last holds all that is left.
std::vector<std::string_view> SplitFiles(std::string_view input, std::size_t most);

// A folder of this process alone, removed at its end.
std::filesystem::path const& ScratchFolder();

// Makes a file in that folder, in place of one with that name, and returns its name.
std::wstring ScratchFile(std::string const& name, std::string_view bytes);

} // namespace fuzz
