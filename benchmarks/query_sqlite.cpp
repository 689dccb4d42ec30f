// SQLite: a database in memory with a table for each of the library's, keys as primary keys, an index of the
// names, and one prepared statement for each kind of question. Texts are UTF-8, the form it works in, both
// bound and answered: nothing is converted.
#include <paramdb/distillery/param_distillery.h>

#include "query_subject.h"
#include "sqlite.h"

#include <bit>
#include <initializer_list>
#include <string>

namespace benchmarks {
namespace {

constexpr char const* Tables = R"(
CREATE TABLE names (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE triggers (parameter INTEGER PRIMARY KEY, id INTEGER NOT NULL);
CREATE TABLE modes (mode INTEGER PRIMARY KEY, physical_mode INTEGER NOT NULL);
CREATE TABLE base_orders (gear INTEGER PRIMARY KEY, base_order REAL NOT NULL);
CREATE TABLE gears (physical_mode INTEGER, gear INTEGER, physical_gear INTEGER NOT NULL,
    PRIMARY KEY (physical_mode, gear)) WITHOUT ROWID;
CREATE TABLE speed_sources (physical_mode INTEGER, rotor INTEGER, source INTEGER NOT NULL,
    PRIMARY KEY (physical_mode, rotor)) WITHOUT ROWID;
CREATE TABLE channels (mode INTEGER, channel INTEGER, flags INTEGER NOT NULL,
    PRIMARY KEY (mode, channel)) WITHOUT ROWID;
CREATE TABLE order_sources (physical_mode INTEGER, source INTEGER, rotor INTEGER, serial INTEGER,
    order_source INTEGER NOT NULL, PRIMARY KEY (physical_mode, source, rotor, serial)) WITHOUT ROWID;
BEGIN;
)";

constexpr char const* BaseOrderQuery = R"(
SELECT base_orders.base_order FROM modes
LEFT JOIN gears ON gears.physical_mode = modes.physical_mode AND gears.gear = ?2
JOIN base_orders ON base_orders.gear = coalesce(gears.physical_gear, ?2)
WHERE modes.mode = ?1
)";

// The flags are those of channels: 1 synchronous, 2 mix, which takes all rotors of the speed source.
constexpr char const* OrderSourceQuery = R"(
SELECT order_sources.order_source FROM modes
JOIN channels ON channels.mode = modes.mode AND channels.channel = ?2
JOIN speed_sources ON speed_sources.physical_mode = modes.physical_mode AND speed_sources.rotor = ?3
JOIN order_sources ON order_sources.physical_mode = modes.physical_mode
    AND order_sources.source = speed_sources.source
    AND order_sources.rotor BETWEEN CASE WHEN channels.flags & 2 THEN 0 ELSE ?3 END
        AND CASE WHEN channels.flags & 2 THEN 2147483647 ELSE ?3 END
WHERE modes.mode = ?1 AND channels.flags & 3
)";

class Sqlite : public Subject {
public:
    explicit Sqlite(CQtParamDistillery const& distillery)
        : Subject("SQLite"),
          m_database(OpenDatabase(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE |
                                                  SQLITE_OPEN_MEMORY | SQLITE_OPEN_NOMUTEX)) {
        RunSql(m_database, Tables);
        Fill(distillery.Tables(), distillery.DerivedInfo());
        RunSql(m_database, "COMMIT; CREATE INDEX ids ON names (name); ANALYZE");
        m_id = PrepareSql(m_database, "SELECT id FROM names WHERE name = ?1");
        m_name = PrepareSql(m_database, "SELECT name FROM names WHERE id = ?1");
        m_trigger = PrepareSql(m_database, "SELECT id FROM triggers WHERE parameter = ?1");
        m_base_order = PrepareSql(m_database, BaseOrderQuery);
        m_order_sources = PrepareSql(m_database, OrderSourceQuery);
    }

