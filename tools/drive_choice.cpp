#include "tools/drive_choice.h"

#include <paramdb/query/param_instance.h>

#include <algorithm>
#include <limits>
#include <vector>

namespace paramdb::tools {
namespace {

constexpr int LowestId = std::numeric_limits<int>::min();

bool HasRotors(CQtParamInstance const& parameters, int mode) {
    int const physical_mode = parameters.PhysModeId(mode);
    auto const row = parameters.RotorSpeed().lower_bound({physical_mode, LowestId});
    return physical_mode != -1 && row != parameters.RotorSpeed().end() && row->first[0] == physical_mode;
}

bool IsMix(CQtParamInstance const& parameters, Spot const& spot) {
    auto const flags = static_cast<unsigned int>(parameters.ChannelFlags(spot.mode, spot.channel));
    return (flags & CQtParamInstance::mix_channel) != 0;
}

bool HasDimensions(CQtParamInstance const& parameters, int mode, int trigger) {
    auto const row = parameters.TriggerParam().lower_bound({mode, trigger, LowestId});
    return trigger != -1 && row != parameters.TriggerParam().end() && row->first[0] == mode &&
           row->first[1] == trigger;
}

class Chooser {
public:
    Chooser(CQtParamInstance const& parameters, std::span<Spot const> spots, DriveOptions const& options,
            DriveQuestion const& question)
        : m_parameters(parameters), m_options(options), m_question(question), m_spots(spots) {}

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
        if (int const source = SpeedSourceOfGear(m_parameters, mode, m_drive.gear.id.id); source != -1)
            m_drive.rotor = {Location(source), "the speed source of the gear"};
    }

    bool TakeRotorOf(Spot const& spot) {
        int const rotor = RotorOfSpot(m_parameters, spot);
        if (rotor == -1)
            return false;
        std::string reason =
            IsMix(m_parameters, spot) ? "the speed source of its channel " : "that of its channel ";
        reason.append(Shown(Channel(spot.channel)));
        m_drive.rotor = {Location(rotor), std::move(reason)};
        return true;
    }

    CQtParamInstance const& m_parameters;
    DriveOptions const& m_options;
    DriveQuestion const& m_question;
    std::span<Spot const> m_spots;
    Drive m_drive;
};

} // namespace

Drive ChooseDrive(CQtParamInstance const& parameters, MeasuredSpots const& spots, DriveOptions const& options,
                  DriveQuestion const& question) {
    return Chooser(parameters, spots.Of(question.parameter), options, question).Choose();
}

Drive ChooseDrive(CQtParamInstance const& parameters, DriveOptions const& options,
                  DriveQuestion const& question) {
    return ChooseDrive(parameters, MeasuredSpots(parameters, question.parameter), options, question);
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

int RotorOfSpot(CQtParamInstance const& parameters, Spot const& spot) {
    if (spot.location == -1)
        return -1;
    if (IsMix(parameters, spot))
        return parameters.RotorSpeedSource(spot.mode, spot.location, true);
    auto const flags = static_cast<unsigned int>(parameters.ChannelFlags(spot.mode, spot.channel));
    bool const is_sync = (flags & CQtParamInstance::sync_channel) != 0;
    return is_sync ? RotorOfGear(parameters, spot.mode, spot.location) : -1;
}

int SpeedSourceOfGear(CQtParamInstance const& parameters, int mode, int gear) {
    int const source = parameters.RotorSpeedSource(mode, gear, true);
    return source != -1 ? source
                        : parameters.RotorSpeedSource(mode, RotorOfGear(parameters, mode, gear), true);
}

bool GearTurns(CQtParamInstance const& parameters, int mode, int gear) {
    return parameters.BaseOrder(mode, gear) != 0 &&
           parameters.FrequencyRatioToGeneratingRotor(mode, gear, gear) != 0;
}

} // namespace paramdb::tools
