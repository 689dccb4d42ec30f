// How the lines of all files nest in each other, and what stands where no reader looks.
//
// This is what linking a lake makes of the lines, but without its leniency: sections that were superseded,
// lines behind a stray bracket and the like are told as well.
#pragma once

#include <paramdb/storage/line_origins.h>

#include <cstddef>
#include <limits>
#include <vector>

namespace paramdb::tools::check {

// A line of a file, counted from 1.
struct LinePlace {
    std::size_t file = 0;
    std::size_t line = 0;
};

struct OutlineLine {
    CLakeNode const* node;
    LinePlace place;
};

struct OutlineSection {
    static constexpr std::size_t None = std::numeric_limits<std::size_t>::max();

    OutlineLine opener;
    OutlineLine closer{nullptr, {}};        // without a node for a section that ends with the last file
    std::size_t parent = None;              // an index of the sections; none at the top level
    CLakeNode const* first_line = nullptr;  // the one behind the opener; null behind the last line of all
    std::vector<OutlineLine> named = {};    // lines with a key that open nothing
    std::vector<std::size_t> sections = {}; // those directly in it
    std::size_t lines_without_key = 0;      // rows, comments and blank lines directly in it
    bool is_behind_end = false;             // see Outline::stray_closers
    bool is_in_effect = false; // at the top level the last one of its key, which is the one that is read

    bool IsTopLevel() const { return parent == None; }
};

struct Outline {
    // In the order of their openers.
    std::vector<OutlineSection> sections;

    // Lines with a key at the top level, in their order; the index of the section of those that open one.
    struct Key {
        OutlineLine line;
        std::size_t section;
        bool is_behind_end;
    };
    std::vector<Key> keys;

    // Lines at the top level that have a text but no key and open nothing.
    std::vector<OutlineLine> loose;

    // Closing lines that close nothing. Behind the first of them nothing is found by any reader.
    std::vector<OutlineLine> stray_closers;
    std::vector<OutlineLine> closers; // all others with a text behind the bracket
    std::size_t lines_behind_end = 0; // that hold anything but a comment

    // The section that the line stands in or opens or closes, the innermost one; none at the top level.
    OutlineSection const* SectionAt(LinePlace place) const;
};

// The lines with and without a key directly in a section, but for those that open or close one.
std::vector<CLakeNode const*> LinesIn(OutlineSection const& section);

// Walks through all lines of the lake, which has just been read and merged.
Outline MakeOutline(CLake const& lake, LineOrigins const& origins);

} // namespace paramdb::tools::check
