// What all benchmark programs take on their command line, and the folder of their files.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string_view>
#include <vector>

namespace benchmarks {

// Three sizes, or the one that was asked for.
struct CommandLine {
    std::vector<std::size_t> sizes{10'000, 100'000, 1'000'000};
    std::size_t repeats = 5;    // at the largest size
    std::filesystem::path json; // empty: no file

    // Small works are repeated more often, since chance weighs more in a short time.
    std::size_t Repeats(std::size_t size) const;
};

// Understands `--rows N`, `--repeats N`, `--json FILE` and `--time wall|cpu`, the last of which holds for all
// measurements from then on. Throws std::invalid_argument for anything else.
CommandLine ParseCommandLine(int count, char const* const* arguments);

// A new folder for the files of one run, which goes away with all that is in it.
class WorkFolder {
public:
    WorkFolder();
    WorkFolder(WorkFolder const&) = delete;
    WorkFolder& operator=(WorkFolder const&) = delete;
    ~WorkFolder();

    std::filesystem::path Path(std::string_view name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};

void WriteFile(std::filesystem::path const& path, std::string_view bytes);

// Throws std::runtime_error with the text if the condition does not hold: a benchmark whose result is wrong
// has no time.
void Check(bool condition, char const* text);

} // namespace benchmarks
