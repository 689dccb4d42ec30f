#include <paramdb/platform/core/utf8.h>

#include "tools/diff/diff_words.h"
#include "tools/diff/diff_writers.h"
#include "tools/short_number.h"
#include "tools/table_names.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <type_traits>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

std::string Line(Json const& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json TextOrNull(std::string const& text) {
    return text.empty() ? Json(nullptr) : Json(text);
}

Json JsonOf(FieldValue const& value) {
    return std::visit(
        []<class T>(T const& field) -> Json {
            if constexpr (std::is_same_v<T, std::wstring_view>)
                return ToUtf8(field);
            else if constexpr (std::is_floating_point_v<T>)
                return JsonNumber(field);
            else
                return field;
        },
        value);
}

Json JsonOf(DifferenceCounts const& counts) {
    return {{"added", counts.added}, {"removed", counts.removed}, {"changed", counts.changed}};
}

Json JsonSide(Snapshot const& snapshot) {
    return {{"files", snapshot.files},
            {"version", {{"major", snapshot.major}, {"minor", snapshot.minor}}},
            {"rows", snapshot.RowCount()}};
}

// Writes the tables row by row, since a document of all rows would take much memory.
class TableWriter {
public:
    TableWriter(std::ostream& out, Comparison const& comparison, TableDifference const& table,
                DifferencePart part)
        : m_out(out), m_comparison(comparison), m_table(table), m_columns(table.a->columns()), m_part(part) {
        m_meanings =
            MeaningsOf(part == DifferencePart::Tables ? Catalogue()[table.place].tag : L"", m_columns);
    }

    void Write(std::string_view indent) {
        bool const is_table = m_part == DifferencePart::Tables;
        m_indent = std::string(indent) + "  ";
        m_out << indent << "{\n"
              << m_indent << (is_table ? "\"tag\": " : "\"name\": ")
              << Line(is_table ? Json(TagOf(Catalogue()[m_table.place]))
                               : Json(AnswerTopics()[m_table.place].name))
              << ",\n"
              << m_indent << "\"rows_a\": " << m_table.a->size() << ",\n"
              << m_indent << "\"rows_b\": " << m_table.b->size() << ",\n"
              << m_indent << "\"counts\": " << Line(JsonOf(m_table.counts)) << ",\n";
        WriteRows("added", RowChange::Added, ",\n");
        WriteRows("removed", RowChange::Removed, ",\n");
        WriteRows("changed", RowChange::Changed, "\n");
        m_out << indent << '}';
    }

private:
    void WriteRows(char const* name, RowChange change, char const* end) {
        m_out << m_indent << '"' << name << "\": [";
        bool is_first = true;
        for (RowDifference const& row : m_table.rows) {
            if (row.change != change)
                continue;
            m_out << (is_first ? "\n" : ",\n") << m_indent << "  "
                  << Line(change == RowChange::Changed ? ChangedRow(row) : WholeRow(row));
            is_first = false;
        }
        m_out << (is_first ? "" : "\n" + m_indent) << ']' << end;
    }

    // The columns from one to before another, and the names that belong to them.
    void AddColumns(Json& fields, Json& names, Snapshot const& snapshot, RowTable const& table,
                    std::size_t row, std::size_t first, std::size_t last) const {
        for (std::size_t column = first; column < last; ++column) {
            FieldValue const value = table.Value(row, column);
            fields[Name(column)] = Value(value, column);
            std::string const name = NameBeside(snapshot, m_meanings[column], value);
            if (!name.empty())
                names[Name(column)] = name;
        }
    }

    Json WholeRow(RowDifference const& row) const {
        bool const is_removed = row.change == RowChange::Removed;
        Snapshot const& snapshot = is_removed ? *m_comparison.a : *m_comparison.b;
        RowTable const& table = is_removed ? *m_table.a : *m_table.b;
        std::size_t const number = is_removed ? row.row_a : row.row_b;
        Json key = Json::object();
        Json fields = Json::object();
        Json names = Json::object();
        std::size_t const key_columns = m_columns.key_columns;
        AddColumns(key, names, snapshot, table, number, 0, key_columns);
        AddColumns(fields, names, snapshot, table, number, key_columns, m_columns.columns.size());
        return {{"key", std::move(key)}, {"row", std::move(fields)}, {"names", std::move(names)}};
    }

    Json ChangedRow(RowDifference const& row) const {
        Json key = Json::object();
        Json names = Json::object();
        AddColumns(key, names, *m_comparison.b, *m_table.b, row.row_b, 0, m_columns.key_columns);
        Json changes = Json::array();
        for (std::size_t column = m_columns.key_columns; column < m_columns.columns.size(); ++column) {
            if ((row.columns >> column & 1U) == 0)
                continue;
            FieldValue const a = m_table.a->Value(row.row_a, column);
            FieldValue const b = m_table.b->Value(row.row_b, column);
            changes.push_back({{"column", Name(column)},
                               {"a", Value(a, column)},
                               {"b", Value(b, column)},
                               {"name_a", TextOrNull(NameBeside(*m_comparison.a, m_meanings[column], a))},
                               {"name_b", TextOrNull(NameBeside(*m_comparison.b, m_meanings[column], b))}});
        }
        return {{"key", std::move(key)}, {"names", std::move(names)}, {"changes", std::move(changes)}};
    }

    Json Value(FieldValue const& value, std::size_t column) const {
        bool const is_null = m_part == DifferencePart::Answers && IsNothing(value, m_meanings[column]);
        return is_null ? Json(nullptr) : JsonOf(value);
    }
    std::string Name(std::size_t column) const { return std::string(m_columns.columns[column].name); }

    std::ostream& m_out;
    Comparison const& m_comparison;
    TableDifference const& m_table;
    RowColumns const& m_columns;
    DifferencePart m_part;
    std::vector<ColumnMeaning> m_meanings;
    std::string m_indent;
};

void WriteTables(std::ostream& out, Comparison const& comparison, std::vector<TableDifference> const& tables,
                 DifferencePart part, std::string const& indent) {
    out << '[';
    for (TableDifference const& table : tables) {
        out << (&table == tables.data() ? "\n" : ",\n");
        TableWriter(out, comparison, table, part).Write(indent + "  ");
    }
    out << (tables.empty() ? "" : "\n" + indent) << ']';
}

} // namespace

