#include <paramdb/database/import_tables.h>
#include <paramdb/database/local_copy.h>
#include <paramdb/database/revision_rows.h>
#include <paramdb/database/schema.h>
#include <paramdb/platform/core/utf8.h>

#include <utility>

namespace ParamDb {
namespace {

using namespace paramdb;
using namespace paramdb::database;

constexpr wchar_t ImportName[] = L"ParamDb::ImportTables()";

// An import that has not replaced anything yet.
struct Fetched {
    Import import = {};
    CDbTableSet set = {};
};

// The report is a copy: what it has counted goes with an attempt that fails.
Fetched Fetch(ConnectionText const& connection, std::chrono::seconds timeout, Report report) {
    auto const open = [&] { return OpenSession(connection, Access::Read, timeout); };
    auto const session = open();
    Transaction transaction(*session, Access::Read);
    auto found = FindRevision(*session, connection);
    Fetched fetched;
    fetched.set = ReadRevision(*session, found.id, open, report);
    fetched.import.revision = std::move(found.revision);
    fetched.import.faults = report.faults();
    transaction.Commit();
    return fetched;
}

std::optional<Fetched> FetchLocalCopy(ConnectionText const& connection, ImportOptions const& options,
                                      std::string const& reason, Report& report) {
    std::string const file = ToUtf8(options.local_copy);
    try {
        LocalCopy copy = ReadLocalCopy(file, connection, options.timeout, report);
        report.Note("Import from '" + connection.Place() + "' failed: " + reason + ". The local copy '" +
                    file + "' is used: revision " + std::to_string(copy.revision.number) + " of set '" +
                    ToUtf8(copy.revision.set) + "', copied " + copy.copied);
        return Fetched{
            {.revision = std::move(copy.revision), .is_local_copy = true, .faults = report.faults()},
            std::move(copy.set)};
    } catch (DatabaseFault const& fault) {
        report.Fail(reason + ". The local copy '" + file + "' cannot be used: " + fault.what());
        return std::nullopt;
    }
}

std::optional<Fetched> FetchAnywhere(ConnectionText const& connection, ImportOptions const& options,
                                     Report& report) {
    try {
        return Fetch(connection, options.timeout, report);
    } catch (DatabaseFault const& fault) {
        if (fault.kind() == FaultKind::Away && !options.local_copy.empty())
            return FetchLocalCopy(connection, options, fault.what(), report);
        report.Fail(fault.what());
        return std::nullopt;
    }
}

void KeepLocalCopy(ConnectionText const& connection, ImportOptions const& options, Fetched const& fetched,
                   Report& report) {
    std::string const file = ToUtf8(options.local_copy);
    if (fetched.import.faults > 0)
        return report.Note("The local copy '" + file + "' stays as it is, since the import had faults");
    try {
        WriteLocalCopy(file, connection, fetched.import.revision, fetched.set, options.timeout);
    } catch (DatabaseFault const& fault) {
        report.Note("The local copy '" + file + "' could not be written: " + fault.what());
    }
}

std::optional<ConnectionText> Parse(std::wstring const& text, wchar_t const* function,
                                    char const* operation) {
    auto parsed = ParseConnectionText(ToUtf8(text));
    if (auto const* const fault = std::get_if<std::string>(&parsed)) {
        Report(function, operation).Fail(*fault);
        return std::nullopt;
    }
    return std::get<ConnectionText>(std::move(parsed));
}

} // namespace

std::optional<Import> ImportTables(std::wstring const& text, CDbTableSet& set, ImportOptions const& options) {
    auto const connection = Parse(text, ImportName, "Import");
    if (!connection)
        return std::nullopt;
    Report report(ImportName, "Import from '" + connection->Place() + "'");
    auto fetched = FetchAnywhere(*connection, options, report);
    if (!fetched)
        return std::nullopt;
    if (options.strict && fetched->import.faults > 0) {
        report.Fail(Count(fetched->import.faults, "fault") + " in the data");
        return std::nullopt;
    }
    if (!options.local_copy.empty() && !fetched->import.is_local_copy)
        KeepLocalCopy(*connection, options, *fetched, report);
    set = std::move(fetched->set);
    return std::move(fetched->import);
}

std::optional<std::vector<Revision>> Revisions(std::wstring const& text, std::chrono::seconds timeout) {
    constexpr wchar_t name[] = L"ParamDb::Revisions()";
    auto const connection = Parse(text, name, "Listing");
    if (!connection)
        return std::nullopt;
    try {
        auto const session = OpenSession(*connection, Access::Read, timeout);
        Transaction transaction(*session, Access::Read);
        if (FindSchema(*session) == SchemaState::Missing)
            throw DatabaseFault(FaultKind::Other, "the database holds no parameter data");
        std::vector<Revision> revisions;
        for (FoundRevision& found : ListRevisions(*session, connection->set))
            revisions.push_back(std::move(found.revision));
        transaction.Commit();
        return revisions;
    } catch (DatabaseFault const& fault) {
        Report(name, "Listing of '" + connection->Place() + "'").Fail(fault.what());
        return std::nullopt;
    }
}

} // namespace ParamDb
