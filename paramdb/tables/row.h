// What row classes are made of: fields, each told once, by its type and its column name.
//
//     class QVIpSvCurve : public QVRow<QInt<"calculation">, QInt<"source_parameter">> {};
//
// The fields of a new row are 0 or empty. get<"calculation">() gives one, tuple() all of them in line order.
#pragma once

#include <paramdb/keys/fixed_text.h>
#include <paramdb/keys/value_base.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <tuple>

namespace paramdb {

// A column name as a template argument.
template <std::size_t Size>
struct ColumnName {
    char text[Size] = {};
    constexpr ColumnName(char const (&name)[Size]) { std::copy_n(name, Size, text); }
    constexpr std::string_view view() const { return {text, Size - 1}; }
};

template <ColumnName Name, class T>
struct Column {
    using type = T;
    static constexpr std::string_view name = Name.view();
};

} // namespace paramdb

// The column types.
template <paramdb::ColumnName Name>
using QInt = paramdb::Column<Name, std::int32_t>;
template <paramdb::ColumnName Name>
using QUnsigned = paramdb::Column<Name, std::uint32_t>;
template <paramdb::ColumnName Name>
using QInt64 = paramdb::Column<Name, std::int64_t>;
template <paramdb::ColumnName Name>
using QFloat = paramdb::Column<Name, float>;
template <paramdb::ColumnName Name>
using QDouble = paramdb::Column<Name, double>;
template <paramdb::ColumnName Name>
using QText = paramdb::Column<Name, CFixedText>;

template <class... Columns>
class QVRow : public QValueBase {
public:
    static constexpr std::array<std::string_view, sizeof...(Columns)> ColumnNames{Columns::name...};

    QVRow() = default;
    explicit QVRow(typename Columns::type... fields) : m_fields(std::move(fields)...) {}

    // The field of that column.
    template <paramdb::ColumnName Name>
    auto& get() {
        return std::get<Index(Name.view())>(m_fields);
    }
    template <paramdb::ColumnName Name>
    auto const& get() const {
        return std::get<Index(Name.view())>(m_fields);
    }

    // References to the fields in line order.
    auto tuple() {
        return std::apply([](auto&... fields) { return std::tie(fields...); }, m_fields);
    }
    auto tuple() const {
        return std::apply([](auto&... fields) { return std::tie(fields...); }, m_fields);
    }

private:
    static constexpr std::size_t Index(std::string_view name) {
        return static_cast<std::size_t>(std::find(ColumnNames.begin(), ColumnNames.end(), name) -
                                        ColumnNames.begin());
    }

    std::tuple<typename Columns::type...> m_fields{};
};
