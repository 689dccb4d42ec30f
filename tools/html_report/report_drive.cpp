// The parts of a report that have to do with speeds: rotors and order definitions.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/drive_choice.h"
#include "tools/html_report/report_parts.h"
#include "tools/interval_report.h"
#include "tools/order_meaning.h"
#include "tools/rotor_listing.h"
#include "tools/short_number.h"

#include <cmath>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

int ReferenceRotor(PhysicalModeRotors const& mode) {
    auto const first = [&mode](auto const& fits) {
        for (RotorEntry const& entry : mode.rotors)
            if (std::isfinite(entry.ratio) && entry.ratio != 0 && fits(entry))
                return entry.rotor.id;
        return -1;
    };
    int rotor = first([](RotorEntry const& entry) {
        return entry.speed_source_kind == SpeedSourceKind::Source && entry.speed_source.id == entry.rotor.id;
    });
    if (rotor == -1)
        rotor = first([](RotorEntry const& entry) { return entry.ratio == 1; });
    if (rotor == -1)
        rotor = first([](RotorEntry const&) { return true; });
    return rotor;
}

// Physical mode to reference rotor, parameter to the first mode of each physical mode in which it is
// measured, and to all its spots; looked up for every definition.
struct Places {
    MeasuredSpots spots;
    std::map<int, int> references;
    std::map<int, std::map<int, int>> modes;
};

Places FindPlaces(CQtParamInstance const& parameters) {
    Places places{MeasuredSpots(parameters), {}, {}};
    for (PhysicalModeRotors const& mode : CollectRotors(parameters, std::nullopt))
        places.references[mode.physical_mode.id] = ReferenceRotor(mode);
    int last_mode = -1;
    int physical_mode = -1;
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        if (int const mode = key[Clavis::qMode]; mode != last_mode) {
            last_mode = mode;
            physical_mode = parameters.PhysModeId(mode);
        }
        if (physical_mode != -1)
            places.modes[key[Clavis::qInstrParam]].try_emplace(physical_mode,
                                                               parameters.VirtMode2BaseMode(last_mode));
    }
    return places;
}

// A definition with its drives.
class Definition {
public:
    Definition(CQtParamInstance const& parameters, Places const& places, int parameter,
               std::wstring const& definition)
        : m_parameters(parameters), m_places(places), m_parameter(parameter), m_text(definition),
          m_meaning(MeaningOf(definition)), m_question{.parameter = parameter,
                                                       .gear = BaseOrderReference(parameters, parameter),
                                                       .trigger = parameters.TriggerId(parameter)} {}

    Json ToJson() const {
        int const instrument = m_parameters.InstrumentParameterToInstrument(m_parameter);
        Json fault;
        if (m_meaning.text.fault)
            fault = {{"place", m_meaning.text.fault->place}, {"reason", m_meaning.text.fault->reason}};
        return {{"parameter", tools::ToJson(NamedParameter(m_parameters, m_parameter))},
                {"instrument", tools::ToJson(Named(m_parameters.Instrument(), instrument))},
                {"definition", ToUtf8(m_text)},
                {"verdict", VerdictWord(m_meaning.verdict)},
                {"fault", std::move(fault)},
                {"intervals", IntervalsJson()},
                {"drives", DrivesJson()}};
    }

private:
    static Json PositionJson(OrderMeaning::Position const& position) {
        return {{"text", SumText(position)},
                {"frequency", JsonNumber(position.frequency())},
                {"order", JsonNumber(position.order())},
                {"harmonic", JsonNumber(position.harmonic())},
                {"modulation", JsonNumber(position.modulation())},
                {"lines", position.lines()},
                {"domain", position.domain()}};
    }

    Json IntervalsJson() const {
        Json list = Json::array();
        for (auto const& [lower, upper] : m_meaning.intervals)
            list.push_back({{"lower", PositionJson(m_meaning.positions[lower])},
                            {"upper", PositionJson(m_meaning.positions[upper])}});
        return list;
    }

    Json DrivesJson() const {
        Drive const chosen = ChooseDrive(m_parameters, m_places.spots, {}, m_question);
        int const physical_mode = m_parameters.PhysModeId(chosen.mode.id.id);
        Json list = Json::array({DriveJson(chosen, physical_mode)});
        auto const modes = m_places.modes.find(m_parameter);
        if (modes == m_places.modes.end())
            return list;
        for (auto const& [other, mode] : modes->second)
            if (other != physical_mode)
                list.push_back(
                    DriveJson(ChooseDrive(m_parameters, m_places.spots, {.mode = mode}, m_question), other));
        return list;
    }

    Json DriveJson(Drive const& drive, int physical_mode) const {
        IntervalReport const report = MakeIntervalReport(m_parameters, m_parameter, m_text, drive, {}, 0);
        auto const reference = m_places.references.find(physical_mode);
        int const counted = reference != m_places.references.end() ? reference->second : -1;
        double const turns =
            m_parameters.FrequencyRatioToGeneratingRotor(drive.mode.id.id, counted, drive.rotor.id.id);
        return {{"mode", tools::ToJson(drive.mode.id)},
                {"physical_mode", tools::ToJson(Named(m_parameters.PhysMode(), physical_mode))},
                {"rotor", tools::ToJson(drive.rotor.id)},
                {"gear", tools::ToJson(drive.gear.id)},
                {"base_order", JsonNumber(report.base_order)},
                {"ratio", RatioJson(report.ratio)},
                {"turns", JsonNumber(std::fabs(turns))}};
    }

    CQtParamInstance const& m_parameters;
    Places const& m_places;
    int m_parameter;
    std::wstring m_text;
    OrderMeaning m_meaning;
    DriveQuestion m_question;
};

} // namespace

Json RotorsPart(CQtParamInstance const& parameters) {
    auto const list = CollectRotors(parameters, std::nullopt);
    std::ostringstream listing;
    PrintRotors(listing, list, ReportFormat::Json);
    Json document = Json::parse(listing.str());
    for (std::size_t mode = 0; mode < list.size(); ++mode)
        document[mode]["reference"] = ToJson(Named(parameters.Location(), ReferenceRotor(list[mode])));
    return document;
}

Json ResultTexts() {
    Json texts = Json::object();
    for (auto const result : {CQtSpecInterval::range_no_base_order, CQtSpecInterval::range_no_assembly_ratio,
                              CQtSpecInterval::range_no_ratio_for_mixed, CQtSpecInterval::range_negative})
        texts[std::to_string(result)] = ResultText(result);
    return texts;
}

Json OrdersPart(CQtParamInstance const& parameters) {
    Places const places = FindPlaces(parameters);
    // A parameter has the definition that SpecIntervalDefinition finds, so each stands here once.
    std::set<int> ids;
    for (int const instrument : {1001, 2001})
        for (auto const& [key, row] : parameters.IpSvOfSpec().at(instrument))
            ids.insert(key[0]);
    Json list = Json::array();
    for (int const id : ids)
        if (wchar_t const* const text = parameters.SpecIntervalDefinition(static_cast<unsigned int>(id)))
            list.push_back(Definition(parameters, places, id, text).ToJson());
    return list;
}

} // namespace paramdb::tools
