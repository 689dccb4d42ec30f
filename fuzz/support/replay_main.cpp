// The main of a fuzzer in builds without a fuzzing engine: it runs every file that it is given once, and all
// files of every folder. What is found ends the program.
//   NAME FILE|FOLDER...
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> FilesOf(std::filesystem::path const& place) {
    if (!std::filesystem::is_directory(place))
        return {place};
    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::directory_iterator(place))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

bool Replay(std::filesystem::path const& name) {
    std::ifstream file(name, std::ios::binary);
    std::vector<char> const bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file) {
        std::cerr << name.string() << ": cannot be read\n";
        return false;
    }
    std::cout << name.string() << std::endl; // at once: the last one told is the one that failed
    // A block of its own, so that a sanitizer sees whoever reads beyond it.
    std::vector<std::uint8_t> const data(bytes.begin(), bytes.end());
    LLVMFuzzerTestOneInput(data.data(), data.size());
    return true;
}

} // namespace

int main(int count, char** arguments) {
    std::size_t files = 0;
    for (int argument = 1; argument < count; ++argument)
        for (auto const& name : FilesOf(arguments[argument])) {
            if (!Replay(name))
                return 1;
            ++files;
        }
    if (files == 0) {
        std::cerr << "usage: " << arguments[0] << " FILE|FOLDER...\n";
        return 1;
    }
    std::cout << files << " inputs without a finding\n";
    return 0;
}