    void Ids(std::span<NameQuestion const> names, Answers answers) override {
        AnswerAll(names, answers, [this](NameQuestion const& question) {
            sqlite3_bind_text(m_id.get(), 1, question.utf8.data(), static_cast<int>(question.utf8.size()),
                              SQLITE_STATIC);
            return FirstOf(m_id, -1);
        });
    }
    void Names(std::span<int const> ids, Answers answers) override {
        AnswerAll(ids, answers, [this](int id) {
            Bind(m_name, {id});
            std::uint32_t const first = Step(m_name) ? *sqlite3_column_text(m_name.get(), 0) : 0u;
            sqlite3_reset(m_name.get());
            return first;
        });
    }
    std::wstring Name(int id) override {
        Bind(m_name, {id});
        std::wstring name;
        if (Step(m_name))
            for (unsigned char const* byte = sqlite3_column_text(m_name.get(), 0); *byte != 0; ++byte)
                name += static_cast<wchar_t>(*byte);
        sqlite3_reset(m_name.get());
        return name;
    }
    void Triggers(std::span<int const> parameters, Answers answers) override {
        AnswerAll(parameters, answers, [this](int parameter) {
            Bind(m_trigger, {parameter});
            return FirstOf(m_trigger, -1);
        });
    }
    void BaseOrders(std::span<BaseOrderQuestion const> gears, Answers answers) override {
        AnswerAll(gears, answers, [this](BaseOrderQuestion const& question) {
            Bind(m_base_order, {question.mode, question.gear});
            double const base_order = Step(m_base_order) ? sqlite3_column_double(m_base_order.get(), 0) : 0.0;
            sqlite3_reset(m_base_order.get());
            return std::bit_cast<std::uint32_t>(static_cast<float>(base_order));
        });
    }
    void OrderSources(std::span<OrderSourceQuestion const> rotors, Answers answers) override {
        AnswerAll(rotors, answers, [this](OrderSourceQuestion const& question) {
            Bind(m_order_sources, {question.mode, question.channel, question.rotor});
            std::uint32_t sum = 0;
            while (Step(m_order_sources))
                sum += static_cast<std::uint32_t>(sqlite3_column_int(m_order_sources.get(), 0));
            sqlite3_reset(m_order_sources.get());
            return sum;
        });
    }

private:
    static void Bind(Statement const& statement, std::initializer_list<int> values) {
        int place = 0;
        for (int const value : values)
            sqlite3_bind_int(statement.get(), ++place, value);
    }

    bool Step(Statement const& statement) const {
        int const result = sqlite3_step(statement.get());
        Demand(result == SQLITE_ROW || result == SQLITE_DONE, m_database);
        return result == SQLITE_ROW;
    }

    int FirstOf(Statement const& statement, int fallback) const {
        int const value = Step(statement) ? sqlite3_column_int(statement.get(), 0) : fallback;
        sqlite3_reset(statement.get());
        return value;
    }

    void Fill(CParamTables const& tables, CQtDerivedInfo const& derived) {
        Statement const name = PrepareSql(m_database, "INSERT INTO names VALUES (?, ?)");
        for (auto const& [id, row] : tables.Location) {
            std::string utf8; // the names are ASCII
            for (wchar_t const unit : row.name().view())
                utf8 += static_cast<char>(unit);
            Bind(name, {id[0]});
            sqlite3_bind_text(name.get(), 2, utf8.data(), static_cast<int>(utf8.size()), SQLITE_TRANSIENT);
            Insert(name);
        }
        Statement const trigger = PrepareSql(m_database, "INSERT INTO triggers VALUES (?, ?)");
        for (auto const& [parameter, id] : derived.TriggerIdMap())
            Insert(trigger, {parameter, id});
        Statement const mode = PrepareSql(m_database, "INSERT INTO modes VALUES (?, ?)");
        for (auto const& [key, row] : tables.ModeProperty)
            Insert(mode, {key[0], row.get<"physical_mode">()});
        Statement const base_order = PrepareSql(m_database, "INSERT INTO base_orders VALUES (?, ?)");
        for (auto const& [gear, row] : tables.BaseOrder) {
            sqlite3_bind_double(base_order.get(), 2, static_cast<double>(row.get<"base_order">()));
            Insert(base_order, {gear[0]});
        }
        FillPairs("gears", tables.Virtual2PhysGear);
        FillPairs("speed_sources", tables.RotorSpeedSource);
        Statement const channel = PrepareSql(m_database, "INSERT INTO channels VALUES (?, ?, ?)");
        for (auto const& [key, row] : derived.ChannelInfo().BaseChannels())
            Insert(channel, {key[0], key[1], row.get<"flags">()});
        Statement const source = PrepareSql(m_database, "INSERT INTO order_sources VALUES (?, ?, ?, ?, ?)");
        for (auto const& [key, row] : derived.RotorInfo().Rotor2OrderSources())
            Insert(source, {key[0], key[1], key[2], key[3], row.get<"referred_id">()});
    }

    template <class Table>
    void FillPairs(std::string const& name, Table const& table) {
        Statement const insert = PrepareSql(m_database, "INSERT INTO " + name + " VALUES (?, ?, ?)");
        for (auto const& [key, row] : table)
            Insert(insert, {key[0], key[1], row.template get<"referred_id">()});
    }

    // Binds the values from the first place on, beside those that are bound already.
    void Insert(Statement const& statement, std::initializer_list<int> values = {}) {
        Bind(statement, values);
        Demand(sqlite3_step(statement.get()) == SQLITE_DONE, m_database);
        sqlite3_reset(statement.get());
    }

    Database m_database;
    Statement m_id;
    Statement m_name;
    Statement m_trigger;
    Statement m_base_order;
    Statement m_order_sources;
};

} // namespace

std::unique_ptr<Subject> SqliteSubject(CQtParamDistillery const& distillery) {
    return std::make_unique<Sqlite>(distillery);
}

} // namespace benchmarks
