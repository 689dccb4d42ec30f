// Measures imports and exports of databases, beside a plain loop in SQLite's own functions over the same
// rows.
//
//     database_benchmark [--server CONNECTION] [--rows N] [--repeats N] [--json FILE]
//
// The connection is one of a PostgreSQL server, such as "postgresql:host=127.0.0.1 dbname=bench"; a revision
// of each size is added there.
#include <paramdb/database.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/sea/pr_win.h>

#include "command_line.h"
#include "figures.h"
#include "generate.h"
#include "measure.h"
#include "soci_loop.h"
#include "sqlite.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace benchmarks;

constexpr double None = std::numeric_limits<double>::quiet_NaN();

// The generated rows as a table set.
ParamDb::CDbTableSet MakeSet(std::size_t rows) {
    CLake lake;
    WorkFolder const folder;
    auto const file = folder.Path("rows.lake");
    WriteFile(file, LakeText(GenerateRows({rows})));
    Check(lake.read(CString(file.wstring())), "the file was not read");
    auto const tables = std::make_unique<CParamTables>();
    ParamDb::CDbTableSet set;
    for (paramdb::CatalogueEntry const& entry : paramdb::CatalogueEntries(*tables)) {
        Check(entry.table->ReadTable(lake), "a table was not read");
        ParamDb::CDbTable& cells = set[entry.description->tag];
        entry.rows->VisitRows([&cells](auto key, auto row) {
            ParamDb::row_t& line = cells.emplace_back();
            for (auto const fields : {key, row})
                for (paramdb::ConstField const& field : fields)
                    field.Visit([&line]<class T>(T const& value) {
                        if constexpr (std::is_same_v<T, CFixedText>)
                            line.emplace_back(std::wstring(value.view()));
                        else
                            line.emplace_back(value);
                    });
            return true;
        });
    }
    return set;
}

// The loop that the import is held against: every value of every row, by the function of its type.
double PlainLoop(std::filesystem::path const& file) {
    Database const database = OpenDatabase(file.string(), SQLITE_OPEN_READONLY);
    double sum = 0;
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        std::string columns;
        std::string keys = "revision_id";
        std::vector<paramdb::FieldType> types;
        for (auto const* list : {&table.key_columns, &table.row_columns})
            for (paramdb::ColumnDescription const& column : *list) {
                std::string const name = '"' + std::string(column.name) + '"';
                columns += (columns.empty() ? "" : ", ") + name;
                if (list == &table.key_columns)
                    keys += ", " + name;
                types.push_back(column.type);
            }
        std::string const tag = NarrowTag(table.tag);
        Statement const select =
            PrepareSql(database, "SELECT " + columns + " FROM \"" + tag.substr(1, tag.size() - 2) +
                                     "\" WHERE revision_id = 1 ORDER BY " + keys);
        int result;
        while ((result = sqlite3_step(select.get())) == SQLITE_ROW)
            for (int column = 0; column < static_cast<int>(types.size()); ++column)
                switch (types[static_cast<std::size_t>(column)]) {
                case paramdb::FieldType::Int:
                    sum += sqlite3_column_int(select.get(), column);
                    break;
                case paramdb::FieldType::Unsigned:
                case paramdb::FieldType::Int64:
                    sum += static_cast<double>(sqlite3_column_int64(select.get(), column));
                    break;
                case paramdb::FieldType::Float:
                case paramdb::FieldType::Double:
                    sum += sqlite3_column_double(select.get(), column);
                    break;
                case paramdb::FieldType::Text: {
                    unsigned char const* const text = sqlite3_column_text(select.get(), column);
                    int const bytes = sqlite3_column_bytes(select.get(), column);
                    sum += bytes == 0 ? 0 : text[0] + text[bytes - 1];
                    break;
                }
                }
        Demand(result == SQLITE_DONE, database);
    }
    return sum;
}

