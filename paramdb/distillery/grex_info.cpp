#include <paramdb/distillery/grex_info.h>
#include <paramdb/distillery/wildcard_index.h>
#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/service/param_store.h>

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

void CGrexInfo::Init() {
    m_groups.clear();
    CollectPolygons();
    m_entries.clear();
    int next_group = m_groups.empty() ? 0 : Next(m_groups.rbegin()->first.first);

    std::vector<QClavis> patterns;
    for (auto const& [pattern, row] : m_store->Tables().IpTrackPolygon)
        patterns.push_back(pattern);
    paramdb::WildcardIndex index(patterns);
    for (auto const& [key, row] : m_store->Tables().IpParamAndStore)
        Expand(key, index.Find(key), next_group);
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

void CGrexInfo::Expand(QClavis const& key, std::vector<std::size_t> const& rows, int& next_group) {
    for (std::size_t const number : rows) {
        QVIpTrackPolygon const& row = m_store->Tables().IpTrackPolygon[number].second;
        entry expanded{row.get<"area_interpretation">(), row.get<"source_parameter">(), row.get<"polygon">()};
        if (row.get<"polygon_mode">() == TwoPointDefinition) {
            float const offset = row.get<"offset">();
            m_groups.insert({{next_group, 0}, {row.get<"x_start">(), row.get<"y_start">() + offset}});
            m_groups.insert({{next_group, 1}, {row.get<"x_end">(), row.get<"y_end">() + offset}});
            expanded.group = next_group;
            next_group = Next(next_group);
        }
        if (!m_entries.insert({key, expanded}).second)
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
