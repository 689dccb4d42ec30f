#include <paramdb/platform/framework/file_system.h>
#include <paramdb/platform/framework/read_file.h>

#include <algorithm>

namespace paramdb {

std::uint64_t MostBytesOf(CFile const& file) {
    try {
        return std::max(MostUnforeseenBytes, static_cast<std::uint64_t>(file.GetLength()));
    } catch (CFileException const&) {
        return MostUnforeseenBytes;
    }
}

std::string ReadToEnd(CFile& file) {
    constexpr unsigned piece = 1U << 16;
    std::uint64_t const most = MostBytesOf(file);
    std::string bytes;
    for (unsigned taken = piece; taken == piece;) {
        std::size_t const size = bytes.size();
        if (size > most)
            throw CFileException(file_system::TooLargeError);
        bytes.resize(size + piece);
        taken = file.Read(bytes.data() + size, piece);
        bytes.resize(size + taken);
    }
    return bytes;
}

} // namespace paramdb
