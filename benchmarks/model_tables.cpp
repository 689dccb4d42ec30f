#include "model_tables.h"

#include <type_traits>

namespace benchmarks {
namespace {

template <class T>
void CopyField(T const& source, T& target) {
    target = source;
}
void CopyField(CFixedText const& source, ModelText& target) {
    target.Assign(source.view());
}

template <class Source, class Target>
void CopyFields(Source const& source, Target& target) {
    auto const copy = [&]<std::size_t... Index>(std::index_sequence<Index...>) {
        (CopyField(std::get<Index>(source), std::get<Index>(target)), ...);
    };
    copy(std::make_index_sequence<std::tuple_size_v<Target>>());
}

} // namespace

ModelTables MakeModelTables() {
    ModelTables tables;
#define PARAMDB_CLASS_TABLE(place, map, instrument_class, tag, row) tables.map[instrument_class];
#include <paramdb/tables/catalogue.def>
    return tables;
}

ModelTables CopyToModel(CParamTables const& tables) {
    ModelTables copies = MakeModelTables();
    ForEachModelTable(copies, tables, [](wchar_t const*, auto& copy, auto const& table) {
        std::remove_cvref_t<decltype(copy.begin()->first)> key;
        std::remove_cvref_t<decltype(copy.begin()->second)> row;
        for (auto const& [table_key, table_row] : table) {
            CopyFields(table_key.tuple(), key);
            CopyFields(table_row.tuple(), row.tuple());
            copy.insert({key, row});
        }
    });
    return copies;
}

Digest DigestOf(ModelTables const& tables) {
    Digest digest;
    ForEachModelTable(tables, tables, [&digest](wchar_t const* tag, auto const& rows, auto const&) {
        for (auto const& [key, row] : rows) {
            Digest::Row sum(tag);
            auto const add = [&sum](auto const&... fields) { (sum.Add(fields), ...); };
            std::apply(add, key);
            std::apply(add, row.tuple());
            digest.Add(sum);
        }
    });
    return digest;
}

} // namespace benchmarks
