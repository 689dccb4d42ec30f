#include "tools/name_fields.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/short_number.h"

#include <span>
#include <type_traits>
#include <vector>

namespace paramdb::tools {
namespace {

using ConstFields = CQParamTableRows::ConstFields;

bool IsName(ColumnDescription const& column) {
    return column.type == FieldType::Text && column.name != "unit" && column.name != "definition";
}

std::vector<std::size_t> NamesAmong(std::span<ColumnDescription const> columns) {
    std::vector<std::size_t> places;
    for (std::size_t place = 0; place < columns.size(); ++place) {
        if (IsName(columns[place]))
            places.push_back(place);
    }
    return places;
}

std::wstring TextOf(ConstField field) {
    return field.Visit([]<class T>(T const& value) -> std::wstring {
        if constexpr (std::is_same_v<T, CFixedText>)
            return std::wstring(value.view());
        else if constexpr (std::is_floating_point_v<T>)
            return FromUtf8(ShortNumber(value));
        else
            return std::to_wstring(value);
    });
}

} // namespace

std::optional<int> NameField::Id() const {
    if (key.size() != 1)
        return std::nullopt;
    ConstField const field = key[0].type() == FieldType::Text && !row.empty() ? row[0] : key[0];
    return field.type() == FieldType::Int ? std::optional(field.As<std::int32_t>()) : std::nullopt;
}

std::wstring NameField::KeyText() const {
    std::wstring text;
    for (ConstField const& field : key) {
        if (&field != key.data())
            text += L'/';
        text += TextOf(field);
    }
    return text;
}

void VisitNames(CQtParamInstance const& parameters, std::function<void(NameField const&)> const& visitor) {
    for (CatalogueEntry const& entry : parameters.Entries()) {
        TableDescription const& table = *entry.description;
        auto const in_key = NamesAmong(table.key_columns);
        auto const in_row = NamesAmong(table.row_columns);
        if (in_key.empty() && in_row.empty())
            continue;
        entry.rows->VisitRows([&](ConstFields key, ConstFields row) {
            for (std::size_t const place : in_key)
                visitor(
                    {&table, table.key_columns[place].name, key, row, key[place].As<CFixedText>().view()});
            for (std::size_t const place : in_row)
                visitor(
                    {&table, table.row_columns[place].name, key, row, row[place].As<CFixedText>().view()});
            return true;
        });
    }
}

} // namespace paramdb::tools
