#include "tools/check/checked_table.h"

#include "tools/check/context.h"
#include "tools/check/row_scan.h"
#include "tools/table_names.h"

#include <stdexcept>
#include <type_traits>

namespace paramdb::tools::check {

std::int64_t CheckedRow::Integer(std::size_t column) const {
    return Field(column).Visit([]<class T>(T const& value) {
        if constexpr (std::is_integral_v<T>)
            return std::int64_t{value};
        else
            return throw std::logic_error("the column holds no integers"), std::int64_t{};
    });
}

double CheckedRow::Number(std::size_t column) const {
    return Field(column).Visit([]<class T>(T const& value) {
        if constexpr (std::is_arithmetic_v<T>)
            return static_cast<double>(value);
        else
            return throw std::logic_error("the column holds no numbers"), 0.0;
    });
}

std::wstring_view CheckedRow::Text(std::size_t column) const {
    if (Field(column).type() != FieldType::Text)
        throw std::logic_error("the column holds no texts");
    return Field(column).As<CFixedText>().view();
}

Place CheckedRow::At(std::size_t column) const {
    return m_table.PlaceOf(m_index, column);
}

Place CheckedRow::Whole() const {
    return m_table.PlaceOf(m_index);
}

CheckedTable::CheckedTable(CheckContext const& context, CatalogueEntry const& entry, CLake const& lake)
    : m_context(&context), m_entry(&entry) {
    auto const section = lake[entry.description->tag];
    if (section.found() && section.position->is_section())
        m_section = &*section.position;
}

std::string CheckedTable::Tag() const {
    return TagOf(Description());
}

std::size_t CheckedTable::Column(std::string_view name) const {
    std::size_t index = 0;
    for (auto const* columns : {&Description().key_columns, &Description().row_columns}) {
        for (ColumnDescription const& column : *columns) {
            if (column.name == name)
                return index;
            ++index;
        }
    }
    throw std::logic_error(Tag() + " has no column " + std::string(name));
}

void CheckedTable::VisitRows(std::function<void(CheckedRow const&)> const& visitor) const {
    std::size_t index = 0;
    m_entry->rows->VisitRows([&](auto key, auto row) {
        visitor(CheckedRow(*this, index++, key, row));
        return true;
    });
}

CLakeNode const* CheckedTable::Line(std::size_t row) const {
    if (!m_origins)
        m_origins = std::make_unique<RowOrigins>(*m_entry, m_context->Lake());
    return m_origins->Line(row);
}

Place CheckedTable::PlaceOf(std::size_t row) const {
    if (CLakeNode const* const line = Line(row))
        return m_context->PlaceOf(*line);
    return m_section != nullptr ? m_context->PlaceOf(*m_section) : Place();
}

Place CheckedTable::PlaceOf(std::size_t row, std::size_t column) const {
    CLakeNode const* const line = Line(row);
    return line != nullptr ? FieldPlace(*line, column) : PlaceOf(row);
}

Place CheckedTable::FieldPlace(CLakeNode const& line, std::size_t column) const {
    return line.value_text().Visit([&]<class View>(View text) {
        if constexpr (std::is_same_v<View, std::string_view>) {
            RowScan const scan = ScanRow(text, FieldTypesOf(Description()));
            if (column < scan.fields.size())
                return m_context->PlaceOf(scan.fields[column]);
            return m_context->PlaceOf(text.substr(text.size()));
        } else {
            return m_context->PlaceOf(line);
        }
    });
}

} // namespace paramdb::tools::check
