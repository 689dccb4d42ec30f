#include <paramdb/distillery/trigger_map.h>
#include <paramdb/tables/catalogue.h>

#include <optional>

namespace {

constexpr int CurveTrackTrend = 13202;

// The trigger column of the first row that is not below the parameter; -1 behind the last.
template <class Table>
int TriggerFrom(Table const& table, int parameter) {
    auto const row = table.lower_bound(parameter);
    return row != table.end() ? row->second.template get<"trigger">() : -1;
}

// The trigger of a parameter by the instrument that owns it; none for an instrument without a table of
// triggers.
std::optional<int> TriggerOf(CParamTables const& tables, int instrument, int parameter) {
    switch (instrument) {
    case 1001:
    case 2001:
    case 2007:
        return TriggerFrom(tables.IpSvOfSpec.at(instrument), parameter);
    case 1002:
    case 1003:
    case 1004:
    case 1005:
        return TriggerFrom(tables.IpTimeCalcVal.at(instrument), parameter);
    case 2002:
    case 2003:
    case 2004:
    case 2005:
    case 2006:
        return TriggerFrom(tables.IpCalcTrack.at(instrument), parameter);
    case 1050:
    case 1051:
    case 2600:
    case 2900:
    case 3500:
    case 5000:
    case 5001:
    case 21000:
        return TriggerFrom(tables.IpSimpleTrack.at(instrument), parameter);
    case 11201:
        return TriggerFrom(tables.IpSvBinOp.at(instrument), parameter);
    case 1700:
        return TriggerFrom(tables.IpSgArea, parameter);
    case 2008:
        return TriggerFrom(tables.IpHoelderTrack, parameter);
    case 2012:
        return TriggerFrom(tables.IpSchlauchTrack, parameter);
    case 2070:
        return TriggerFrom(tables.IpSgAreaTrack, parameter);
    case 2500:
        return TriggerFrom(tables.IpSpectrum, parameter);
    case 2700:
        return TriggerFrom(tables.IpSgSection, parameter);
    case 3700:
        return TriggerFrom(tables.IpModSpectrogram, parameter);
    case 11000:
        return TriggerFrom(tables.IpTrackTransform, parameter);
    case 20000:
        return TriggerFrom(tables.IpCV, parameter);
    default:
        return std::nullopt;
    }
}

// The trigger of the trend's source, as far as the map holds it.
int TriggerOfTrend(CParamTables const& tables, CTriggerIdMap const& triggers, int parameter) {
    auto const row = tables.IpCurveTrackTrend.find(parameter);
    if (row == tables.IpCurveTrackTrend.end())
        return -1;
    auto const source = triggers.find(row->second.get<"source_parameter">());
    return source != triggers.end() ? source->second : -1;
}

} // namespace

CTriggerIdMap BuildTriggerIdMap(CParamTables const& tables) {
    CTriggerIdMap triggers;
    for (auto const& [parameter, row] : tables.InstrumentParam) {
        int const instrument = row.get<"instrument">();
        if (!tables.Instrument.IsValidId(instrument))
            continue;
        if (auto const trigger = TriggerOf(tables, instrument, parameter[0]))
            triggers.try_emplace(triggers.end(), parameter[0], *trigger);
    }
    // Trends take over from parameters of other classes, and from trends with lower ids.
    if (!tables.Instrument.IsValidId(CurveTrackTrend))
        return triggers;
    for (auto const& [parameter, row] : tables.InstrumentParam)
        if (row.get<"instrument">() == CurveTrackTrend)
            triggers.try_emplace(parameter[0], TriggerOfTrend(tables, triggers, parameter[0]));
    return triggers;
}
