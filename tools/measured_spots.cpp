#include "tools/measured_spots.h"

#include <paramdb/query/param_instance.h>

namespace paramdb::tools {
namespace {

template <class Accepts>
std::unordered_map<int, std::vector<Spot>> CollectSpots(CQtParamInstance const& parameters,
                                                        Accepts const& accepts) {
    std::unordered_map<int, std::vector<Spot>> spots;
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        int const parameter = key[Clavis::qInstrParam];
        if (parameter == -1 || !accepts(parameter))
            continue;
        Spot const spot{parameters.VirtMode2BaseMode(key[Clavis::qMode]), key[Clavis::qChannel],
                        key[Clavis::qLocation]};
        auto& list = spots[parameter];
        if (list.empty() || list.back() != spot)
            list.push_back(spot);
    }
    return spots;
}

} // namespace

MeasuredSpots::MeasuredSpots(CQtParamInstance const& parameters)
    : m_spots(CollectSpots(parameters, [](int) { return true; })) {}

MeasuredSpots::MeasuredSpots(CQtParamInstance const& parameters, int parameter)
    : m_spots(CollectSpots(parameters, [parameter](int id) { return id == parameter; })) {}

std::span<Spot const> MeasuredSpots::Of(int parameter) const {
    auto const found = m_spots.find(parameter);
    return found != m_spots.end() ? std::span<Spot const>(found->second) : std::span<Spot const>();
}

} // namespace paramdb::tools
