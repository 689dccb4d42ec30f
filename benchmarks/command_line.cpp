#include "command_line.h"

#include "measure.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace benchmarks {
namespace {

std::size_t Number(std::string_view option, std::string_view text) {
    std::size_t number = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size() || number == 0)
        throw std::invalid_argument(std::string(option) + " takes a number above 0");
    return number;
}

Clock ClockOf(std::string_view name) {
    if (name != "wall" && name != "cpu")
        throw std::invalid_argument("--time takes wall or cpu");
    return name == "cpu" ? Clock::Processor : Clock::Wall;
}

} // namespace

std::size_t CommandLine::Repeats(std::size_t size) const {
    return repeats * std::clamp<std::size_t>(200'000 / size, 1, 8);
}

CommandLine ParseCommandLine(int count, char const* const* arguments) {
    CommandLine line;
    for (int index = 1; index < count; index += 2) {
        std::string_view const option = arguments[index];
        bool const known =
            option == "--rows" || option == "--repeats" || option == "--json" || option == "--time";
        if (!known || index + 1 == count)
            throw std::invalid_argument("usage: [--rows N] [--repeats N] [--json FILE] [--time wall|cpu]");
        std::string_view const value = arguments[index + 1];
        if (option == "--rows")
            line.sizes = {Number(option, value)};
        else if (option == "--repeats")
            line.repeats = Number(option, value);
        else if (option == "--json")
            line.json = value;
        else
            UseClock(ClockOf(value));
    }
    return line;
}

WorkFolder::WorkFolder() {
    std::string path = (std::filesystem::temp_directory_path() / "paramdb-benchmark-XXXXXX").string();
    if (mkdtemp(path.data()) == nullptr)
        throw std::runtime_error("cannot make " + path);
    m_path = path;
}

WorkFolder::~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void WriteFile(std::filesystem::path const& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

void Check(bool condition, char const* text) {
    if (!condition)
        throw std::runtime_error(text);
}

} // namespace benchmarks
