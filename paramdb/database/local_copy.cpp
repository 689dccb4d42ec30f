#include <paramdb/database/local_copy.h>
#include <paramdb/database/schema.h>
#include <paramdb/database/table_content.h>
#include <paramdb/platform/core/utf8.h>

#include <filesystem>
#include <random>

namespace paramdb::database {
namespace {

std::filesystem::path PathOf(std::string const& file) {
    return std::u8string(file.begin(), file.end());
}

ConnectionText ConnectionTo(std::string const& file) {
    auto const parsed = ParseConnectionText("sqlite3:" + file + "#copy");
    if (auto const* const fault = std::get_if<std::string>(&parsed))
        throw DatabaseFault(FaultKind::Other, *fault);
    auto connection = std::get<ConnectionText>(parsed);
    connection.set.clear();
    return connection;
}

struct Origin {
    std::string place;
    std::string copied;
};

Origin FindOrigin(Session& session) {
    if (!FindColumns(session).contains("paramdb_copy"))
        throw DatabaseFault(FaultKind::Other, "it is no copy");
    auto const rows = session.Query("SELECT place, copied FROM paramdb_copy", 2);
    if (rows.size() != 1)
        throw DatabaseFault(FaultKind::Other, "it is no copy");
    return {rows.front()[0].value_or(""), rows.front()[1].value_or("")};
}

bool IsCopyOf(std::string const& file, ConnectionText const& original, ParamDb::Revision const& revision,
              std::chrono::seconds timeout) {
    try {
        auto const session = OpenSession(ConnectionTo(file), Access::Read, timeout);
        Transaction const transaction(*session, Access::Read);
        return FindOrigin(*session).place == original.Place() &&
               FindRevision(*session, ConnectionTo(file)).revision == revision;
    } catch (DatabaseFault const&) {
        return false;
    }
}

// A file beside another one that is gone in the end unless it took the other's name.
class FileBeside {
public:
    explicit FileBeside(std::string const& file) : m_target(PathOf(file)) {
        std::random_device random;
        m_name = file + "." + std::to_string(random()) + ".new";
    }
    FileBeside(FileBeside const&) = delete;
    FileBeside& operator=(FileBeside const&) = delete;
    ~FileBeside() {
        std::error_code ignored;
        std::filesystem::remove(PathOf(m_name), ignored);
        std::filesystem::remove(PathOf(m_name + "-journal"), ignored);
    }

    std::string const& name() const { return m_name; }
    void TakeName() const {
        std::error_code fault;
        std::filesystem::rename(PathOf(m_name), m_target, fault);
        if (fault)
            throw DatabaseFault(FaultKind::Other, fault.message());
    }

private:
    std::filesystem::path m_target;
    std::string m_name;
};

} // namespace

void WriteLocalCopy(std::string const& file, ConnectionText const& original,
                    ParamDb::Revision const& revision, ParamDb::CDbTableSet const& set,
                    std::chrono::seconds timeout) {
    if (IsCopyOf(file, original, revision, timeout))
        return;
    Report report(L"ParamDb::ImportTables()", "The local copy");
    SetContent const content(set, report);
    FileBeside const beside(file);
    {
        auto const session = OpenSession(ConnectionTo(beside.name()), Access::Write, timeout);
        Transaction transaction(*session, Access::Write);
        MakeSchema(*session, false);
        session->Execute("CREATE TABLE paramdb_copy (place TEXT NOT NULL, copied TEXT NOT NULL)");
        session->Execute("INSERT INTO paramdb_copy (place, copied) VALUES (:p1, :p2)",
                         {original.Place(), Now(*session)});
        WriteRevision(*session, content.content(),
                      {.set = ToUtf8(revision.set),
                       .who = ToUtf8(revision.who),
                       .remark = ToUtf8(revision.remark),
                       .number = revision.number,
                       .when = ToUtf8(revision.when)});
        transaction.Commit();
    }
    beside.TakeName();
}

LocalCopy ReadLocalCopy(std::string const& file, ConnectionText const& original, std::chrono::seconds timeout,
                        Report& report) {
    auto const open = [&] { return OpenSession(ConnectionTo(file), Access::Read, timeout); };
    auto const session = open();
    Transaction transaction(*session, Access::Read);
    Origin const origin = FindOrigin(*session);
    if (origin.place != original.Place())
        throw DatabaseFault(FaultKind::Other, "it is a copy of '" + origin.place + "'");
    auto const found = FindRevision(*session, ConnectionTo(file));
    ParamDb::Revision const& revision = found.revision;
    std::string const set = ToUtf8(revision.set);
    if ((!original.set.empty() && original.set != set) ||
        (original.revision && *original.revision != revision.number))
        throw DatabaseFault(FaultKind::Other, "it is a copy of revision " + std::to_string(revision.number) +
                                                  " of set '" + set + "'");
    LocalCopy copy{revision, origin.copied, {}};
    copy.set = ReadRevision(*session, found.id, open, report);
    transaction.Commit();
    return copy;
}

} // namespace paramdb::database
