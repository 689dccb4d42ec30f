#include "tools/row_buffer.h"

#include <paramdb/storage/lake.h>
#include <paramdb/tables/line_reader.h>

#include "tools/report.h"
#include "tools/short_number.h"

#include <algorithm>
#include <map>
#include <type_traits>
#include <utility>

namespace paramdb::tools {

namespace {

using Values = std::vector<RowBuffer::Value>;

// The fields of a new row, by the tags of tables: what a table makes of a line without any field.
std::map<std::wstring, Values> NewRows() {
    std::map<std::wstring, Values> rows;
    CParamTables tables;
    CLake lake;
    for (CatalogueEntry const& entry : CatalogueEntries(tables)) {
        auto section = lake[entry.description->tag];
        section = std::wstring();
        section.position->push_back(std::wstring());
        entry.table->ReadTable(lake);
        entry.rows->VisitRows([&](auto key, auto row) {
            Values& values = rows[entry.description->tag];
            for (auto const fields : {key, row})
                for (ConstField const field : fields)
                    field.Visit([&](auto const& value) { values.emplace_back(value); });
            return true;
        });
    }
    return rows;
}

Values NewRow(TableDescription const& table) {
    static std::map<std::wstring, Values> const rows = NewRows();
    if (auto const found = rows.find(table.tag); found != rows.end())
        return found->second;
    static RowBuffer::Value const zeros[] = {std::int32_t{}, std::uint32_t{}, std::int64_t{},
                                             float{},        double{},        CFixedText()};
    Values values;
    for (auto const* const columns : {&table.key_columns, &table.row_columns})
        for (ColumnDescription const& column : *columns)
            values.push_back(zeros[static_cast<std::size_t>(column.type)]);
    return values;
}

} // namespace

RowBuffer::RowBuffer(TableDescription const& table)
    : m_values(NewRow(table)), m_key_size(table.key_columns.size()) {
    for (Value& value : m_values) {
        std::visit(
            [this](auto& field) {
                m_fields.emplace_back(field);
                m_const_fields.emplace_back(std::as_const(field));
            },
            value);
    }
    ReserveTexts(m_fields);
}

bool RowBuffer::Read(LakeText line) {
    return line.Visit([this](auto text) { return ReadLine(text, m_fields); });
}

bool SameFields(std::span<ConstField const> left, std::span<ConstField const> right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](ConstField one, ConstField other) {
                          return one.Visit([&]<class T>(T const& value) { return value == other.As<T>(); });
                      });
}

void PackFields(std::span<ConstField const> fields, std::string& bytes) {
    bytes.clear();
    for (ConstField const field : fields) {
        field.Visit([&]<class T>(T const& value) {
            if constexpr (std::is_same_v<T, CFixedText>) {
                for (wchar_t const unit : value.view()) {
                    bytes += static_cast<char>(static_cast<unsigned long>(unit) >> 8 & 0xFFU);
                    bytes += static_cast<char>(static_cast<unsigned long>(unit) & 0xFFU);
                }
                bytes.append(2, '\0');
            } else {
                T const number = value + T(0); // a negative zero becomes a positive one
                bytes.append(reinterpret_cast<char const*>(&number), sizeof number);
            }
        });
    }
}

std::string ShownKey(std::span<ConstField const> key) {
    std::string text;
    for (ConstField const field : key) {
        if (!text.empty())
            text += '/';
        field.Visit([&]<class T>(T const& value) {
            if constexpr (std::is_same_v<T, CFixedText>)
                text += value.view().empty() ? "\"\"" : Printable(value.view());
            else if constexpr (std::is_floating_point_v<T>)
                text += ShortNumber(value);
            else
                text += std::to_string(value);
        });
    }
    return text;
}

Silence::Silence() : m_previous(PrWin::SetSink([](int, int, std::wstring const&) {})) {}

Silence::~Silence() {
    PrWin::SetSink(std::move(m_previous));
}

} // namespace paramdb::tools
