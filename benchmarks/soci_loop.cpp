#include "soci_loop.h"

#include <paramdb/tables/catalogue.h>

#include "generate.h"

#include <deque>
#include <soci/soci.h>
#include <soci/sqlite3/soci-sqlite3.h>
#include <string>
#include <vector>

namespace benchmarks {
namespace {

constexpr std::size_t BlockSize = 1000;

// One column of a block; only the vector of its type is in use.
struct Column {
    std::vector<int> ints;
    std::vector<long long> longs;
    std::vector<double> reals;
    std::vector<std::string> texts;

    Column(soci::statement& statement, paramdb::FieldType type) {
        switch (type) {
        case paramdb::FieldType::Int:
            ints.resize(BlockSize);
            statement.exchange(soci::into(ints));
            break;
        case paramdb::FieldType::Unsigned:
        case paramdb::FieldType::Int64:
            longs.resize(BlockSize);
            statement.exchange(soci::into(longs));
            break;
        case paramdb::FieldType::Float:
        case paramdb::FieldType::Double:
            reals.resize(BlockSize);
            statement.exchange(soci::into(reals));
            break;
        case paramdb::FieldType::Text:
            texts.resize(BlockSize);
            statement.exchange(soci::into(texts));
            break;
        }
    }

    std::size_t Rows() const { return ints.size() + longs.size() + reals.size() + texts.size(); }
    double Sum(std::size_t row) const {
        if (!ints.empty())
            return ints[row];
        if (!longs.empty())
            return static_cast<double>(longs[row]);
        if (!reals.empty())
            return reals[row];
        std::string const& text = texts[row];
        return text.empty()
                   ? 0
                   : static_cast<unsigned char>(text.front()) + static_cast<unsigned char>(text.back());
    }
};

void AddTable(soci::session& session, paramdb::TableDescription const& table, double& sum) {
    std::string names;
    std::string keys = "revision_id";
    soci::statement statement(session);
    std::deque<Column> columns;
    for (auto const* list : {&table.key_columns, &table.row_columns})
        for (paramdb::ColumnDescription const& column : *list) {
            std::string const name = '"' + std::string(column.name) + '"';
            names += (names.empty() ? "" : ", ") + name;
            if (list == &table.key_columns)
                keys += ", " + name;
            columns.emplace_back(statement, column.type);
        }
    std::string const tag = NarrowTag(table.tag);
    statement.alloc();
    statement.prepare("SELECT " + names + " FROM \"" + tag.substr(1, tag.size() - 2) +
                      "\" WHERE revision_id = 1 ORDER BY " + keys);
    statement.define_and_bind();
    bool more = statement.execute(true);
    while (more) {
        std::size_t const rows = columns.front().Rows();
        for (std::size_t row = 0; row < rows; ++row)
            for (Column const& column : columns)
                sum += column.Sum(row);
        more = rows == BlockSize && statement.fetch();
    }
}

} // namespace

double SociLoop(std::filesystem::path const& file) {
    soci::session session(soci::sqlite3, "dbname=\"" + file.string() + "\"");
    double sum = 0;
    for (paramdb::TableDescription const& table : paramdb::Catalogue())
        AddTable(session, table, sum);
    return sum;
}

} // namespace benchmarks
