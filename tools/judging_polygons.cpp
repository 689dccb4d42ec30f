#include "tools/judging_polygons.h"

#include <paramdb/query/param_instance.h>

#include <map>
#include <nlohmann/json.hpp>
#include <tuple>

namespace paramdb::tools {
namespace {

// Judge, source and polygon, with the number of keys.
using Found = std::map<std::tuple<int, int, int>, std::size_t>;

class Search {
public:
    explicit Search(int parameter) : m_parameter(parameter) {}

    void Add(int judge, int source, int polygon, std::size_t keys) {
        if (judge == m_parameter || source == m_parameter)
            m_found[{judge, source, polygon}] += keys;
    }
    Found const& Result() const { return m_found; }

private:
    int m_parameter;
    Found m_found;
};

} // namespace

std::vector<JudgingPolygon> JudgingPolygons(CQtParamInstance const& parameters, int parameter) {
    Search search(parameter);
    for (auto const& [key, entry] : parameters.GroupInfo().Entries())
        search.Add(key[Clavis::qInstrParam], entry.source_parameter, entry.group, 1);
    for (auto const& [key, row] : parameters.IpCurvePolygon())
        search.Add(key[0], row.get<"source_parameter">(), row.get<"polygon">(), 0);
    for (auto const& [key, row] : parameters.IpSchlauchTrack())
        for (int const polygon : {row.get<"polygon">(), row.get<"second_polygon">()})
            if (polygon != -1)
                search.Add(key[0], row.get<"source_parameter">(), polygon, 0);

    std::vector<JudgingPolygon> polygons;
    for (auto const& [which, keys] : search.Result()) {
        auto const& [judge, source, polygon] = which;
        polygons.push_back({.polygon = NamedPolygon(parameters, polygon),
                            .judge = NamedParameter(parameters, judge),
                            .source = NamedParameter(parameters, source),
                            .keys = keys,
                            .is_missing = parameters.GroupInfo().Group(polygon).empty()});
    }
    return polygons;
}

nlohmann::ordered_json ToJson(JudgingPolygon const& polygon) {
    return {{"polygon", ToJson(polygon.polygon)},
            {"judge", ToJson(polygon.judge)},
            {"source", ToJson(polygon.source)},
            {"keys", polygon.keys},
            {"is_missing", polygon.is_missing}};
}

} // namespace paramdb::tools
