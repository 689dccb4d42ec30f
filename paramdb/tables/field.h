// A field of a key or row, whatever its type: what readers, writers and dumpers work on.
//
// The fields of a row are what its tuple() refers to. Fields() and ConstFields() turn that tuple into an
// array of references, so that each of reading, writing, dumping and converting is one plain loop, told once.
#pragma once

#include <paramdb/keys/fixed_text.h>
#include <paramdb/platform/core/export.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

namespace paramdb {

enum class FieldType : std::uint8_t { Int, Unsigned, Int64, Float, Double, Text };

// The name of the type in listings, such as "int" or "text".
PARAMDB_API wchar_t const* FieldTypeName(FieldType type);

template <class T>
constexpr FieldType FieldTypeOf() {
    if constexpr (std::is_same_v<T, std::int32_t>)
        return FieldType::Int;
    else if constexpr (std::is_same_v<T, std::uint32_t>)
        return FieldType::Unsigned;
    else if constexpr (std::is_same_v<T, std::int64_t>)
        return FieldType::Int64;
    else if constexpr (std::is_same_v<T, float>)
        return FieldType::Float;
    else if constexpr (std::is_same_v<T, double>)
        return FieldType::Double;
    else {
        static_assert(std::is_same_v<T, CFixedText>, "no such field type");
        return FieldType::Text;
    }
}

// A reference to a field. It is valid as long as the row stays where it is.
template <bool IsConst>
class BasicField {
    template <class T>
    using Target = std::conditional_t<IsConst, T const, T>;

public:
    BasicField() = default;
    template <class T>
    explicit BasicField(T& field) : m_field(&field), m_type(FieldTypeOf<std::remove_const_t<T>>()) {}

    FieldType type() const { return m_type; }

    // The field as its type, which must be T.
    template <class T>
    Target<T>& As() const {
        return *static_cast<Target<T>*>(m_field);
    }

    // Calls the function with a reference to the field as its type.
    template <class Function>
    decltype(auto) Visit(Function&& function) const {
        switch (m_type) {
        case FieldType::Int:
            return function(As<std::int32_t>());
        case FieldType::Unsigned:
            return function(As<std::uint32_t>());
        case FieldType::Int64:
            return function(As<std::int64_t>());
        case FieldType::Float:
            return function(As<float>());
        case FieldType::Double:
            return function(As<double>());
        case FieldType::Text:
            break;
        }
        return function(As<CFixedText>());
    }

private:
    std::conditional_t<IsConst, void const*, void*> m_field = nullptr;
    FieldType m_type = FieldType::Int;
};

using Field = BasicField<false>;
using ConstField = BasicField<true>;

// The fields of a key or row in line order.
template <class Row>
auto Fields(Row& row) {
    return std::apply([](auto&... fields) { return std::array{Field(fields)...}; }, row.tuple());
}
template <class Row>
auto ConstFields(Row const& row) {
    return std::apply([](auto&... fields) { return std::array{ConstField(fields)...}; }, row.tuple());
}

// Empties the texts among the fields and gives each room for any text.
PARAMDB_API void ReserveTexts(std::span<Field const> fields);

// The bytes that the texts among the fields hold outside of their row.
PARAMDB_API std::size_t TextBytes(std::span<ConstField const> fields);

// The number of fields of a key or row class, and their types in line order.
template <class Row>
inline constexpr std::size_t FieldCount = std::tuple_size_v<decltype(std::declval<Row&>().tuple())>;

template <class Row>
auto FieldTypes() {
    std::array<FieldType, FieldCount<Row>> types;
    auto const row = Row();
    auto const fields = ConstFields(row);
    for (std::size_t field = 0; field < types.size(); ++field)
        types[field] = fields[field].type();
    return types;
}

} // namespace paramdb
