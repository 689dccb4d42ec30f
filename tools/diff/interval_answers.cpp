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
#include <set>
#include <span>
#include <utility>
#include <vector>

namespace paramdb::tools {
namespace {

// By base mode; the spots of each in the order of keys.
using SpotsOfModes = std::map<int, std::vector<Spot>>;

SpotsOfModes ByModes(std::span<Spot const> spots) {
    SpotsOfModes modes;
    for (Spot const& spot : spots) {
        auto& list = modes[spot.mode];
        if (list.empty() || list.back() != spot)
            list.push_back(spot);
    }
    return modes;
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
            return GearTurns(m_parameters, mode.first[0], gear);
        });
        auto const chosen = found != modes.end() ? found : modes.begin();
        return chosen != modes.end() ? chosen->first[0] : -1;
    }

    // The rotor of the first spot that has one, else the speed source of the gear; -1 for none.
    int RotorOf(int mode, std::vector<Spot> const& spots, int gear) const {
        for (Spot const& spot : spots)
            if (int const rotor = RotorOfSpot(m_parameters, spot); rotor != -1)
                return rotor;
        return SpeedSourceOfGear(m_parameters, mode, gear);
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
    std::set<int> with_definition;
    for (int const instrument : {1001, 2001})
        for (auto const& [key, row] : parameters.IpSvOfSpec().at(instrument))
            with_definition.insert(key[0]);
    MeasuredSpots const spots(parameters);
    for (int const parameter : with_definition)
        collector.Collect(parameter, ByModes(spots.Of(parameter)));
    table.Sort();
}

} // namespace paramdb::tools
