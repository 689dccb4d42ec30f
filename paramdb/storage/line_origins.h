// Where the lines of a lake come from: file, line and column, after merging and copying too.
//
//     paramdb::LineOrigins const origins(lake);
//     if (auto const origin = origins.Find(*lake[L"<TMode>"].position))
//         Print(origins.Files()[origin->file].name, origin->line);
//
// The texts of a line refer to the bytes of the file it was read from, which every lake with lines of that
// file keeps. So reading and loading spend nothing on origins; the line ends are looked for when an object of
// this class is made. A line that a program added comes from no file, as does the blank line that merging
// puts between two files; a line whose texts were assigned keeps its origin.
//
// Threads: const members may run in several threads at once.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/storage/lake.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb {

struct LineOrigin {
    std::size_t file;   // an index of Files()
    std::size_t line;   // from 1
    std::size_t column; // from 1, in bytes, each of which is one character

    bool operator==(LineOrigin const&) const = default;
};

class PARAMDB_API LineOrigins {
public:
    struct PARAMDB_API File {
        std::wstring name; // as it was read
        std::string_view bytes;
        std::vector<std::size_t> line_begins;

        // The bytes of a line, counted from 1, without its line end.
        std::string_view Line(std::size_t line) const;
    };

    // Keeps the bytes, so that it stays valid whatever becomes of the lake.
    explicit LineOrigins(CLake const& lake);

    // The files in the order of merging. One that was read twice is there twice.
    std::vector<File> const& Files() const { return m_files; }

    // Where the key of a line begins, or what else stands first in it; for a comment the semicolon, for a
    // blank line its end.
    std::optional<LineOrigin> Find(CLakeNode const& line) const { return Find(line.m_bytes); }

    // Where a byte stands, such as the first one of a field in the text of a line.
    std::optional<LineOrigin> Find(char const* byte) const;

private:
    std::vector<SharedLakeBytes> m_bytes;
    std::vector<File> m_files;
    std::vector<std::size_t> m_by_address; // indices of files, in the order of their addresses
};

} // namespace paramdb
