#include "trigger_tables.h"

#include <cstdint>
#include <tuple>
#include <type_traits>

namespace derivation {
namespace {

// Puts the trigger into the integer at that place of the row, and another number into all others.
template <class Table>
void Add(Table& table, int parameter, int place, int trigger) {
    constexpr int other = -4711;
    typename Table::mapped_type row;
    int index = 0;
    auto const fill = [&](auto& field) {
        if constexpr (std::is_same_v<std::remove_reference_t<decltype(field)>, std::int32_t>)
            field = index == place ? trigger : other;
        ++index;
    };
    std::apply([&](auto&... fields) { (fill(fields), ...); }, row.tuple());
    table.insert({parameter, row});
}

} // namespace

std::vector<TriggerClass> const& TriggerClasses() {
    static std::vector<TriggerClass> const classes{
        {1001, "<TIpSpectralValue>", "T 1 0 O1 3 4"},
        {2001, "<TIpSpectralTrack>", "T 1 0 O1 3 4"},
        {2007, "<TIpResidualTrack>", "T 1 0 O1 3 4"},
        {1002, "<TIpCrest>", "T 1 0.5"},
        {1003, "<TIpRms>", "T 1 0.5"},
        {1004, "<TIpPeak>", "T 1 0.5"},
        {1005, "<TIpKurtosis>", "T 1 0.5"},
        {2002, "<TIpCrestTrack>", "T 1"},
        {2003, "<TIpRmsTrack>", "T 1"},
        {2004, "<TIpPeakTrack>", "T 1"},
        {2005, "<TIpKurtosisTrack>", "T 1"},
        {2006, "<TIpModulationTrack>", "T 1"},
        {1050, "<TIpRatioTest>", "T"},
        {1051, "<TIpDiffTest>", "T"},
        {2600, "<TIpTimeSignal>", "T"},
        {2900, "<TIpCepstrum>", "T"},
        {3500, "<TIpSpectrogram>", "T"},
        {5000, "<TIpSFTrack>", "T"},
        {5001, "<TIpSFTimeSignal>", "T"},
        {21000, "<TIpCvTrack>", "T"},
        {11201, "<TIpTrackBinOp>", "1 2 3 4 5 T"},
        {1700, "<TIpSgArea>", "1 O1 2 3 0.5 T 6"},
        {2008, "<TIpHoelderTrack>", "1 T 2"},
        {2012, "<TIpVarAreaTrack>", "1 T 2 3 4 5 6"},
        {2070, "<TIpSgAreaTrack>", "T 1 O1 2 3"},
        {2500, "<TIpSpectrum>", "T 0 0.5 1"},
        {2700, "<TIpSgSection>", "1 O1 2 3 T 0"},
        {3700, "<TIpModSpectrogram>", "T 0 0.5 1"},
        {11000, "<TIpTrackTransform>", "1 2 3 T"},
        {20000, "<TIpCvValue>", "T 1"},
    };
    return classes;
}

std::string TriggerSection(TriggerClass const& trigger_class, int parameter, int trigger) {
    std::string row = trigger_class.row;
    row.replace(row.find('T'), 1, std::to_string(trigger));
    return trigger_class.tag + ": {\n" + std::to_string(parameter) + ' ' + row + "\n}\n";
}

void AddTriggerRow(CParamTables& tables, int instrument, int parameter, int trigger) {
    switch (instrument) {
    case 1001:
    case 2001:
    case 2007:
        return Add(tables.IpSvOfSpec.at(instrument), parameter, 0, trigger);
    case 1002:
    case 1003:
    case 1004:
    case 1005:
        return Add(tables.IpTimeCalcVal.at(instrument), parameter, 0, trigger);
    case 2002:
    case 2003:
    case 2004:
    case 2005:
    case 2006:
        return Add(tables.IpCalcTrack.at(instrument), parameter, 0, trigger);
    case 11201:
        return Add(tables.IpSvBinOp.at(instrument), parameter, 5, trigger);
    case 1700:
        return Add(tables.IpSgArea, parameter, 5, trigger);
    case 2008:
        return Add(tables.IpHoelderTrack, parameter, 1, trigger);
    case 2012:
        return Add(tables.IpSchlauchTrack, parameter, 1, trigger);
    case 2070:
        return Add(tables.IpSgAreaTrack, parameter, 0, trigger);
    case 2500:
        return Add(tables.IpSpectrum, parameter, 0, trigger);
    case 2700:
        return Add(tables.IpSgSection, parameter, 4, trigger);
    case 3700:
        return Add(tables.IpModSpectrogram, parameter, 0, trigger);
    case 11000:
        return Add(tables.IpTrackTransform, parameter, 3, trigger);
    case 20000:
        return Add(tables.IpCV, parameter, 0, trigger);
    default:
        return Add(tables.IpSimpleTrack.at(instrument), parameter, 0, trigger);
    }
}

} // namespace derivation
