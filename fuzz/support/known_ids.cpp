#include "query_sweep.h"

#include <algorithm>
#include <limits>

namespace fuzz {
namespace {

constexpr std::size_t MostOfKind = 400;
constexpr std::size_t MostKeys = 24;

std::string_view LastWord(std::string_view column) {
    return column.substr(column.rfind('_') + 1);
}

} // namespace

KnownIds::KnownIds(CQtParamInstance const& instance) {
    for (paramdb::CatalogueEntry const& entry : instance.Entries()) {
        auto const& key_columns = entry.description->key_columns;
        auto const& row_columns = entry.description->row_columns;
        std::size_t rows = 0;
        entry.rows->VisitRows([&](auto key, auto row) {
            for (std::size_t column = 0; column < key.size(); ++column)
                if (key[column].type() == paramdb::FieldType::Int)
                    Add(key_columns[column].name, key[column].template As<std::int32_t>());
            for (std::size_t column = 0; column < row.size(); ++column)
                if (row[column].type() == paramdb::FieldType::Int)
                    Add(row_columns[column].name, row[column].template As<std::int32_t>());
            if (entry.description->key == "QClavis" && m_keys.size() < MostKeys)
                m_keys.emplace_back(key[0].template As<std::int32_t>(), key[1].template As<std::int32_t>(),
                                    key[2].template As<std::int32_t>(), key[3].template As<std::int32_t>(),
                                    key[4].template As<std::int32_t>(), key[5].template As<std::int32_t>());
            return ++rows < MostOfKind;
        });
    }
    for (auto& [kind, ids] : m_ids) {
        std::sort(ids.begin(), ids.end());
        ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    }
}

void KnownIds::Add(std::string_view column, int id) {
    m_ids[LastWord(column)].push_back(id);
}

std::vector<int> KnownIds::Of(std::string_view kind, std::size_t most) const {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    std::vector<int> chosen{lowest, -1, 0, highest};
    if (auto const found = m_ids.find(kind); found != m_ids.end()) {
        auto const& ids = found->second;
        std::size_t const step = ids.size() / most + 1;
        for (std::size_t place = 0; place < ids.size(); place += step) {
            chosen.push_back(ids[place]);
            if (place == 0 && ids[place] > lowest)
                chosen.push_back(ids[place] - 1);
            if (place + step >= ids.size() && ids[place] < highest)
                chosen.push_back(ids[place] + 1);
        }
    }
    std::sort(chosen.begin(), chosen.end());
    chosen.erase(std::unique(chosen.begin(), chosen.end()), chosen.end());
    return chosen;
}

} // namespace fuzz