void PrintDiffJson(std::ostream& out, Comparison const& comparison, AnswerOptions const& options) {
    Json summary{{"tables", comparison.tables.size()}};
    summary.update(JsonOf(comparison.Rows()));
    Json header = Json::array();
    for (HeaderDifference const& difference : comparison.header)
        header.push_back(
            {{"name", difference.name}, {"a", JsonOf(difference.a)}, {"b", JsonOf(difference.b)}});
    out << "{\n  \"a\": " << Line(JsonSide(*comparison.a)) << ",\n  \"b\": " << Line(JsonSide(*comparison.b))
        << ",\n  \"equal\": " << Line(comparison.IsEqual()) << ",\n  \"summary\": " << Line(summary)
        << ",\n  \"header\": " << Line(header) << ",\n  \"tables\": ";
    WriteTables(out, comparison, comparison.tables, DifferencePart::Tables, "  ");
    out << ",\n  \"consequences\": ";
    if (!comparison.has_answers) {
        out << "null\n}\n";
        return;
    }
    out << "{\n    \"speed\": " << Line(JsonNumber(options.speed)) << ",\n    \"line_distance\": "
        << Line(options.line_distance ? JsonNumber(*options.line_distance) : Json(nullptr))
        << ",\n    \"limits\": " << Line(JsonOf(comparison.Limits())) << ",\n    \"topics\": ";
    WriteTables(out, comparison, comparison.answers, DifferencePart::Answers, "    ");
    out << "\n  }\n}\n";
}

} // namespace paramdb::tools
