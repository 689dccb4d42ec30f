#include <paramdb/distillery/grex_info.h>
#include <paramdb/distillery/wildcard_index.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

#include <cstdint>
#include <limits>
#include <string>

namespace {

constexpr int TwoPointDefinition = 1;

void ReportAmbiguity() {
    static std::wstring const message =
        L"CGrexInfo::Init(): ambiguous keys while trying to expand wildcards\n";
    PrWin::Output(8, 1, message);
}

int Next(int number) {
    return static_cast<int>(static_cast<unsigned int>(number) + 1);
}

} // namespace

// A row that matches a concrete key. Both are places in their tables.
struct CGrexInfo::Match {
    std::uint32_t key;
    std::uint32_t row;
};

void CGrexInfo::Init() {
    m_groups.clear();
    CollectPolygons();
    m_entries.clear();
    int next_group = m_groups.empty() ? 0 : Next(m_groups.rbegin()->first.first);

    auto const& keys = m_store->Tables().IpParamAndStore;
    auto const& rows = m_store->Tables().IpTrackPolygon;
    std::vector<QClavis> patterns;
    patterns.reserve(rows.size());
    for (auto const& [pattern, row] : rows)
        patterns.push_back(pattern);
    paramdb::WildcardIndex index(patterns);
    // Collected before they are expanded, so that the maps get their memory at once and no more than they
    // need.
    std::vector<Match> matches;
    matches.reserve(keys.size());
    for (std::size_t key = 0; key < keys.size(); ++key) {
        index.Find(keys[key].first, [&matches, key](std::size_t row) {
            matches.push_back({static_cast<std::uint32_t>(key), static_cast<std::uint32_t>(row)});
        });
        if (matches.size() >= keys.size()) { // keys match many rows
            Expand(matches, next_group);
            matches.clear();
        }
    }
    Expand(matches, next_group);
}

void CGrexInfo::CollectPolygons() {
    int previous = -1;
    int index = -1;
    for (auto const& [key, row] : m_store->Tables().IpPolygonValue) {
        index = key.number() == previous ? index + 1 : 0;
        previous = key.number();
        m_groups.insert({{key.number(), index}, {key.position(), row.get<"y">()}});
    }
}

void CGrexInfo::Expand(std::vector<Match> const& matches, int& next_group) {
    auto const& keys = m_store->Tables().IpParamAndStore;
    auto const& rows = m_store->Tables().IpTrackPolygon;
    std::size_t entries = m_entries.size();
    std::size_t points = m_groups.size();
    for (std::size_t match = 0; match < matches.size(); ++match) {
        entries += match == 0 || matches[match].key != matches[match - 1].key ? 1 : 0;
        points += rows[matches[match].row].second.get<"polygon_mode">() == TwoPointDefinition ? 2 : 0;
    }
    m_entries.reserve(entries);
    m_groups.reserve(points);

    for (Match const match : matches) {
        QVIpTrackPolygon const& row = rows[match.row].second;
        entry expanded{row.get<"area_interpretation">(), row.get<"source_parameter">(), row.get<"polygon">()};
        if (row.get<"polygon_mode">() == TwoPointDefinition) {
            float const offset = row.get<"offset">();
            m_groups.insert({{next_group, 0}, {row.get<"x_start">(), row.get<"y_start">() + offset}});
            m_groups.insert({{next_group, 1}, {row.get<"x_end">(), row.get<"y_end">() + offset}});
            expanded.group = next_group;
            next_group = Next(next_group);
        }
        if (!m_entries.insert({keys[match.key].first, expanded}).second)
            ReportAmbiguity();
    }
}

std::vector<CGrexInfo::group_element> CGrexInfo::Group(int number) const {
    std::vector<group_element> points;
    auto point = m_groups.lower_bound({number, std::numeric_limits<int>::min()});
    for (; point != m_groups.end() && point->first.first == number; ++point)
        points.push_back(point->second);
    return points;
}

CGrexInfo::entry const* CGrexInfo::Entry(QClavis const& key) const {
    auto const found = m_entries.find(key);
    return found != m_entries.end() ? &found->second : nullptr;
}
