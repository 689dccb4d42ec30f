#include "rotor_world.h"

#include <limits>
#include <sstream>
#include <tests/support/extremes.h>

namespace {

template <class Table>
void Describe(std::ostringstream& text, char const* name, Table const& table) {
    text << " " << name << ":";
    for (auto const& [key, row] : table)
        text << " (" << key[0] << " " << key[1] << ")->" << row.template get<"referred_id">();
}

} // namespace

int RotorWorld::AnyId() {
    static constexpr int limits[] = {-1, -2, Lowest, Highest, Highest - 1};
    return Below(8) > 0 ? Below(5) : limits[Below(5)];
}

void RotorWorld::Renew() {
    static constexpr double ratios[] = {0.0,
                                        1.0,
                                        2.5,
                                        -3.0,
                                        std::numeric_limits<double>::infinity(),
                                        std::numeric_limits<double>::quiet_NaN()};
    static constexpr int terms[] = {0, 1, -1, 2, 6, 35, Highest, Lowest};
    own.Clear();
    model = RotorModel();
    auto& tables = own.tables();
    for (int mode = 0; mode < 3; ++mode) {
        tables.Mode.Add(mode, L"mode");
        int const physical_mode = AnyMode();
        if (Below(5) == 0)
            continue;
        tables.ModeProperty.insert({mode, QVModeProps(physical_mode, 0, 0, 0)});
        model.physical_modes.emplace(mode, physical_mode);
    }
    for (int channel = 0; channel < 4; ++channel) {
        tables.Channel.Add(channel, L"channel");
        int const flags = channel | (Below(2) << 2);
        tables.ChannelProperty.insert({channel, QVChannelProperty(static_cast<unsigned int>(flags), 0)});
        for (int mode = 0; mode < 3; ++mode)
            model.channel_flags[{mode, channel}] = flags;
    }
    auto const add_pairs = [&](auto& table, auto& rows, bool mode_first) {
        for (int count = Below(14); count > 0; --count) {
            int const mode = AnyMode();
            int const id = AnyId();
            QIdx2 const key = mode_first ? QIdx2(mode, id) : QIdx2(id, mode);
            int const value = AnyId();
            table.insert({key, QVRefIdx(value)});
            rows.emplace(RotorModel::Pair(key[0], key[1]), value);
        }
    };
    add_pairs(tables.Virtual2PhysGear, model.gears, true);
    add_pairs(tables.OrderSource2Rotor, model.sources, false);
    add_pairs(tables.RotorSpeedSource, model.speed_sources, true);
    add_pairs(tables.RotorSpeedReference, model.speed_references, true);
    for (int count = Below(12); count > 0; --count) {
        int const mode = AnyMode();
        int const rotor = AnyId();
        RotorModel::Speed const speed{ratios[Below(6)], terms[Below(8)], terms[Below(8)]};
        tables.RotorSpeed.insert(
            {QIdx2(mode, rotor), QVRotorSpeeds(speed.ratio, speed.numerator, speed.denominator)});
        model.speeds.emplace(RotorModel::Pair(mode, rotor), speed);
    }
    for (int count = Below(10); count > 0; --count) {
        int const id = AnyId();
        auto const value = 0.5f * static_cast<float>(Below(20));
        tables.BaseOrder.insert({id, QVBaseOrder(value)});
        model.base_orders.emplace(id, value);
        tables.GearDiameter.insert({id + (id == Highest ? 0 : 1), QVGearDiameter(value)});
        model.diameters.emplace(id + (id == Highest ? 0 : 1), value);
        int const signal = AnyId();
        tables.SpeedSource.insert({id, QVRefIdx(signal)});
        model.signals.emplace(id, signal);
    }
    own.Build();
}

std::string RotorWorld::Describe() const {
    auto const& tables = own.tables();
    std::ostringstream text;
    text << "physical modes:";
    for (auto const& [mode, physical_mode] : model.physical_modes)
        text << " " << mode << "->" << physical_mode;
    ::Describe(text, "gears", tables.Virtual2PhysGear);
    ::Describe(text, "order sources", tables.OrderSource2Rotor);
    ::Describe(text, "speed sources", tables.RotorSpeedSource);
    ::Describe(text, "references", tables.RotorSpeedReference);
    text << " base orders:";
    for (auto const& [gear, order] : model.base_orders)
        text << " " << gear;
    return text.str();
}
