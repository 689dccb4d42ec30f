#include <paramdb/storage/line_origins.h>

#include <algorithm>
#include <functional>

namespace paramdb {
namespace {

std::vector<std::size_t> LineBegins(std::string_view bytes) {
    std::vector<std::size_t> begins;
    for (std::size_t place = 0; place < bytes.size();) {
        begins.push_back(place);
        std::size_t const end = bytes.find('\n', place);
        place = end == std::string_view::npos ? bytes.size() : end + 1;
    }
    return begins;
}

} // namespace

std::string_view LineOrigins::File::Line(std::size_t line) const {
    std::size_t const begin = line_begins[line - 1];
    std::size_t const end = line < line_begins.size() ? line_begins[line] : bytes.size();
    std::string_view text = bytes.substr(begin, end - begin);
    if (text.ends_with('\n'))
        text.remove_suffix(1);
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    return text;
}

LineOrigins::LineOrigins(CLake const& lake) : m_bytes(lake.m_bytes) {
    for (SharedLakeBytes const& bytes : m_bytes) {
        m_by_address.push_back(m_files.size());
        m_files.push_back({bytes->file.GetString(), bytes->text(), LineBegins(bytes->text())});
    }
    std::sort(m_by_address.begin(), m_by_address.end(), [this](std::size_t left, std::size_t right) {
        return std::less<>()(m_files[left].bytes.data(), m_files[right].bytes.data());
    });
}

std::optional<LineOrigin> LineOrigins::Find(char const* byte) const {
    auto const behind = std::upper_bound(m_by_address.begin(), m_by_address.end(), byte,
                                         [this](char const* address, std::size_t file) {
                                             return std::less<>()(address, m_files[file].bytes.data());
                                         });
    if (behind == m_by_address.begin())
        return std::nullopt;
    std::size_t const index = *std::prev(behind);
    File const& file = m_files[index];
    // The end of the last line counts as a part of it.
    if (file.bytes.empty() || std::less<>()(file.bytes.data() + file.bytes.size(), byte))
        return std::nullopt;
    auto const offset = static_cast<std::size_t>(byte - file.bytes.data());
    auto const next = std::upper_bound(file.line_begins.begin(), file.line_begins.end(), offset);
    return LineOrigin{index, static_cast<std::size_t>(next - file.line_begins.begin()),
                      offset - *std::prev(next) + 1};
}

} // namespace paramdb
