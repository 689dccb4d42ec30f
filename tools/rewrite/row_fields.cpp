#include "tools/rewrite/row_fields.h"

#include "tools/rewrite/lake_proof.h"
#include "tools/rewrite/message_list.h"

#include <algorithm>
#include <bit>
#include <map>
#include <string>
#include <type_traits>

namespace paramdb::tools {
namespace {

using Cells = ParamDb::row_t;

template <class T>
bool IsSameValue(T const& left, T const& right) {
    if constexpr (std::is_same_v<T, float>)
        return std::bit_cast<std::uint32_t>(left) == std::bit_cast<std::uint32_t>(right);
    else if constexpr (std::is_same_v<T, double>)
        return std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
    else
        return left == right;
}

Cells CellsOf(std::span<ConstField const> fields) {
    Cells cells;
    for (ConstField const& field : fields) {
        field.Visit([&cells]<class T>(T const& value) {
            if constexpr (std::is_same_v<T, CFixedText>)
                cells.emplace_back(std::wstring(value.view()));
            else
                cells.emplace_back(value);
        });
    }
    return cells;
}

// The fields of each table before its first line. Only the row classes know them, so each table is given a
// line that holds nothing.
std::vector<Cells> MakeFirstCells() {
    std::vector<Cells> all;
    CParamTables tables;
    MessageList const unseen;
    for (CatalogueEntry const& entry : CatalogueEntries(tables)) {
        CResourceSea sea;
        sea.MakeList(entry.description->tag).emplace_back();
        entry.table->ReadTable(&sea);
        entry.rows->VisitRows([&all](auto key, auto row) {
            Cells cells = CellsOf(key);
            Cells const rest = CellsOf(row);
            cells.insert(cells.end(), rest.begin(), rest.end());
            all.push_back(std::move(cells));
            return true;
        });
    }
    return all;
}

Cells const& FirstCells(TableDescription const& table) {
    static std::vector<Cells> const all = MakeFirstCells();
    return all.at(static_cast<std::size_t>(&table - Catalogue().data()));
}

} // namespace

RowFields::RowFields(TableDescription const& table) {
    for (ParamDb::cell_t const& cell : FirstCells(table)) {
        std::visit(
            [this]<class T>(T const& value) {
                if constexpr (std::is_same_v<T, std::wstring>)
                    m_values.emplace_back(CFixedText(std::wstring_view(value)));
                else if constexpr (!std::is_same_v<T, std::uint64_t>) // no column has that type
                    m_values.emplace_back(value);
            },
            cell);
    }
    for (Value& value : m_values)
        std::visit([this](auto& field) { m_fields.emplace_back(field); }, value);
}

ParamDb::row_t RowFields::Cells() const {
    std::vector<ConstField> fields;
    for (Value const& value : m_values)
        std::visit([&fields](auto const& field) { fields.emplace_back(field); }, value);
    return CellsOf(fields);
}

void RowFields::Assign(ParamDb::row_t const& cells) {
    for (std::size_t column = 0; column < m_values.size(); ++column) {
        std::visit(
            [&cell = cells.at(column)]<class T>(T& field) {
                if constexpr (std::is_same_v<T, CFixedText>)
                    field = CFixedText(std::wstring_view(std::get<std::wstring>(cell)));
                else
                    field = std::get<T>(cell);
            },
            m_values[column]);
    }
}

bool RowFields::operator==(RowFields const& other) const {
    return std::equal(m_values.begin(), m_values.end(), other.m_values.begin(), other.m_values.end(),
                      [](Value const& left, Value const& right) {
                          return std::visit(
                              [&right]<class T>(T const& value) {
                                  T const* const same = std::get_if<T>(&right);
                                  return same != nullptr && IsSameValue(value, *same);
                              },
                              left);
                      });
}

std::vector<ColumnDescription> ColumnsOf(TableDescription const& table) {
    std::vector<ColumnDescription> columns = table.key_columns;
    columns.insert(columns.end(), table.row_columns.begin(), table.row_columns.end());
    return columns;
}

TableDescription const* TableOfTag(std::wstring_view tag) {
    static auto const tables = [] {
        std::map<std::wstring_view, TableDescription const*> map;
        for (TableDescription const& table : Catalogue())
            map.emplace(table.tag, &table);
        return map;
    }();
    auto const found = tables.find(tag);
    return found == tables.end() ? nullptr : found->second;
}

bool IsSameCell(ParamDb::cell_t const& left, ParamDb::cell_t const& right) {
    return std::visit(
        [&right]<class T>(T const& value) {
            T const* const same = std::get_if<T>(&right);
            return same != nullptr && IsSameValue(value, *same);
        },
        left);
}

} // namespace paramdb::tools
