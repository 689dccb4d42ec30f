#include "tools/drive_choice.h"

#include <paramdb/query/param_instance.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace paramdb::tools {
namespace {

constexpr int LowestId = std::numeric_limits<int>::min();

// Where a parameter is measured.
struct Spot {
    int mode; // a base mode
    int channel;
    int location;
    friend bool operator==(Spot const&, Spot const&) = default;
};

std::vector<Spot> SpotsOf(CQtParamInstance const& parameters, int parameter) {
    std::vector<Spot> spots;
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        if (parameter == -1 || key[Clavis::qInstrParam] != parameter)
            continue;
        Spot const spot{parameters.VirtMode2BaseMode(key[Clavis::qMode]), key[Clavis::qChannel],
                        key[Clavis::qLocation]};
        if (spots.empty() || spots.back() != spot)
            spots.push_back(spot);
    }
    return spots;
}

bool HasRotors(CQtParamInstance const& parameters, int mode) {
    int const physical_mode = parameters.PhysModeId(mode);
    auto const row = parameters.RotorSpeed().lower_bound({physical_mode, LowestId});
    return physical_mode != -1 && row != parameters.RotorSpeed().end() && row->first[0] == physical_mode;
}

// Whether it has events and a speed.
bool GearTurns(CQtParamInstance const& parameters, int mode, int gear) {
    return parameters.BaseOrder(mode, gear) != 0 &&
           parameters.FrequencyRatioToGeneratingRotor(mode, gear, gear) != 0;
}

bool HasDimensions(CQtParamInstance const& parameters, int mode, int trigger) {
    auto const row = parameters.TriggerParam().lower_bound({mode, trigger, LowestId});
    return trigger != -1 && row != parameters.TriggerParam().end() && row->first[0] == mode &&
           row->first[1] == trigger;
}

class Chooser {
public:
    Chooser(CQtParamInstance const& parameters, DriveOptions const& options, DriveQuestion const& question)
        : m_parameters(parameters), m_options(options), m_question(question),
          m_spots(SpotsOf(parameters, question.parameter)) {}

    Drive Choose() {
        // Each part leans on the one before.
        ChooseGear();
        ChooseMode();
        ChooseRotor();
        if (m_drive.gear.id.id == -1 && m_drive.rotor.id.id != -1 && m_options.rotor)
            m_drive.gear = {Location(*m_options.rotor), "the rotor itself"};
        return std::move(m_drive);
    }

private:
    NamedId Location(int id) const { return Named(m_parameters.Location(), id); }
    NamedId Channel(int id) const { return Named(m_parameters.Channel(), id); }

    void ChooseGear() {
        if (m_options.gear)
            m_drive.gear.id = Location(*m_options.gear);
        else if (m_question.gear != -1)
            m_drive.gear = {Location(m_question.gear), "its base order reference"};
    }

    void ChooseMode() {
        if (m_options.mode) {
            m_drive.mode.id = {*m_options.mode, m_parameters.ModeName(*m_options.mode)};
            return;
        }
        std::vector<int> modes;
        for (Spot const& spot : m_spots)
            modes.push_back(spot.mode);
        if (modes.empty())
            for (auto const& [key, name] : m_parameters.Mode())
                modes.push_back(key[0]);
        auto const less = [this](int left, int right) { return Fitness(left) < Fitness(right); };
        auto const best = std::max_element(modes.begin(), modes.end(), less);
        if (best != modes.end())
            m_drive.mode = {{*best, m_parameters.ModeName(*best)},
                            m_spots.empty() ? "chosen among all modes" : "chosen among its modes"};
    }

    // What holds in a mode, the more important the higher.
    int Fitness(int mode) const {
        int const gear = m_drive.gear.id.id;
        int const turning = m_options.rotor && gear == -1 ? *m_options.rotor : gear;
        return (turning != -1 && GearTurns(m_parameters, mode, turning) ? 4 : 0) +
               (HasDimensions(m_parameters, mode, m_question.trigger) ? 2 : 0) +
               (HasRotors(m_parameters, mode) ? 1 : 0);
    }

    void ChooseRotor() {
        int const mode = m_drive.mode.id.id;
        if (m_options.rotor) {
            m_drive.rotor.id = Location(*m_options.rotor);
            return;
        }
        int const base_mode = m_parameters.VirtMode2BaseMode(mode);
        for (Spot const& spot : m_spots)
            if (spot.mode == base_mode && TakeRotorOf(spot))
                return;
        int const gear = m_drive.gear.id.id;
        int source = m_parameters.RotorSpeedSource(mode, gear, true);
        if (source == -1)
            source = m_parameters.RotorSpeedSource(mode, RotorOfGear(m_parameters, mode, gear), true);
        if (source != -1)
            m_drive.rotor = {Location(source), "the speed source of the gear"};
    }

    bool TakeRotorOf(Spot const& spot) {
        if (spot.location == -1)
            return false;
        auto const flags = static_cast<unsigned int>(m_parameters.ChannelFlags(spot.mode, spot.channel));
        bool const is_mix = (flags & CQtParamInstance::mix_channel) != 0;
        if (!is_mix && (flags & CQtParamInstance::sync_channel) == 0)
            return false;
        int const rotor = is_mix ? m_parameters.RotorSpeedSource(spot.mode, spot.location, true)
                                 : RotorOfGear(m_parameters, spot.mode, spot.location);
        if (rotor == -1)
            return false;
        std::string reason = is_mix ? "the speed source of its channel " : "that of its channel ";
        reason.append(Shown(Channel(spot.channel)));
        m_drive.rotor = {Location(rotor), std::move(reason)};
        return true;
    }

    CQtParamInstance const& m_parameters;
    DriveOptions const& m_options;
    DriveQuestion const& m_question;
    std::vector<Spot> m_spots;
    Drive m_drive;
};

} // namespace

Drive ChooseDrive(CQtParamInstance const& parameters, DriveOptions const& options,
                  DriveQuestion const& question) {
    return Chooser(parameters, options, question).Choose();
}

int BaseOrderReference(CQtParamInstance const& parameters, int parameter) {
    for (int const instrument : {1001, 2001, 2007}) {
        auto const& table = parameters.IpSvOfSpec().at(instrument);
        auto const row = table.find(parameter);
        if (row != table.end())
            return row->second.get<"base_order_reference">();
    }
    return -1;
}

int RotorOfGear(CQtParamInstance const& parameters, int mode, int gear) {
    if (mode == -1 || gear == -1)
        return -1;
    int const physical_gear = parameters.PhysicalGear(mode, gear);
    int const physical_mode = parameters.PhysModeId(mode);
    if (physical_gear != -1) {
        int const rotor = parameters.OrderSource2Rotor(mode, physical_gear);
        if (parameters.RotorSpeed().find({physical_mode, rotor}) != parameters.RotorSpeed().end())
            return rotor;
    }
    return parameters.OrderSource2Rotor(mode, gear);
}

} // namespace paramdb::tools
