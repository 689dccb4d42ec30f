#include "table_set_rows.h"

#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>

namespace benchmarks {
namespace {

template <class T>
ParamDb::cell_t Number(std::string_view text) {
    T number{};
    auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        throw std::runtime_error("no number: " + std::string(text));
    return number;
}

ParamDb::cell_t Cell(paramdb::FieldType type, std::string_view text) {
    switch (type) {
    case paramdb::FieldType::Int:
        return Number<std::int32_t>(text);
    case paramdb::FieldType::Unsigned:
        return Number<std::uint32_t>(text);
    case paramdb::FieldType::Int64:
        return Number<std::int64_t>(text);
    case paramdb::FieldType::Float:
        return Number<float>(text);
    case paramdb::FieldType::Double:
        return Number<double>(text);
    case paramdb::FieldType::Text:
        break;
    }
    return std::wstring(text.begin(), text.end());
}

} // namespace

ParamDb::CDbTableSet MakeTableSet(std::vector<TableRows> const& tables) {
    ParamDb::CDbTableSet set;
    set[L"<DbDesign.CacheVersion>"] = {{216}};
    set[L"<DbDesign.CacheMinorVersion>"] = {{1}};
    for (TableRows const& table : tables) {
        ParamDb::CDbTable& cells = set[table.description->tag];
        auto const types = table.FieldTypes();
        cells.reserve(table.rows.size());
        for (std::string const& row : table.rows) {
            RowFields fields(row);
            ParamDb::row_t& target = cells.emplace_back();
            target.reserve(types.size());
            for (paramdb::FieldType const type : types)
                target.push_back(Cell(type, fields.Next()));
        }
    }
    return set;
}

} // namespace benchmarks