// What was imported as it was exported?
void CheckSame(ParamDb::CDbTableSet const& set, ParamDb::CDbTableSet const& expected) {
    for (auto const& [tag, rows] : expected) {
        auto const found = set.find(tag);
        Check(found != set.end() && found->second == rows, "the import differs from the export");
    }
}

class Place {
public:
    Place(std::string name, std::wstring connection)
        : m_name(std::move(name)), m_connection(std::move(connection)) {}

    std::string const& name() const { return m_name; }
    void Export(ParamDb::CDbTableSet const& set) const {
        Check(ParamDb::ExportTables(set, m_connection, {.timeout = Patience}).has_value(),
              "the export failed");
    }
    void Import(ParamDb::CDbTableSet& set) const {
        Check(ParamDb::ImportTables(m_connection, set, {.timeout = Patience, .strict = true}).has_value(),
              "the import failed");
    }

private:
    static constexpr std::chrono::seconds Patience{600};

    std::string m_name;
    std::wstring m_connection;
};

void AddFigure(Figures& figures, std::string name, std::size_t rows, double seconds, double floor) {
    auto const count = static_cast<double>(rows);
    figures.figures.push_back(
        {std::move(name), rows, {seconds * 1e3, count / seconds / 1e6, seconds / floor}});
}

void Measure(std::size_t rows, std::size_t repeats, std::wstring const& server, Figures& figures) {
    WorkFolder const folder;
    auto const expected = MakeSet(rows);
    auto const file = folder.Path("rows.db");
    std::vector<Place> places{{"SQLite", L"sqlite3:" + file.wstring() + L"#rows"}};
    if (!server.empty())
        places.emplace_back("PostgreSQL", server + L"#rows" + std::to_wstring(rows));

    ParamDb::CDbTableSet set;
    double sum = 0;
    double soci_sum = 0;
    places.front().Export(expected);
    std::vector<Work> works{{"plain loop, SQLite", {}, [&] { sum = PlainLoop(file); }, {}},
                            {"SOCI's vectors, SQLite", {}, [&] { soci_sum = SociLoop(file); }, {}, 2}};
    for (Place const& place : places) {
        if (&place != &places.front())
            place.Export(expected);
        place.Import(set);
        CheckSame(set, expected);
        set.clear();
        works.push_back({"import, " + place.name(), {}, [&] { place.Import(set); }, [&] { set.clear(); }});
    }
    for (Place const& place : places)
        works.push_back({"export, " + place.name(), {}, [&] { place.Export(expected); }, {}, 1});
    auto const seconds = MedianSeconds(works, repeats);
    Check(sum == soci_sum, "the loops have read other values");
    for (std::size_t work = 0; work < works.size(); ++work)
        AddFigure(figures, works[work].name, rows, seconds[work], seconds.front());
}

void RefuseMessages() {
    PrWin::SetSink(
        [](int, int, std::wstring const& text) { throw std::runtime_error(paramdb::ToUtf8(text)); });
}

} // namespace

int main(int count, char** arguments) {
    try {
        std::vector<char const*> left(arguments, arguments + count);
        std::wstring server;
        if (auto const option = std::find(left.begin(), left.end(), std::string_view("--server"));
            option != left.end() && option + 1 != left.end()) {
            server = paramdb::FromUtf8(option[1]);
            left.erase(option, option + 2);
        }
        CommandLine const line = ParseCommandLine(static_cast<int>(left.size()), left.data());
        RefuseMessages();
        Figures figures{
            "Databases: medians of interleaved runs", "rows", {"ms", "M rows/s", "this / plain loop"}};
        for (std::size_t const rows : line.sizes)
            Measure(rows, line.Repeats(rows), server, figures);
        Print(figures);
        if (!line.json.empty())
            WriteJson(figures, line.json);
        return 0;
    } catch (std::exception const& error) {
        std::fprintf(stderr, "database_benchmark: %s\n", error.what());
        return 1;
    }
}
