#include "plain_tables.h"

#include <tuple>

namespace benchmarks {

Digest DigestOf(PlainTables const& tables) {
    Digest digest;
    ForEachTable(tables, [&digest](wchar_t const* tag, auto const& rows) {
        for (auto const& [key, row] : rows) {
            Digest::Row sum(tag);
            auto const add = [&sum](auto const&... fields) { (sum.Add(fields), ...); };
            std::apply(add, key.tuple());
            std::apply(add, row.tuple());
            digest.Add(sum);
        }
    });
    return digest;
}

Digest DigestOf(CParamTables& tables) {
    Digest digest;
    for (paramdb::CatalogueEntry const& entry : paramdb::CatalogueEntries(tables))
        entry.rows->VisitRows([&](auto key, auto row) {
            Digest::Row sum(entry.description->tag);
            for (auto const fields : {key, row})
                for (paramdb::ConstField const& field : fields)
                    field.Visit([&sum](auto const& value) { sum.Add(value); });
            digest.Add(sum);
            return true;
        });
    return digest;
}

} // namespace benchmarks
