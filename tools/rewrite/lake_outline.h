// The lines of a lake file as they stand in it, with their place in the tree of sections.
//
// A CLake keeps the texts of lines and forgets how they were written. Verbs that rewrite a file need the
// opposite: each line with all its bytes, what it is, and whether the loaded lake can reach it.
#pragma once

#include <paramdb/storage/lake_line.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace paramdb::tools {

enum class LineKind {
    Blank,
    Comment, // a semicolon and what stands behind it
    Row,     // a line without key
    Named,   // a key with a value
    Opener,  // of a section, with or without a key
    Closer,
    Unread, // behind a closing line of the top level, which ends the file for every reader
};

// No line: the top level, or nothing found.
inline constexpr std::size_t NoLine = static_cast<std::size_t>(-1);

struct OutlineLine {
    std::string_view bytes; // with the line end
    LakeLine parts;
    LineKind kind = LineKind::Blank;
    std::size_t level = 0;              // of sections; a closing line has that of its opener
    std::size_t parent = NoLine;        // the opener of the section that the line stands in
    std::size_t closer = NoLine;        // of an opener; none if the file ends before it
    std::size_t superseded_by = NoLine; // the line for whose sake no lookup reaches this one
};

struct LakeOutline {
    std::vector<OutlineLine> lines;
    std::size_t stray = NoLine;    // the closing line of the top level
    std::size_t unclosed = NoLine; // the outermost section that the file leaves open

    // The line behind this one in its section: behind the closing line for an opener.
    std::size_t Next(std::size_t line) const {
        if (lines[line].kind != LineKind::Opener)
            return line + 1;
        return lines[line].closer == NoLine ? lines.size() : lines[line].closer + 1;
    }
    // Where the lines of a section end: its closing line, or the end of all lines; NoLine is the top level.
    std::size_t End(std::size_t opener) const;
};

// The outline refers to the bytes, which must outlive it.
LakeOutline OutlineOf(std::string_view bytes);

} // namespace paramdb::tools
