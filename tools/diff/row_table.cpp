#include "tools/diff/row_table.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <type_traits>

namespace paramdb::tools {
namespace {

template <class T>
std::weak_ordering CompareNumbers(T left, T right) {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(left) || std::isnan(right))
            return std::isnan(left) <=> std::isnan(right);
    }
    return left < right   ? std::weak_ordering::less
           : left > right ? std::weak_ordering::greater
                          : std::weak_ordering::equivalent;
}

FieldValue ValueOf(ConstField field) {
    return field.Visit([]<class T>(T const& value) -> FieldValue {
        if constexpr (std::is_same_v<T, CFixedText>)
            return value.view();
        else
            return value;
    });
}

float FloatOf(std::uint64_t cell) {
    return std::bit_cast<float>(static_cast<std::uint32_t>(cell));
}

} // namespace

RowColumns RowColumnsOf(TableDescription const& table) {
    RowColumns result{table.key_columns, table.key_columns.size()};
    result.columns.insert(result.columns.end(), table.row_columns.begin(), table.row_columns.end());
    return result;
}

RowTable::RowTable(RowColumns columns) : m_columns(std::move(columns)) {}

void RowTable::Add(CQParamTableRows::ConstFields key, CQParamTableRows::ConstFields row) {
    std::size_t column = 0;
    for (ConstField const& field : key)
        m_cells.push_back(CellOf(ValueOf(field), column++));
    for (ConstField const& field : row)
        m_cells.push_back(CellOf(ValueOf(field), column++));
    EndRow();
}

void RowTable::Add(std::span<FieldValue const> fields) {
    std::size_t column = 0;
    for (FieldValue const& field : fields)
        m_cells.push_back(CellOf(field, column++));
    EndRow();
}

void RowTable::EndRow() {
    ++m_rows;
    if (m_rows > 1 && m_is_sorted)
        m_is_sorted = CompareKeys(*this, m_rows - 2, *this, m_rows - 1) <= 0;
}

void RowTable::Sort() {
    if (m_is_sorted)
        return;
    std::vector<std::size_t> order(m_rows);
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t left, std::size_t right) {
        return CompareKeys(*this, left, *this, right) < 0;
    });
    std::size_t const width = m_columns.columns.size();
    std::vector<Cell> cells;
    cells.reserve(m_cells.size());
    for (std::size_t const row : order) {
        Cell const* const first = m_cells.data() + row * width;
        cells.insert(cells.end(), first, first + width);
    }
    m_cells = std::move(cells);
    m_is_sorted = true;
}

RowTable::Cell RowTable::CellOf(FieldValue const& value, std::size_t column) {
    return std::visit(
        [&]<class T>(T const& field) -> Cell {
            if constexpr (std::is_same_v<T, std::wstring_view>)
                return TextCell(field, column);
            else if constexpr (std::is_same_v<T, float>)
                return std::bit_cast<std::uint32_t>(field);
            else if constexpr (std::is_same_v<T, double>)
                return std::bit_cast<Cell>(field);
            else
                return static_cast<Cell>(field);
        },
        value);
}

RowTable::Cell RowTable::TextCell(std::wstring_view text, std::size_t column) {
    if (text.empty())
        return 0;
    if (m_rows > 0) {
        Cell const above = m_cells[(m_rows - 1) * m_columns.columns.size() + column];
        if (Text(above) == text)
            return above;
    }
    m_characters += text;
    m_text_ends.push_back(m_characters.size());
    return m_text_ends.size() - 1;
}

std::wstring_view RowTable::Text(Cell cell) const {
    if (cell == 0)
        return {};
    std::size_t const begin = m_text_ends[cell - 1];
    return std::wstring_view(m_characters).substr(begin, m_text_ends[cell] - begin);
}

FieldValue RowTable::Value(std::size_t row, std::size_t column) const {
    Cell const cell = m_cells[row * m_columns.columns.size() + column];
    switch (TypeOf(column)) {
    case FieldType::Int:
        return static_cast<std::int32_t>(cell);
    case FieldType::Unsigned:
        return static_cast<std::uint32_t>(cell);
    case FieldType::Int64:
        return static_cast<std::int64_t>(cell);
    case FieldType::Float:
        return FloatOf(cell);
    case FieldType::Double:
        return std::bit_cast<double>(cell);
    case FieldType::Text:
        break;
    }
    return Text(cell);
}

std::size_t RowTable::Find(std::int32_t id) const {
    std::size_t const width = m_columns.columns.size();
    std::size_t first = 0;
    std::size_t count = m_rows;
    while (count > 0) {
        std::size_t const middle = first + count / 2;
        if (static_cast<std::int32_t>(m_cells[middle * width]) < id) {
            count -= middle + 1 - first;
            first = middle + 1;
        } else {
            count = middle - first;
        }
    }
    return first < m_rows && static_cast<std::int32_t>(m_cells[first * width]) == id ? first : m_rows;
}

std::weak_ordering RowTable::Compare(RowTable const& left, std::size_t left_row, RowTable const& right,
                                     std::size_t right_row, std::size_t column) {
    std::size_t const width = left.m_columns.columns.size();
    Cell const a = left.m_cells[left_row * width + column];
    Cell const b = right.m_cells[right_row * width + column];
    FieldType const type = left.TypeOf(column);
    if (type == FieldType::Text)
        return left.Text(a).compare(right.Text(b)) <=> 0;
    if (a == b)
        return std::weak_ordering::equivalent;
    if (type == FieldType::Float)
        return CompareNumbers(FloatOf(a), FloatOf(b));
    if (type == FieldType::Double)
        return CompareNumbers(std::bit_cast<double>(a), std::bit_cast<double>(b));
    return CompareNumbers(static_cast<std::int64_t>(a), static_cast<std::int64_t>(b));
}

std::weak_ordering RowTable::CompareFirst(std::size_t columns, RowTable const& left, std::size_t left_row,
                                          RowTable const& right, std::size_t right_row) {
    for (std::size_t column = 0; column < columns; ++column)
        if (auto const order = Compare(left, left_row, right, right_row, column); order != 0)
            return order;
    return std::weak_ordering::equivalent;
}

std::weak_ordering RowTable::CompareKeys(RowTable const& left, std::size_t left_row, RowTable const& right,
                                         std::size_t right_row) {
    return CompareFirst(left.m_columns.key_columns, left, left_row, right, right_row);
}

std::weak_ordering RowTable::CompareRows(RowTable const& left, std::size_t left_row, RowTable const& right,
                                         std::size_t right_row) {
    return CompareFirst(left.m_columns.columns.size(), left, left_row, right, right_row);
}

} // namespace paramdb::tools
