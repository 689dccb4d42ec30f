#include <paramdb/database/schema.h>

namespace paramdb::database {
namespace {

// For pg_advisory_xact_lock: any number that nobody else is likely to take.
constexpr char LockNumber[] = "7305041";

struct Types {
    char const* text;      // of any length
    char const* key_text;  // up to 198 characters, in the order of their codes
    char const* table_end; // behind the closing bracket
};

Types const& TypesOf(Dialect dialect) {
    // 792 bytes are 198 characters of four bytes.
    static constexpr Types types[] = {{"TEXT", "TEXT", " WITHOUT ROWID"},
                                      {"TEXT", "TEXT COLLATE \"C\"", ""},
                                      {"VARCHAR(4000)", "VARCHAR(792)", ""}};
    return types[static_cast<std::size_t>(dialect)];
}

char const* TypeName(FieldType type, Types const& types) {
    switch (type) {
    case FieldType::Int:
        return "INTEGER";
    case FieldType::Unsigned:
    case FieldType::Int64:
        return "BIGINT";
    case FieldType::Float:
        return "REAL";
    case FieldType::Double:
        return "DOUBLE PRECISION";
    case FieldType::Text:
        break;
    }
    return types.key_text;
}

bool IsFloating(FieldType type) {
    return type == FieldType::Float || type == FieldType::Double;
}

// A column that is an id where the other is one, and NULL where that is -1, since -1 is an id of no row.
std::string ReferringColumn(SqlColumn const& column) {
    return "ref_" + column.name;
}

struct ForeignKeys {
    std::string columns;
    std::string constraints;
};

ForeignKeys ForeignKeysOf(SqlTable const& table) {
    ForeignKeys keys;
    for (SqlColumn const& column : table.columns) {
        SqlTable const* const referred = FindSqlTable(column.referred_table);
        if (referred == nullptr)
            continue;
        std::string const name = Quoted(ReferringColumn(column));
        keys.columns +=
            ", " + name + " INTEGER GENERATED ALWAYS AS (NULLIF(" + Quoted(column.name) + ", -1)) STORED";
        keys.constraints += ", FOREIGN KEY (" + Quoted(RevisionColumn) + ", " + name + ") REFERENCES " +
                            Quoted(referred->name) + " (" + referred->PrimaryKey() +
                            ") DEFERRABLE INITIALLY DEFERRED";
    }
    return keys;
}

std::string CreateTable(SqlTable const& table, Dialect dialect, bool with_foreign_keys) {
    Types const& types = TypesOf(dialect);
    ForeignKeys const foreign_keys = with_foreign_keys ? ForeignKeysOf(table) : ForeignKeys();
    std::string text =
        "CREATE TABLE " + Quoted(table.name) + " (" + Quoted(RevisionColumn) + " BIGINT NOT NULL";
    for (std::size_t index = 0; index < table.columns.size(); ++index) {
        SqlColumn const& column = table.columns[index];
        bool const may_be_null = index >= table.key_size && IsFloating(column.type);
        text += ", " + Quoted(column.name) + " " + TypeName(column.type, types) +
                (may_be_null ? "" : " NOT NULL");
    }
    if (table.HasRowNumber())
        text += ", " + Quoted(RowNumberColumn) + " BIGINT NOT NULL";
    return text + foreign_keys.columns + ", PRIMARY KEY (" + table.PrimaryKey() + ")" +
           foreign_keys.constraints + ")" + types.table_end;
}

std::vector<std::string> CreateOwnTables(Dialect dialect) {
    Types const& types = TypesOf(dialect);
    std::string const text = types.text;
    std::string const name = types.key_text;
    std::string const end = std::string(")") + types.table_end;
    return {
        // Written with numbers alone, so that a foreign reader finds out whether it knows the rest.
        "CREATE TABLE paramdb_schema (version BIGINT NOT NULL, foreign_keys BIGINT NOT NULL, PRIMARY KEY "
        "(version)" +
            end,
        "CREATE TABLE paramdb_revision (id BIGINT NOT NULL, set_name " + name +
            " NOT NULL, revision INTEGER NOT NULL, who " + text + " NOT NULL, made " + text +
            " NOT NULL, remark " + text + " NOT NULL, PRIMARY KEY (id), UNIQUE (set_name, revision)" + end,
        "CREATE TABLE paramdb_content (revision_id BIGINT NOT NULL, table_name " + name +
            " NOT NULL, row_count BIGINT NOT NULL, table_type INTEGER NOT NULL, PRIMARY KEY (revision_id, "
            "table_name)" +
            end,
        "CREATE TABLE paramdb_version (revision_id BIGINT NOT NULL, major INTEGER, minor INTEGER, "
        "PRIMARY KEY (revision_id)" +
            end,
        "CREATE TABLE paramdb_text (revision_id BIGINT NOT NULL, name " + name + " NOT NULL, value " + text +
            " NOT NULL, PRIMARY KEY (revision_id, name)" + end,
        "CREATE TABLE paramdb_number (revision_id BIGINT NOT NULL, table_name " + name +
            " NOT NULL, column_name " + name + " NOT NULL, row_key " + name +
            " NOT NULL, bits BIGINT NOT NULL, PRIMARY KEY (revision_id, table_name, column_name, row_key)" +
            end};
}

// The beginning of a trigger that comes before an event.
std::string TriggerBefore(std::string const& event, std::string const& table) {
    return "CREATE TRIGGER " + Quoted(table + "_" + event) + " BEFORE " + event + " ON " + Quoted(table);
}

// Refuse every change of a revision that is there. The own tables have the same column for it.
void MakeSqliteGuards(Session& session, std::string const& table, std::string const& column) {
    std::string const refuse = " BEGIN SELECT RAISE(ABORT, 'a revision never changes'); END";
    for (char const* const event : {"UPDATE", "DELETE"})
        session.Execute(TriggerBefore(event, table) + refuse);
    if (table != "paramdb_revision")
        session.Execute(TriggerBefore("INSERT", table) +
                        " WHEN EXISTS (SELECT 1 FROM paramdb_revision WHERE id = NEW." + column + ")" +
                        refuse);
}

void MakePostgresGuards(Session& session, std::string const& table) {
    session.Execute("CREATE TRIGGER paramdb_guard BEFORE UPDATE OR DELETE OR TRUNCATE ON " + Quoted(table) +
                    " FOR EACH STATEMENT EXECUTE FUNCTION paramdb_refuse()");
    if (table != "paramdb_revision")
        session.Execute("CREATE TRIGGER paramdb_insert_guard AFTER INSERT ON " + Quoted(table) +
                        " REFERENCING NEW TABLE AS added FOR EACH STATEMENT EXECUTE FUNCTION "
                        "paramdb_refuse_known()");
}

void MakePostgresFunctions(Session& session) {
    session.Execute("CREATE FUNCTION paramdb_refuse() RETURNS trigger LANGUAGE plpgsql AS "
                    "'BEGIN RAISE EXCEPTION ''a revision never changes''; END'");
    session.Execute("CREATE FUNCTION paramdb_refuse_known() RETURNS trigger LANGUAGE plpgsql AS "
                    "'BEGIN IF EXISTS (SELECT 1 FROM added JOIN paramdb_revision ON id = revision_id) THEN "
                    "RAISE EXCEPTION ''a revision never changes''; END IF; RETURN NULL; END'");
}

void MakeGuards(Session& session, std::string const& table) {
    if (session.dialect() == Dialect::Sqlite)
        MakeSqliteGuards(session, table, RevisionColumn);
    else if (session.dialect() == Dialect::Postgres)
        MakePostgresGuards(session, table);
}

} // namespace

TableColumns FindColumns(Session& session) {
    char const* const queries[] = {
        "SELECT m.name, c.name FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type IN ('table', "
        "'view')",
        "SELECT table_name, column_name FROM information_schema.columns WHERE table_schema = ANY "
        "(current_schemas(false))",
        "SELECT table_name, column_name FROM information_schema.columns"};
    TableColumns tables;
    for (auto& row : session.Query(queries[static_cast<std::size_t>(session.dialect())], 2))
        tables[row[0].value_or("")].insert(row[1].value_or(""));
    return tables;
}

SchemaState FindSchema(Session& session) {
    char const* const queries[] = {
        "SELECT count(*) FROM sqlite_master WHERE name = 'paramdb_schema'",
        "SELECT count(*) FROM information_schema.tables WHERE table_name = 'paramdb_schema' AND table_schema "
        "= ANY "
        "(current_schemas(false))",
        "SELECT count(*) FROM information_schema.tables WHERE table_name = 'paramdb_schema'"};
    if (session.QueryNumber(queries[static_cast<std::size_t>(session.dialect())]) == 0)
        return SchemaState::Missing;
    auto const rows = session.Query("SELECT version, foreign_keys FROM paramdb_schema", 2);
    std::string const version = rows.empty() ? "none" : rows.front()[0].value_or("NULL");
    if (rows.size() != 1 || version != std::to_string(SchemaVersion))
        throw DatabaseFault(FaultKind::Other, "table 'paramdb_schema', column 'version': " + version +
                                                  " where " + std::to_string(SchemaVersion) + " is known");
    return rows.front()[1] == "0" ? SchemaState::WithoutForeignKeys : SchemaState::WithForeignKeys;
}

void LockSchema(Session& session) {
    // A transaction of SQLite that writes is alone anyway.
    if (session.dialect() == Dialect::Postgres)
        session.Query(std::string("SELECT 1 FROM pg_advisory_xact_lock(") + LockNumber + ")", 1);
}

void MakeSchema(Session& session, bool with_foreign_keys) {
    Dialect const dialect = session.dialect();
    for (std::string const& statement : CreateOwnTables(dialect))
        session.Execute(statement);
    if (dialect == Dialect::Postgres) {
        session.Execute("CREATE SEQUENCE paramdb_revision_id");
        MakePostgresFunctions(session);
    }
    for (char const* const table :
         {"paramdb_revision", "paramdb_content", "paramdb_version", "paramdb_text", "paramdb_number"})
        MakeGuards(session, table);
    // What is referred to comes first: the name tables refer to nothing, the others to these and to a few
    // more.
    std::set<std::string> made;
    while (made.size() < SqlTables().size())
        for (SqlTable const& table : SqlTables()) {
            bool is_ready = !made.contains(table.name);
            for (SqlColumn const& column : table.columns)
                is_ready =
                    is_ready && (column.referred_table.empty() || made.contains(column.referred_table));
            if (!is_ready)
                continue;
            session.Execute(CreateTable(table, dialect, with_foreign_keys));
            MakeGuards(session, table.name);
            made.insert(table.name);
        }
    session.Execute("INSERT INTO paramdb_schema (version, foreign_keys) VALUES (:p1, :p2)",
                    {SchemaVersion, std::int64_t{with_foreign_keys}});
}

} // namespace paramdb::database
