// Merging parameter files as CLake::merge does, but with the bytes of the lines as they are, and with an
// account of what came from where.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// A file to merge; the name is for messages and reports.
struct MergeInput {
    std::string name;
    std::string bytes;
};

// A line of one of the files, counted from 1.
struct MergePlace {
    std::size_t file = 0;
    std::size_t line = 0;
    bool operator==(MergePlace const&) const = default;
};

// A section of the top level, most of which are tables, and those of the same key that it replaced.
struct MergedSection {
    struct Occurrence {
        MergePlace place; // of its opening line
        std::size_t rows = 0;
        bool operator==(Occurrence const&) const = default;
    };
    std::string key; // bytes of a lake, as all texts here
    Occurrence used;
    std::vector<Occurrence> replaced;
    bool operator==(MergedSection const&) const = default;
};

// A plain key of the top level of which a later line with another value is passed over. A later line behind a
// section counts too; the value in use is "{" then.
struct MergedKey {
    struct Occurrence {
        MergePlace place;
        std::string value;
        bool operator==(Occurrence const&) const = default;
    };
    std::string key;
    Occurrence used;
    std::vector<Occurrence> passed_over;
    bool operator==(MergedKey const&) const = default;
};

struct Merged {
    std::string bytes;
    std::size_t lines = 0;
    std::size_t left_out = 0;            // superseded lines
    std::vector<MergedSection> sections; // in the order of their keys' first lines
    std::vector<MergedKey> keys;         // in the same order
};

enum class MergeLines { All, WithoutSuperseded };

// What keeps the files from being merged, a line for each fault: "FILE:LINE: reason". At fault are a closing
// line that closes nothing, with anything behind it, and a section that is not closed, with another file
// behind it: in both cases what follows would be lost.
std::vector<std::string> MergeFaults(std::vector<MergeInput> const& inputs);

// Puts the files behind one another, a blank line between them.
Merged MergeFiles(std::vector<MergeInput> const& inputs, MergeLines lines);

// Whether lookups in the text find what they find after the library has merged the files, and, where no line
// was left out, whether it has the same lines.
bool IsMergeOf(Merged const& merged, std::vector<MergeInput> const& inputs);

} // namespace paramdb::tools
