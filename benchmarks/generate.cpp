#include "generate.h"

#include "generate_values.h"

#include <algorithm>
#include <utility>

namespace benchmarks {
namespace {

// How many of a thousand rows these tables get. The first gets what is left, all others get one each.
struct Share {
    std::wstring_view tag;
    std::size_t per_mille;
};
constexpr std::wstring_view LargestTable = L"<TIpParamAndStore>";
constexpr Share Shares[] = {
    {L"<TLimSValue>", 150},      {L"<TLimCValue>", 120},        {L"<TIpLearnParams>", 110},
    {L"<TLimArea>", 80},         {L"<TIpPolygonValue>", 80},    {L"<TInstrumentParam>", 40},
    {L"<TIpTrackPolygon>", 30},  {L"<TIpSpectralValue>", 30},   {L"<TTriggerParam>", 30},
    {L"<TRelativeLimit>", 20},   {L"<TIpSpectralTrack>", 20},   {L"<TIpTrackInterval>", 10},
    {L"<TClavisUserNames>", 10}, {L"<TChannelInheritance>", 5}, {L"<TRotorSpeed>", 5},
};

std::size_t RowsOfTable(std::wstring_view tag, std::size_t all_rows) {
    auto const share = std::ranges::find(Shares, tag, &Share::tag);
    std::size_t const per_mille = share == std::end(Shares) ? 1 : share->per_mille;
    return all_rows * per_mille / 1000;
}

TableRows GenerateTable(paramdb::TableDescription const& table, std::size_t rows, Random& random) {
    TableRows result{&table, {}};
    result.rows.reserve(rows);
    KeySequence keys(table);
    for (std::size_t row = 0; row < rows; ++row) {
        std::string text = keys.Next();
        for (paramdb::ColumnDescription const& column : table.row_columns) {
            text += '\t';
            text += RandomValue(column, random);
        }
        result.rows.push_back(std::move(text));
    }
    return result;
}

void Shuffle(std::vector<std::string>& rows, Random& random) {
    for (std::size_t left = rows.size(); left > 1; --left)
        std::swap(rows[left - 1], rows[static_cast<std::size_t>(random.Below(left))]);
}

void AppendRow(std::string& text, std::string_view row, char separator) {
    std::size_t const begin = text.size();
    text += row;
    std::replace(text.begin() + static_cast<std::ptrdiff_t>(begin), text.end(), '\t', separator);
}

// An array of arrays, which is the same in JSON and TOML.
void AppendArray(std::string& text, TableRows const& table) {
    text += '[';
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        text += row == 0 ? "\n[" : ",\n[";
        AppendRow(text, table.rows[row], ',');
        text += ']';
    }
    text += "\n]";
}

} // namespace

std::string NarrowTag(wchar_t const* tag) {
    std::string narrow;
    for (; *tag != 0; ++tag)
        narrow += static_cast<char>(*tag);
    return narrow;
}

std::vector<paramdb::FieldType> TableRows::FieldTypes() const {
    std::vector<paramdb::FieldType> types;
    for (auto const* columns : {&description->key_columns, &description->row_columns})
        for (paramdb::ColumnDescription const& column : *columns)
            types.push_back(column.type);
    return types;
}

std::vector<TableRows> GenerateRows(GenerateOptions const& options) {
    std::size_t left = options.rows;
    for (paramdb::TableDescription const& table : paramdb::Catalogue())
        if (table.tag != LargestTable)
            left -= RowsOfTable(table.tag, options.rows);

    Random random(options.seed);
    std::vector<TableRows> tables;
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        std::size_t const rows = table.tag == LargestTable ? left : RowsOfTable(table.tag, options.rows);
        tables.push_back(GenerateTable(table, rows, random));
    }
    if (options.in_random_order)
        for (TableRows& table : tables)
            if (table.description->has_unique_keys)
                Shuffle(table.rows, random);
    return tables;
}

std::size_t RowCount(std::vector<TableRows> const& tables) {
    std::size_t count = 0;
    for (TableRows const& table : tables)
        count += table.rows.size();
    return count;
}

std::string LakeText(std::vector<TableRows> const& tables) {
    std::string text = "<DbDesign.CacheVersion>: 216\n<DbDesign.CacheMinorVersion>: 1\n";
    for (TableRows const& table : tables) {
        text += table.Tag() + ": {\n";
        for (std::string const& row : table.rows) {
            text += '\t';
            AppendRow(text, row, ' ');
            text += '\n';
        }
        text += "} ; " + table.Tag() + '\n';
    }
    return text;
}

std::string JsonText(std::vector<TableRows> const& tables) {
    std::string text = "{";
    for (TableRows const& table : tables) {
        text += text.size() == 1 ? "\n\"" : ",\n\"";
        text += table.Tag() + "\": ";
        AppendArray(text, table);
    }
    text += "\n}\n";
    return text;
}

std::string TomlText(std::vector<TableRows> const& tables) {
    std::string text;
    for (TableRows const& table : tables) {
        text += '"' + table.Tag() + "\" = ";
        AppendArray(text, table);
        text += '\n';
    }
    return text;
}

std::string_view RowFields::Next() {
    std::string_view field = m_rest.substr(0, m_rest.find('\t'));
    m_rest.remove_prefix(std::min(field.size() + 1, m_rest.size()));
    if (field.size() >= 2 && field.front() == '"')
        field = field.substr(1, field.size() - 2);
    return field;
}

} // namespace benchmarks
