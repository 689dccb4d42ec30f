#include "generate.h"

#include "generate_values.h"

#include <algorithm>
#include <span>
#include <utility>

namespace benchmarks {
namespace {

// How many of a million rows these tables get. The first gets what is left, all others get 1,000 each.
struct Share {
    std::wstring_view tag;
    std::size_t per_million;
};
constexpr std::wstring_view LargestTable = L"<TIpParamAndStore>";
constexpr std::size_t ShareOfOthers = 1000;
constexpr Share Shares[] = {
    {L"<TLimSValue>", 150'000},      {L"<TLimCValue>", 120'000},        {L"<TIpLearnParams>", 110'000},
    {L"<TLimArea>", 80'000},         {L"<TIpPolygonValue>", 80'000},    {L"<TInstrumentParam>", 40'000},
    {L"<TIpTrackPolygon>", 30'000},  {L"<TIpSpectralValue>", 30'000},   {L"<TTriggerParam>", 30'000},
    {L"<TRelativeLimit>", 20'000},   {L"<TIpSpectralTrack>", 20'000},   {L"<TIpTrackInterval>", 10'000},
    {L"<TClavisUserNames>", 10'000}, {L"<TChannelInheritance>", 5'000}, {L"<TRotorSpeed>", 5'000},
};
// These differ where the rows are to fit together.
constexpr Share ReadyShares[] = {
    {L"<TLimSValue>", 80'000},
    {L"<TLimCValue>", 60'000},
    {L"<TIpLearnParams>", 55'000},
    {L"<TIpTrackPolygon>", 3'086},
};
constexpr std::size_t ReadyGrid = 2; // rows of the tables of virtual modes, whatever the size

Share const* Find(std::span<Share const> shares, std::wstring_view tag) {
    auto const share = std::ranges::find(shares, tag, &Share::tag);
    return share == shares.end() ? nullptr : &*share;
}

std::size_t RowsOfTable(std::wstring_view tag, GenerateOptions const& options) {
    Share const* share = Find(Shares, tag);
    if (options.has_ready_shares) {
        if (tag == L"<TAutoModeParam>" || tag == L"<TAutoModeParamOrder>")
            return ReadyGrid;
        if (Share const* const ready = Find(ReadyShares, tag))
            share = ready;
    }
    return options.rows * (share == nullptr ? ShareOfOthers : share->per_million) / 1'000'000;
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
            left -= RowsOfTable(table.tag, options);

    Random random(options.seed);
    std::vector<TableRows> tables;
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        std::size_t const rows = table.tag == LargestTable ? left : RowsOfTable(table.tag, options);
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
