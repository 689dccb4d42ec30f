// The tables of the plain model: sorted vectors, into which rows are inserted one by one, and the standard
// trees where the library has trees. All have the names of the library's tables.
#pragma once

#include <paramdb/tables/catalogue.h>

#include "model_rows.h"
#include "plain_tables.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace benchmarks {

// Sorted by key, with no key twice.
template <class K, class V>
class ModelTable {
public:
    using key_type = K;
    using value_type = std::pair<K, V>;

    void insert(value_type const& row) {
        if (m_rows.empty() || m_rows.back().first < row.first) {
            m_rows.push_back(row);
            return;
        }
        auto const place = m_rows.begin() + (lower_bound(row.first) - m_rows.cbegin());
        if (row.first < place->first)
            m_rows.insert(place, row);
    }
    auto lower_bound(K const& key) const {
        return std::lower_bound(m_rows.begin(), m_rows.end(), key,
                                [](value_type const& row, K const& sought) { return row.first < sought; });
    }
    auto find(K const& key) const {
        auto const place = lower_bound(key);
        return place != m_rows.end() && place->first == key ? place : m_rows.end();
    }

    auto begin() { return m_rows.begin(); }
    auto end() { return m_rows.end(); }
    auto begin() const { return m_rows.begin(); }
    auto end() const { return m_rows.end(); }
    bool empty() const { return m_rows.empty(); }
    std::size_t size() const { return m_rows.size(); }
    void reserve(std::size_t count) { m_rows.reserve(count); }

private:
    std::vector<value_type> m_rows;
};

// Names, searched in both directions. Of several rows with one name the first counts.
class ModelNames : public std::map<std::array<int, 1>, ModelRow<QIdxName>> {
public:
    void insert(value_type const& row) {
        if (map::insert(row).second)
            m_ids.emplace(NameOf(row.second).view(), row.first[0]);
    }
    // -1 and the empty text on a miss.
    int Id(std::wstring const& name) const {
        auto const found = m_ids.find(name);
        return found != m_ids.end() ? found->second : -1;
    }
    wchar_t const* Name(int id) const {
        auto const found = find({id});
        return found != end() ? NameOf(found->second).c_str() : L"";
    }

private:
    static ModelText const& NameOf(ModelRow<QIdxName> const& row) { return std::get<0>(row.tuple()); }

    std::map<std::wstring, int> m_ids;
};

// The table that stands for one of the library.
template <class Container>
struct ModelTableOf;
template <class K, class V>
struct ModelTableOf<CDbUniqueMap<K, V>> {
    using type = ModelTable<ModelKey<K>, ModelRow<V>>;
};
template <class K, class V>
struct ModelTableOf<CUniqueTreeMap<K, V>> {
    using type = std::map<ModelKey<K>, ModelRow<V>>;
};
template <class K, class V>
struct ModelTableOf<CDbMultiMap<K, V>> {
    using type = std::multimap<ModelKey<K>, ModelRow<V>>;
};

struct ModelTables {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) ModelNames accessor;
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    ModelTableOf<container<key, row>>::type accessor;
#define PARAMDB_CLASS_MAP(accessor, row) std::map<int, ModelTableOf<CDbUniqueMap<QIdx1, row>>::type> accessor;
#include <paramdb/tables/catalogue.def>
};

// Calls the function with the tag of each table, and that table in both forms of tables.
template <class Tables, class OtherTables, class Function>
void ForEachModelTable(Tables& tables, OtherTables& others, Function&& function) {
#define PARAMDB_NAME_TABLE(place, accessor, tag, key_column) function(tag, tables.accessor, others.accessor);
#define PARAMDB_TABLE(place, accessor, tag, container, key, row, key_columns, row_columns)                   \
    function(tag, tables.accessor, others.accessor);
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row)                                          \
    function(tag, tables.map.at(instrument_class), others.map.at(instrument_class));
#include <paramdb/tables/catalogue.def>
}

// All tables, those of the families among them, without rows.
ModelTables MakeModelTables();

// Copies the rows of a store.
ModelTables CopyToModel(CParamTables const& tables);

Digest DigestOf(ModelTables const& tables);

} // namespace benchmarks
