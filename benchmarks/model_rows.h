// Keys and rows of the plain model, made of the standard library alone: integer keys are arrays, all others
// tuples, and a text is an array of 200 characters.
#pragma once

#include <paramdb/tables/row.h>

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cwchar>
#include <string_view>
#include <tuple>
#include <utility>

namespace benchmarks {

struct ModelText {
    wchar_t characters[CFixedText::Capacity] = {};

    ModelText() = default;
    // Cuts what is longer than 199 characters.
    explicit ModelText(std::wstring_view text) { Assign(text); }
    void Assign(std::wstring_view text) {
        std::size_t const length = std::min(text.size(), CFixedText::Capacity - 1);
        *std::copy_n(text.data(), length, characters) = L'\0';
    }

    wchar_t const* c_str() const { return characters; }
    std::wstring_view view() const { return characters; }

    friend std::strong_ordering operator<=>(ModelText const& left, ModelText const& right) {
        return std::wcscmp(left.characters, right.characters) <=> 0;
    }
    friend bool operator==(ModelText const& left, ModelText const& right) {
        return std::wcscmp(left.characters, right.characters) == 0;
    }
};

template <class T>
struct ModelField {
    using type = T;
};
template <>
struct ModelField<CFixedText> {
    using type = ModelText;
};

template <class Tuple>
struct ModelFields;
template <class... T>
struct ModelFields<std::tuple<T const&...>> {
    using type = std::tuple<typename ModelField<T>::type...>;
};
template <class Class>
using ModelFieldsOf = typename ModelFields<decltype(std::declval<Class const&>().tuple())>::type;

// The key that stands for a key class of the library.
template <class Key>
struct ModelKeyOf {
    using type = ModelFieldsOf<Key>;
};
template <class Key>
requires(Key::size() > 0) struct ModelKeyOf<Key> {
    using type = std::array<int, Key::size()>;
};
template <class Key>
using ModelKey = typename ModelKeyOf<Key>::type;

// The row that stands for a row class of the library, with the same names of columns.
template <class Row>
class ModelRow {
public:
    template <paramdb::ColumnName Name>
    auto& get() {
        return std::get<Index(Name.view())>(m_fields);
    }
    template <paramdb::ColumnName Name>
    auto const& get() const {
        return std::get<Index(Name.view())>(m_fields);
    }

    ModelFieldsOf<Row>& tuple() { return m_fields; }
    ModelFieldsOf<Row> const& tuple() const { return m_fields; }

private:
    static constexpr std::size_t Index(std::string_view name) {
        return static_cast<std::size_t>(std::find(Row::ColumnNames.begin(), Row::ColumnNames.end(), name) -
                                        Row::ColumnNames.begin());
    }

    ModelFieldsOf<Row> m_fields{};
};

} // namespace benchmarks
