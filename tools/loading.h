// The main job of the command, shared by its verbs: files in, filled tables out.
#pragma once

#include "tools/messages.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace paramdb::tools {

enum class LoadResult {
    Complete,   // everything that the load does is done
    Incomplete, // the tables hold the new data, but what is derived from them is missing
    Refused,    // the version was refused before a table was touched
};

struct TableTotals {
    std::uint64_t tables = 0; // those that hold a row
    std::uint64_t all_tables = 0;
    std::uint64_t rows = 0;
};

struct NamedTexts {
    std::wstring learn_file;
    std::wstring calib_file;
    std::wstring base_type;
    std::wstring alias_type;
};

struct Load {
    Sources sources;
    std::int32_t major = 0; // as the gate reads it: 0 for one that is missing
    std::int32_t minor = 0;
    LoadResult result = LoadResult::Refused;
    NamedTexts texts;                  // empty after a refusal
    std::optional<TableTotals> tables; // none after a refusal
    MessageCounts messages;
    double load_seconds = 0; // without the reading of the files
};

// Reads the files (see ReadSources, and ReadTableSources for revisions in databases) and loads them into the
// process-wide tables, which are emptied first, and the process-wide table set with them. Messages go to
// `err`, or to the sink if there is one. None if a file is at fault.
std::optional<Load> LoadFiles(std::vector<std::string> const& files, std::ostream& err,
                              PrWin::Sink sink = {});

// The exit code of a verb that has nothing of its own to find.
ExitCode ExitCodeOf(Load const& load);

} // namespace paramdb::tools
