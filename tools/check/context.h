// What the rules of a check look at: the files with their lines, the lake that they make together, the
// tables that were loaded from it with the origin of each row, and what the load said.
//
// A rule is a function that looks at this and adds findings:
//
//     void CheckTriggerRows(CheckContext const& context, FindingList& findings) {
//         CheckedTable const& rows = context.Table("TriggerParam");
//         std::size_t const trigger = rows.Column("trigger");
//         rows.VisitRows([&](CheckedRow const& row) {
//             if (!context.Parameters().Trigger().contains(...row.Integer(trigger)...))
//                 findings.Add("P3..", row.At(trigger), "there is no trigger " + ...);
//         });
//     }
//
// Rules run one after the other on one thread. Places are looked up only where one is asked for.
#pragma once

#include <paramdb/query/param_instance.h>
#include <paramdb/storage/line_origins.h>

#include "tools/check/checked_table.h"
#include "tools/check/finding.h"
#include "tools/check/outline.h"
#include "tools/loading.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// A message of the library during the load.
struct LoadMessage {
    int category;
    int style; // see messages.h
    std::wstring text;
};

class CheckContext {
public:
    // Reads and loads the files into the process-wide lake and tables. A revision in a database counts as the
    // file that holds the same. Null if one of them is at fault, of
    // which `err` is told.
    static std::unique_ptr<CheckContext> Make(std::vector<std::string> const& files, std::ostream& err);

    CheckContext(CheckContext const&) = delete;
    CheckContext& operator=(CheckContext const&) = delete;

    // The load. After a refusal no table has a row, though the lines can be looked at all the same.
    Load const& LoadInfo() const { return m_load; }
    bool IsRefused() const { return m_load.result == LoadResult::Refused; }
    std::vector<LoadMessage> const& Messages() const { return m_messages; }

    // The lake of all files, and the tables that it filled. What is derived is missing if the load is not
    // complete.
    CLake const& Lake() const;
    CQtParamInstance const& Parameters() const { return m_parameters; }

    // The files in the order of the command line, with their bytes and lines.
    std::vector<LineOrigins::File> const& Files() const { return m_origins->Files(); }
    // The name of a file as it was given, for the terminal.
    std::string FileName(std::size_t file) const;

    // The sections of the files as they stand there, and what stands outside of them.
    Outline const& Lines() const { return m_outline; }

    // All tables in the order of registration, and one by its name: <TMode>, TMode or Mode. Throws
    // std::logic_error if there is none of that name.
    std::span<CheckedTable const> Tables() const { return m_tables; }
    CheckedTable const& Table(std::string_view name) const;

    // Where a line stands, with its first text (key or value) marked. For a line of no file the first file as
    // a whole.
    Place PlaceOf(CLakeNode const& line) const;
    // Where a part of a line stands, which must be a view of the bytes of a file.
    Place PlaceOf(std::string_view text) const;

private:
    CheckContext() = default;

    Load m_load;
    std::vector<LoadMessage> m_messages;
    CQtParamInstance m_parameters;
    std::unique_ptr<LineOrigins> m_origins;
    Outline m_outline;
    std::vector<CheckedTable> m_tables;
};

} // namespace paramdb::tools::check
