#include <paramdb/database/export_tables.h>
#include <paramdb/database/host_system.h>
#include <paramdb/database/schema.h>
#include <paramdb/database/table_content.h>
#include <paramdb/platform/core/utf8.h>

namespace ParamDb {
namespace {

using namespace paramdb;
using namespace paramdb::database;

constexpr wchar_t ExportName[] = L"ParamDb::ExportTables()";
constexpr char DefaultSet[] = "default";
// Of exporters that stand in each other's way one at least comes through each time.
constexpr int MostAttempts = 10;

// Faults have been reported; none means that nothing was written.
std::optional<Revision> TryExport(ConnectionText const& connection, RevisionContent const& content,
                                  NewRevision const& revision, ExportOptions const& options, Report& report) {
    auto const session = OpenSession(connection, Access::Write, options.timeout);
    Transaction transaction(*session, Access::Write);
    SchemaState state = FindSchema(*session);
    if (state == SchemaState::Missing) {
        LockSchema(*session);
        state = FindSchema(*session);
    }
    bool const is_new = state == SchemaState::Missing;
    if (is_new)
        MakeSchema(*session, options.foreign_keys);
    if (options.foreign_keys || state == SchemaState::WithForeignKeys)
        CheckReferences(content, report);
    if (report.faults() > 0)
        return std::nullopt;
    Revision const written = WriteRevision(*session, content, revision);
    transaction.Commit();
    return written;
}

std::optional<Revision> Export(RevisionContent const& content, ConnectionText connection,
                               ExportOptions const& options, Report& report) {
    CheckContent(content, report);
    if (connection.set.empty())
        connection.set = DefaultSet;
    NewRevision const revision{.set = connection.set,
                               .who = options.who.empty() ? UserAtHost() : ToUtf8(options.who),
                               .remark = ToUtf8(options.remark)};
    for (int attempt = 1; report.faults() == 0; ++attempt) {
        try {
            if (auto written = TryExport(connection, content, revision, options, report))
                return written;
        } catch (DatabaseFault const& fault) {
            if (fault.kind() == FaultKind::Conflict && attempt < MostAttempts)
                continue;
            report.Fail(fault.what());
            return std::nullopt;
        }
    }
    report.Fail(Count(report.faults(), "fault") + " in the data");
    return std::nullopt;
}

// Calls the function with the connection that the text is, and reports whatever goes wrong.
template <class Function>
std::optional<Revision> WithConnection(std::wstring const& text, Function&& function) {
    auto const parsed = ParseConnectionText(ToUtf8(text));
    if (auto const* const fault = std::get_if<std::string>(&parsed)) {
        Report(ExportName, "Export").Fail(*fault);
        return std::nullopt;
    }
    auto const& connection = std::get<ConnectionText>(parsed);
    Report report(ExportName, "Export to '" + connection.Place() + "'");
    if (connection.revision) {
        report.Fail("the database gives the number of the revision");
        return std::nullopt;
    }
    return function(connection, report);
}

} // namespace

std::optional<Revision> ExportTables(CDbTableSet const& set, std::wstring const& connection,
                                     ExportOptions const& options) {
    return WithConnection(connection, [&](ConnectionText const& parsed, Report& report) {
        SetContent const content(set, report);
        return Export(content.content(), parsed, options, report);
    });
}

std::optional<Revision> ExportTables(CQtParamInstance const& parameters, std::wstring const& connection,
                                     ExportOptions const& options) {
    return WithConnection(connection, [&](ConnectionText const& parsed, Report& report) {
        return Export(StoreContent(parameters), parsed, options, report);
    });
}

} // namespace ParamDb
