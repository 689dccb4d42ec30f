#include "tools/rotor_listing.h"

#include <paramdb/query/param_instance.h>

#include <map>

namespace paramdb::tools {
namespace {

// Physical mode and rotor to order sources.
using SourcesOfRotors = std::map<QIdx2, std::vector<int>>;

SourcesOfRotors CollectSources(CQtParamInstance const& parameters) {
    SourcesOfRotors result;
    for (auto const& [key, row] : parameters.OrderSource2Rotor())
        result[{key[1], row.get<"referred_id">()}].push_back(key[0]);
    return result;
}

// The id that a key refers to, or none.
template <class Table>
std::optional<int> Referred(Table const& table, typename Table::key_type const& key) {
    auto const row = table.find(key);
    if (row == table.end())
        return std::nullopt;
    return row->second.template get<"referred_id">();
}

OrderSourceEntry SourceEntry(CQtParamInstance const& parameters, int physical_mode, int source) {
    int const gear = Referred(parameters.Virtual2PhysGear(), {physical_mode, source}).value_or(source);
    OrderSourceEntry entry{Named(parameters.Location(), source), Named(parameters.Location(), gear),
                           std::nullopt};
    auto const row = parameters.BaseOrder().find(gear);
    if (row != parameters.BaseOrder().end())
        entry.base_order = row->second.get<"base_order">();
    return entry;
}

// A row that says -1 counts as well: such a rotor has no speed source, and no reference either.
void FindSpeedSource(CQtParamInstance const& parameters, QIdx2 const& key, RotorEntry& entry) {
    auto source = Referred(parameters.RotorSpeedSource(), key);
    entry.speed_source_kind = SpeedSourceKind::Source;
    if (!source) {
        source = Referred(parameters.RotorSpeedReference(), key);
        entry.speed_source_kind = SpeedSourceKind::Reference;
    }
    if (source.value_or(-1) == -1) {
        entry.speed_source_kind = SpeedSourceKind::None;
        return;
    }
    entry.speed_source = Named(parameters.Location(), *source);
    int const signal = Referred(parameters.SpeedSource(), *source).value_or(-1);
    entry.signal = Named(parameters.ApplicationSignal(), signal);
}

RotorEntry RotorEntryOf(CQtParamInstance const& parameters, QIdx2 const& key, QVRotorSpeeds const& row,
                        SourcesOfRotors const& sources) {
    RotorEntry entry;
    entry.rotor = Named(parameters.Location(), key[1]);
    entry.ratio = row.get<"ratio">();
    if (row.get<"denominator">() != 0)
        entry.fraction = numeric::CRatio(row.get<"numerator">(), row.get<"denominator">());
    FindSpeedSource(parameters, key, entry);
    auto const found = sources.find(key);
    if (found != sources.end())
        for (int const source : found->second)
            entry.order_sources.push_back(SourceEntry(parameters, key[0], source));
    return entry;
}

} // namespace

std::vector<PhysicalModeRotors> CollectRotors(CQtParamInstance const& parameters,
                                              std::optional<int> physical_mode) {
    std::vector<PhysicalModeRotors> list;
    SourcesOfRotors const sources = CollectSources(parameters);
    for (auto const& [key, row] : parameters.RotorSpeed()) {
        if (physical_mode && key[0] != *physical_mode)
            continue;
        if (list.empty() || list.back().physical_mode.id != key[0])
            list.push_back({Named(parameters.PhysMode(), key[0]), {}});
        list.back().rotors.push_back(RotorEntryOf(parameters, key, row, sources));
    }
    return list;
}

} // namespace paramdb::tools
