// The plain model: what is derived from the tables.
#include "naive_walks.h"
#include "plain_model.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace benchmarks {
namespace {

constexpr int CurveTrackTrend = 13202;

template <class Table>
int Referred(Table const& table, std::array<int, 2> const& key, int fallback) {
    auto const row = table.find(key);
    return row != table.end() ? row->second.template get<"referred_id">() : fallback;
}

// The trigger of the first row that is not below the parameter.
template <class Table>
int TriggerFrom(Table const& table, int parameter) {
    auto const row = table.lower_bound({parameter});
    return row != table.end() ? row->second.template get<"trigger">() : -1;
}

template <class Family>
bool HasTrigger(Family const& family, int instrument, int parameter, int& trigger) {
    auto const table = family.find(instrument);
    if (table != family.end())
        trigger = TriggerFrom(table->second, parameter);
    return table != family.end();
}

std::optional<int> TriggerOf(ModelTables const& tables, int instrument, int parameter) {
    int trigger = -1;
    if (HasTrigger(tables.IpSvOfSpec, instrument, parameter, trigger) ||
        HasTrigger(tables.IpTimeCalcVal, instrument, parameter, trigger) ||
        HasTrigger(tables.IpCalcTrack, instrument, parameter, trigger) ||
        HasTrigger(tables.IpSimpleTrack, instrument, parameter, trigger))
        return trigger;
    switch (instrument) {
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

int ConvertAccumulation(int accumulation, float decay) {
    switch (accumulation) {
    case 20:
    case 21:
    case 22:
        return accumulation;
    case 2:
        return 20;
    case 3:
        return decay != 0 ? 21 : 22;
    default:
        return 0;
    }
}

} // namespace

bool PlainModel::SignalsAreCongruent() const {
    auto const same_id = [](auto const& left, auto const& right) { return left.first == right.first; };
    return std::ranges::equal(m_tables.ApplicationSignal, m_tables.AppSignalProperty, same_id);
}

bool PlainModel::Derive() {
    if (!SignalsAreCongruent())
        return false;
    m_derived = {};
    for (auto const& [signal, row] : m_tables.AppSignalProperty)
        if (row.get<"signal_type">() == 4) {
            m_derived.time_signal = signal[0];
            break;
        }
    DeriveGroups();
    WalkChannelsByLoops(m_tables, m_derived.channels);
    DeriveIntervals();
    DeriveRotors();
    bool const has_room = DeriveModes();
    DeriveTriggers();
    return has_room && Refine();
}

void PlainModel::DeriveGroups() {
    int previous = -1;
    int index = 0;
    for (auto const& [key, row] : m_tables.IpPolygonValue) {
        auto const& [number, x] = key;
        index = number == previous ? index + 1 : 0;
        previous = number;
        m_derived.groups.insert({{number, index}, {x, row.get<"y">()}});
    }
    int const next_group = m_derived.groups.empty() ? 0 : m_derived.groups.rbegin()->first.first + 1;
    ExpandByLoops(m_tables, next_group, m_derived.groups, m_derived.entries, [this] { ++m_faults; });
}

void PlainModel::DeriveIntervals() {
    for (int const instrument : {1001, 2001})
        for (auto const& [parameter, row] : m_tables.IpSvOfSpec.at(instrument)) {
            if (row.get<"interpretation">() >= 1 && row.get<"interpretation">() <= 4)
                ++m_faults;
            std::wstring const definition = row.get<"definition">().c_str();
            auto const positions = ParseOrderDefinition(definition, 32);
            std::size_t const count = positions.size();
            bool const is_odd = count > 1 && count % 2 != 0;
            if (is_odd || (count == 0 && !definition.empty()))
                ++m_faults;
            for (std::size_t lower = 0; !is_odd && lower < count; lower += 2)
                m_derived.intervals.insert({{parameter[0], static_cast<int>(lower)},
                                            {positions[lower], positions[std::min(lower + 1, count - 1)]}});
        }
}

void PlainModel::DeriveRotors() {
    int serial = 0;
    for (auto const& [key, row] : m_tables.OrderSource2Rotor) {
        auto const [order_source, physical_mode] = key;
        int const rotor = row.get<"referred_id">();
        int const gear =
            order_source == -1 || physical_mode == -1
                ? -1
                : Referred(m_tables.Virtual2PhysGear, {physical_mode, order_source}, order_source);
        int source = Referred(m_tables.RotorSpeedSource, {physical_mode, rotor}, -1);
        bool is_reference = false;
        if (source == -1 &&
            m_tables.RotorSpeedSource.find({physical_mode, rotor}) == m_tables.RotorSpeedSource.end()) {
            source = Referred(m_tables.RotorSpeedReference, {physical_mode, rotor}, -1);
            is_reference = source != -1;
        }
        if (m_tables.BaseOrder.find({gear}) == m_tables.BaseOrder.end()) {
            ++m_faults;
            continue;
        }
        auto& target = is_reference ? m_derived.order_references : m_derived.order_sources;
        target.insert({{physical_mode, source, rotor, serial++}, order_source});
    }
}

bool PlainModel::DeriveModes() {
    int bits = 0;
    bool combine = m_tables.AutoModeParam.size() == m_tables.AutoModeParamOrder.size();
    for (auto const& [order, order_row] : m_tables.AutoModeParamOrder) {
        auto const row = m_tables.AutoModeParam.find({order_row.get<"signal">()});
        combine = combine && row != m_tables.AutoModeParam.end();
        if (!combine)
            break;
        auto const& parameter = row->second;
        float const intervals =
            (parameter.get<"stop">() - parameter.get<"start">()) / parameter.get<"step">();
        bits += static_cast<int>(std::ceil(std::log(intervals) / std::log(2.0)));
        if (parameter.get<"state">() != 0)
            bits += 2;
    }
    if (!combine) {
        ++m_faults;
        bits = 0;
    }
    m_derived.extension_bits = bits;
    m_derived.extension_mask = ((1u << (bits % 32)) - 1) << ((31 - bits) % 32);
    int const largest = m_tables.Mode.empty() ? 0 : m_tables.Mode.rbegin()->first[0];
    int const needed =
        largest > 0 ? static_cast<int>(std::ceil(std::log(static_cast<double>(largest)) / std::log(2.0))) : 0;
    return 31 - bits >= needed;
}

void PlainModel::DeriveTriggers() {
    auto const is_known = [this](int instrument) {
        return m_tables.Instrument.find({instrument}) != m_tables.Instrument.end();
    };
    for (auto const& [parameter, row] : m_tables.InstrumentParam) {
        int const instrument = row.get<"instrument">();
        if (!is_known(instrument))
            continue;
        if (auto const trigger = TriggerOf(m_tables, instrument, parameter[0]))
            m_derived.triggers.insert({parameter[0], *trigger});
    }
    for (auto const& [parameter, row] : m_tables.InstrumentParam) {
        if (row.get<"instrument">() != CurveTrackTrend || !is_known(CurveTrackTrend))
            continue;
        int trigger = -1;
        auto const trend = m_tables.IpCurveTrackTrend.find(parameter);
        if (trend != m_tables.IpCurveTrackTrend.end()) {
            auto const source = m_derived.triggers.find(trend->second.get<"source_parameter">());
            trigger = source != m_derived.triggers.end() ? source->second : -1;
        }
        m_derived.triggers.insert({parameter[0], trigger});
    }
}

bool PlainModel::Refine() {
    for (auto& [key, row] : m_tables.RelativeLimit) {
        auto const parameter = m_tables.InstrumentParam.find({key[4]});
        if (parameter == m_tables.InstrumentParam.end())
            return false;
        key[1] = parameter->second.get<"instrument">();
    }
    for (auto& [group, row] : m_tables.SeverityProperty)
        if (int& code = row.get<"result_code">(); code < 0 || code > 3) {
            ++m_faults;
            code = 3;
        }
    ConvertSpectra(m_tables.IpSpectrum);
    ConvertSpectra(m_tables.IpModSpectrogram);
    for (auto& [parameter, row] : m_tables.IpSgSection)
        if (int& accumulation = row.get<"accumulation">(); accumulation < 9)
            accumulation = ConvertAccumulation(accumulation, 1000);
    return true;
}

template <class Table>
void PlainModel::ConvertSpectra(Table& spectra) {
    for (auto& [parameter, row] : spectra) {
        int& accumulation = row.template get<"accumulation">();
        float const decay = row.template get<"decay">();
        accumulation = ConvertAccumulation(accumulation, decay);
        if (accumulation == 21 && decay < 1000)
            ++m_faults;
    }
}

} // namespace benchmarks
