// The parameter files given to a verb: reading them, and telling what is wrong with one that cannot be read.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace paramdb::tools {

// A file that has been read.
struct SourceFile {
    std::string name;                   // as it was given
    std::optional<std::uint64_t> bytes; // none for what has no length, such as a pipe
    std::uint64_t lines = 0;
    std::uint64_t sections = 0;
};

struct Sources {
    std::vector<SourceFile> files; // in the order of merging
    double seconds = 0;            // spent on reading and merging
};

// Adds the argument FILE..., at least one, to a verb.
void AddFilesArgument(CLI::App& verb, std::vector<std::string>& files);

// Whether there is a file of that name; a folder is none, and a revision in a database counts as one.
bool IsFile(std::string const& name);

// Makes the process-wide lake hold these files, the first one read and the others merged into it in their
// order. If any of them is at fault, each of those gets a line "paramdb: FILE: reason" on the stream, the
// lake is left empty and the result is none. At fault is a file that cannot be read, that is empty, or that
// is no parameter file: one with a zero byte, or without a single line that has a key.
std::optional<Sources> ReadSources(std::vector<std::string> const& files, std::ostream& err);

} // namespace paramdb::tools
