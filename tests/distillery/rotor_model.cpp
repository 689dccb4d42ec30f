#include "rotor_model.h"

#include <iterator>

namespace {

template <class Key, class Value>
Value const* Row(std::map<Key, Value> const& rows, Key const& key) {
    auto const row = rows.find(key);
    return row == rows.end() ? nullptr : &row->second;
}
template <class Key, class Value>
Value ValueOf(std::map<Key, Value> const& rows, Key const& key, Value fallback) {
    auto const* const row = Row(rows, key);
    return row == nullptr ? fallback : *row;
}

} // namespace

int RotorModel::PhysicalMode(int mode) const {
    return mode == -1 ? -1 : ValueOf(physical_modes, mode, -1);
}

int RotorModel::GearOf(int physical_mode, int gear) const {
    return physical_mode == -1 || gear == -1 ? -1 : ValueOf(gears, Pair(physical_mode, gear), gear);
}

int RotorModel::RotorOf(int physical_mode, int source) const {
    return physical_mode == -1 || source == -1 ? -1 : ValueOf(sources, Pair(source, physical_mode), source);
}

int RotorModel::DirectSource(int physical_mode, int rotor, bool reference) const {
    Pair const key(physical_mode, rotor);
    if (speed_sources.count(key) > 0)
        return speed_sources.at(key);
    return reference ? ValueOf(speed_references, key, -1) : -1;
}

int RotorModel::PhysicalGear(int mode, int gear) const {
    return GearOf(PhysicalMode(mode), gear);
}

int RotorModel::OrderSource2Rotor(int mode, int source) const {
    return mode == -1 || source == -1 ? 0 : RotorOf(PhysicalMode(mode), source);
}

float RotorModel::BaseOrder(int mode, int gear) const {
    return ValueOf(base_orders, PhysicalGear(mode, gear), 0.0f);
}

float RotorModel::GearDiameter(int mode, int gear) const {
    return ValueOf(diameters, PhysicalGear(mode, gear), 0.0f);
}

int RotorModel::RotorSpeedSource(int mode, int rotor, bool reference) const {
    if (mode == -1 || rotor == -1)
        return -1;
    int const physical_mode = PhysicalMode(mode);
    return DirectSource(physical_mode, RotorOf(physical_mode, rotor), reference);
}

int RotorModel::RotorSpeedSourceAppId(int mode, int rotor, bool reference) const {
    int const source = RotorSpeedSource(mode, rotor, reference);
    return source == -1 ? -1 : ValueOf(signals, source, -1);
}

int RotorModel::SpeedInfoOfRotor(int mode, int rotor, bool reference) const {
    int const source = DirectSource(PhysicalMode(mode), rotor, reference);
    return source == -1 ? -1 : ValueOf(signals, source, -1);
}

int RotorModel::RotorSpeedAppIdSource(int signal) const {
    for (auto const& [source, its_signal] : signals)
        if (its_signal == signal)
            return source;
    return -1;
}

RotorModel::Speed const* RotorModel::SpeedOf(int mode, int rotor) const {
    if (mode == -1 || rotor == -1)
        return nullptr;
    int const physical_mode = PhysicalMode(mode);
    int const gear = GearOf(physical_mode, rotor);
    auto const* const row = Row(speeds, Pair(physical_mode, RotorOf(physical_mode, gear)));
    return row != nullptr ? row : Row(speeds, Pair(physical_mode, RotorOf(physical_mode, rotor)));
}

double RotorModel::FrequencyRatio(int mode, int a, int b) const {
    if (mode == -1 || a == -1 || b == -1)
        return 0.0;
    auto const* const first = SpeedOf(mode, a);
    auto const* const second = SpeedOf(mode, b);
    if (first == nullptr || first->ratio == 0.0)
        return 0.0;
    return (second == nullptr ? 0.0 : second->ratio) / first->ratio;
}

double RotorModel::FrequencyRelativeToSource(int mode, int rotor, bool reference) const {
    return FrequencyRatio(mode, RotorSpeedSource(mode, rotor, reference), rotor);
}

numeric::CRatio RotorModel::RatioOf(int mode, int rotor) const {
    auto const* const row = SpeedOf(mode, rotor);
    if (row == nullptr)
        return numeric::CRatio(0.0);
    return row->denominator == 0 ? numeric::CRatio(row->ratio)
                                 : numeric::CRatio(row->numerator, row->denominator);
}

numeric::CRatio RotorModel::RotorSpeedRatio(int mode, int a, int b) const {
    if (mode == -1 || a == -1 || b == -1)
        return numeric::CRatio(0.0);
    return RatioOf(mode, b) / RatioOf(mode, a);
}

RotorModel::Derived RotorModel::Derive() const {
    Derived derived;
    for (auto const& [key, rotor] : sources) {
        auto const [source, physical_mode] = key;
        if (base_orders.count(GearOf(physical_mode, source)) == 0) {
            derived.skipped.emplace_back(rotor, physical_mode);
            continue;
        }
        int speed_source = ValueOf(speed_sources, Pair(physical_mode, rotor), -1);
        bool is_reference = false;
        if (speed_source == -1) {
            speed_source = DirectSource(physical_mode, rotor, true);
            is_reference = speed_source != -1;
        }
        auto const serial = static_cast<int>(derived.sources.size() + derived.references.size());
        (is_reference ? derived.references : derived.sources)
            .emplace(physical_mode, speed_source, rotor, serial, source);
    }
    return derived;
}

std::vector<RotorModel::Entry> RotorModel::OrderSources(Derived const& derived, int mode, int channel,
                                                        int rotor, bool reference) const {
    using Bound = std::tuple<std::int64_t, std::int64_t, std::int64_t, std::int64_t>;
    int const physical_mode = PhysicalMode(mode);
    int const source = DirectSource(physical_mode, rotor, reference);
    int const flags = ValueOf(channel_flags, Pair(mode, channel), 0);
    Bound first(physical_mode, source, rotor, 0);
    Bound last(physical_mode, source, std::int64_t{rotor} + 1, 0);
    if ((flags & 2) != 0) {
        first = Bound(physical_mode, source, 0, 0);
        last = Bound(physical_mode, std::int64_t{source} + 1, 0, 0);
    } else if ((flags & 1) == 0) {
        return {};
    }
    std::vector<Entry> entries;
    for (auto const& entry : reference ? derived.references : derived.sources) {
        auto const [entry_mode, entry_source, entry_rotor, serial, order_source] = entry;
        Bound const key(entry_mode, entry_source, entry_rotor, serial);
        if (first <= key && key < last)
            entries.push_back(entry);
    }
    return entries;
}
