#include "line_floor.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace benchmarks {

std::size_t CountLines(std::filesystem::path const& path) {
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const file(std::fopen(path.c_str(), "rb"), std::fclose);
    if (file == nullptr)
        throw std::runtime_error("cannot read " + path.string());
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    auto const size = static_cast<std::size_t>(std::filesystem::file_size(path));
    auto const bytes = std::make_unique_for_overwrite<char[]>(size);
    if (std::fread(bytes.get(), 1, size, file.get()) != size)
        throw std::runtime_error("cannot read " + path.string());

    std::size_t lines = 0;
    char const* next = bytes.get();
    char const* const end = next + size;
    while (next != end) {
        auto const* const line_end =
            static_cast<char const*>(std::memchr(next, '\n', static_cast<std::size_t>(end - next)));
        if (line_end == nullptr)
            break;
        ++lines;
        next = line_end + 1;
    }
    return lines;
}

} // namespace benchmarks
