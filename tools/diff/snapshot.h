// A load as it is compared: everything by value, so that the next load may follow in the same process.
//
//     auto const a = LoadSnapshot({"old.lake"}, {}, err);
//     auto const b = LoadSnapshot({"new.lake"}, {}, err);
#pragma once

#include "tools/diff/answers.h"
#include "tools/diff/row_table.h"
#include "tools/kinds.h"
#include "tools/loading.h"

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace paramdb::tools {

struct Snapshot {
    std::vector<std::string> files; // in the order of merging
    std::int32_t major = 0;
    std::int32_t minor = 0;
    NamedTexts texts;
    std::vector<RowTable> tables;                 // in the order of the catalogue
    std::optional<std::vector<RowTable>> answers; // in the order of topics; none if the load is incomplete

    std::uint64_t RowCount() const;

    // The name of an id; none if there is no such id. A virtual mode has one if it stands in a table.
    std::optional<std::wstring_view> NameOf(Kind const& kind, std::int32_t id) const;
};

// Loads files, merged in their order, into the process-wide tables and keeps what they hold. Messages of the
// load go to `err`, and behind them a line that says whose they were. None if a file is at fault or its
// version is refused, which `err` is told.
std::optional<Snapshot> LoadSnapshot(std::vector<std::string> const& files, AnswerOptions const& options,
                                     std::ostream& err);

// The files of a side in one text.
std::string FileNames(std::vector<std::string> const& files);

} // namespace paramdb::tools
