#include "tools/diff/interval_answers.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/query/spec_interval.h>

#include "tools/drive_choice.h"
#include "tools/interval_bands.h"
#include "tools/order_meaning.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <utility>

namespace paramdb::tools {
namespace {

// Where a parameter is measured in a mode.
struct Spot {
    int channel;
    int location;
    friend bool operator==(Spot const&, Spot const&) = default;
};

// By base mode; the spots of each in the order of keys.
using SpotsOfModes = std::map<int, std::vector<Spot>>;

// All parameters with an order definition, with the spots of those that are measured.
std::map<int, SpotsOfModes> CollectSpots(CQtParamInstance const& parameters) {
    std::map<int, SpotsOfModes> spots;
    for (int const instrument : {1001, 2001})
        for (auto const& [key, row] : parameters.IpSvOfSpec().at(instrument))
            spots[key[0]];
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        auto const found = spots.find(key[Clavis::qInstrParam]);
        if (found == spots.end())
            continue;
        auto& list = found->second[parameters.VirtMode2BaseMode(key[Clavis::qMode])];
        Spot const spot{key[Clavis::qChannel], key[Clavis::qLocation]};
        if (list.empty() || list.back() != spot)
            list.push_back(spot);
    }
    return spots;
}

class IntervalCollector {
public:
    IntervalCollector(RowTable& table, CQtParamInstance const& parameters, AnswerOptions const& options)
        : m_table(table), m_parameters(parameters), m_calculation(parameters) {
        m_options.speed = options.speed;
        m_options.line_distance = options.line_distance;
    }

    void Collect(int parameter, SpotsOfModes const& modes) {
        wchar_t const* const definition =
            m_parameters.SpecIntervalDefinition(static_cast<unsigned int>(parameter));
        if (definition == nullptr)
            return;
        OrderMeaning const meaning = MeaningOf(definition);
        int const gear = BaseOrderReference(m_parameters, parameter);
        for (auto const& [mode, spots] : modes)
            AddBands(mode, parameter, RotorOf(mode, spots, gear), gear, meaning);
        if (modes.empty()) {
            int const mode = ModeOf(gear);
            AddBands(mode, parameter, RotorOf(mode, {}, gear), gear, meaning);
        }
    }

private:
    // The first mode where a gear turns, else the first of all.
    int ModeOf(int gear) {
        auto const [mode, is_new] = m_modes.try_emplace(gear, -1);
        if (is_new)
            mode->second = FindMode(gear);
        return mode->second;
    }

    int FindMode(int gear) const {
        auto const& modes = m_parameters.Mode();
        auto const found = std::find_if(modes.begin(), modes.end(), [&](auto const& mode) {
            return m_parameters.BaseOrder(mode.first[0], gear) != 0 &&
                   m_parameters.FrequencyRatioToGeneratingRotor(mode.first[0], gear, gear) != 0;
        });
        auto const chosen = found != modes.end() ? found : modes.begin();
        return chosen != modes.end() ? chosen->first[0] : -1;
    }

    // The rotor of the first spot that has one, else the speed source of the gear; -1 for none.
    int RotorOf(int mode, std::vector<Spot> const& spots, int gear) const {
        for (Spot const& spot : spots)
            if (int const rotor = RotorAt(mode, spot); rotor != -1)
                return rotor;
        int const source = m_parameters.RotorSpeedSource(mode, gear, true);
        return source != -1
                   ? source
                   : m_parameters.RotorSpeedSource(mode, RotorOfGear(m_parameters, mode, gear), true);
    }

    // Orders count turns of the rotor of the place in a synchronous channel, those of its speed source in a
    // mixed one.
    int RotorAt(int mode, Spot const& spot) const {
        if (spot.location == -1)
            return -1;
        auto const flags = static_cast<unsigned int>(m_parameters.ChannelFlags(mode, spot.channel));
        if ((flags & CQtParamInstance::mix_channel) != 0)
            return m_parameters.RotorSpeedSource(mode, spot.location, true);
        bool const is_sync = (flags & CQtParamInstance::sync_channel) != 0;
        return is_sync ? RotorOfGear(m_parameters, mode, spot.location) : -1;
    }

    void AddBands(int mode, int parameter, int rotor, int gear, OrderMeaning const& meaning) {
        m_calculation.LoadTransformParams(mode, rotor, gear);
        auto const bands = BandsOf(meaning, m_calculation, m_options, 0);
        for (std::size_t place = 0; place < bands.size(); ++place) {
            auto const& [lower, upper] = meaning.intervals[place];
            AddBand({parameter, mode, static_cast<std::int32_t>(place + 1), rotor, gear},
                    FromUtf8(SumText(meaning.positions[lower])), FromUtf8(SumText(meaning.positions[upper])),
                    bands[place]);
        }
    }

    void AddBand(std::array<std::int32_t, 5> const& numbers, std::wstring const& from, std::wstring const& to,
                 IntervalBand const& band) {
        constexpr float nan = std::numeric_limits<float>::quiet_NaN();
        constexpr std::pair none(nan, nan);
        std::pair const bounds(band.lower, band.upper);
        bool const is_there = band.fault.empty();
        bool const is_hz = band.unit == BandUnit::Hz;
        auto const [lower, upper] = is_there && !is_hz ? bounds : none;
        auto const [lower_hz, upper_hz] = is_there && is_hz ? bounds : band.hz.value_or(none);
        std::wstring const unit = FromUtf8(UnitWord(band.unit));
        std::wstring const fault = FromUtf8(band.fault);
        m_table.Add(std::array<FieldValue, 13>{numbers[0], numbers[1], numbers[2], numbers[3], numbers[4],
                                               from, to, unit, lower, upper, lower_hz, upper_hz, fault});
    }

    RowTable& m_table;
    CQtParamInstance const& m_parameters;
    CQtSpecInterval m_calculation;
    DriveOptions m_options;
    std::map<int, int> m_modes; // by gear
};

} // namespace

RowColumns IntervalColumns() {
    using enum FieldType;
    return {{{"parameter", Int},
             {"mode", Int},
             {"interval", Int},
             {"rotor", Int},
             {"gear", Int},
             {"from", Text},
             {"to", Text},
             {"unit", Text},
             {"lower", Float},
             {"upper", Float},
             {"lower_hz", Float},
             {"upper_hz", Float},
             {"fault", Text}},
            3};
}

void CollectIntervals(RowTable& table, CQtParamInstance const& parameters, AnswerOptions const& options) {
    IntervalCollector collector(table, parameters, options);
    for (auto const& [parameter, modes] : CollectSpots(parameters))
        collector.Collect(parameter, modes);
    table.Sort();
}

} // namespace paramdb::tools
