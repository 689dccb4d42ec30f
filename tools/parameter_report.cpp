#include "tools/parameter_report.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/report.h"
#include "tools/short_number.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>
#include <stdexcept>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

// The lines of a text, empty ones left out.
std::vector<std::wstring> LinesOf(std::wstring_view text) {
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        std::wstring_view const line = text.substr(0, text.find(L'\n'));
        if (!line.empty())
            lines.emplace_back(line);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}

void TakeSettings(CQtParamInstance& parameters, ParameterReport& report) {
    try {
        report.settings = LinesOf(parameters.IpDisplayText(report.parameter.id, L"", L"\n").GetString());
    } catch (std::out_of_range const& fault) { // a host would meet it, too
        report.settings_fault = fault.what();
    }
}

RotorLink LinkOf(CQtParamInstance const& parameters, int mode, int rotor) {
    int const source = parameters.RotorSpeedSource(mode, rotor, true);
    return {.rotor = Named(parameters.Location(), rotor),
            .speed_source = Named(parameters.Location(), source),
            .is_reference = parameters.RotorSpeedSource(mode, rotor, false) == -1,
            .signal =
                Named(parameters.ApplicationSignal(), parameters.RotorSpeedSourceAppId(mode, rotor, true)),
            .ratio = {parameters.RotorSpeedRatio(mode, source, rotor),
                      parameters.RotorFrequencyRelativeToSpeedSourceRotor(mode, rotor, true)}};
}

void TakeRotors(CQtParamInstance const& parameters, Drive const& drive, ParameterReport& report) {
    int const mode = drive.mode.id.id;
    int const of_gear = RotorOfGear(parameters, mode, drive.gear.id.id);
    if (of_gear != -1)
        report.rotors.push_back(LinkOf(parameters, mode, of_gear));
    int const counted = drive.rotor.id.id;
    if (counted != -1 && counted != of_gear)
        report.rotors.push_back(LinkOf(parameters, mode, counted));
}

void PrintHead(std::ostream& out, ParameterReport const& report) {
    using enum TextTable::Align;
    TextTable table({Left, Left});
    table.Add({"Parameter", Shown(report.parameter)});
    table.Add({"Instrument", Shown(report.instrument)});
    table.Add({"Yields", ResultTypeText(report.result_type)});
    if (!report.settings_fault.empty())
        table.Add({"Settings", "cannot be shown: " + report.settings_fault});
    else if (report.settings.empty())
        table.Add({"Settings", "none that are shown"});
    table.Print(out);
    if (!report.settings.empty())
        out << "\nSettings\n";
    for (std::wstring const& line : report.settings)
        out << "  " << Printable(line) << '\n';
}

void PrintTrigger(std::ostream& out, ParameterReport const& report) {
    if (report.trigger.id == -1)
        return;
    out << "\nTrigger " << Shown(report.trigger);
    if (!report.dimensions.empty()) {
        out << "\n\n";
        PrintDimensions(out, {{.mode = report.mode.id,
                               .varying = {},
                               .dimensions = report.dimensions,
                               .cell_number = {},
                               .places = {}}});
    } else if (report.mode.id.id != -1) {
        out << " has no dimensions in mode " << Shown(report.mode.id) << '\n';
    } else {
        out << " has no dimensions\n";
    }
}

void PrintIntervals(std::ostream& out, ParameterReport const& report) {
    if (!report.intervals)
        return;
    out << '\n';
    PrintDrive(out, *report.intervals, false);
    OrderVerdict const verdict = report.intervals->meaning.verdict;
    if (verdict != OrderVerdict::Good) {
        out << "\nNo intervals: the definition is " << VerdictWord(verdict)
            << "; `paramdb order` explains it\n";
        return;
    }
    out << '\n';
    PrintBands(out, *report.intervals);
}

void PrintRotors(std::ostream& out, std::vector<RotorLink> const& rotors) {
    if (rotors.empty())
        return;
    using enum TextTable::Align;
    TextTable table({Left, Left, Left, Left, Right, Left});
    table.Add({"Rotor", "Speed source", "Kind", "Signal", "Fraction", "Ratio"});
    for (RotorLink const& link : rotors) {
        bool const has_source = link.speed_source.id != -1;
        table.Add({Shown(link.rotor), has_source ? Shown(link.speed_source) : "none",
                   !has_source         ? ""
                   : link.is_reference ? "reference"
                                       : "source",
                   Shown(link.signal), FractionText(link.ratio.fraction),
                   link.ratio.value == 0 ? "none" : ShortNumber(link.ratio.value)});
    }
    out << '\n';
    table.Print(out);
}

void PrintPolygonTable(std::ostream& out, std::vector<JudgingPolygon> const& polygons) {
    if (polygons.empty())
        return;
    using enum TextTable::Align;
    TextTable table({Left, Left, Left, Right, Left});
    table.Add({"Polygon", "Judge", "Source parameter", "Keys"});
    for (JudgingPolygon const& polygon : polygons)
        table.Add({Shown(polygon.polygon), Shown(polygon.judge), Shown(polygon.source),
                   polygon.keys == 0 ? "" : Grouped(polygon.keys),
                   polygon.is_missing ? "has no points" : ""});
    out << '\n';
    table.Print(out);
}

Json JsonRotors(std::vector<RotorLink> const& rotors) {
    Json list = Json::array();
    for (RotorLink const& link : rotors) {
        Json kind;
        if (link.speed_source.id != -1)
            kind = link.is_reference ? "reference" : "source";
        list.push_back({{"rotor", ToJson(link.rotor)},
                        {"speed_source", ToJson(link.speed_source)},
                        {"kind", std::move(kind)},
                        {"signal", ToJson(link.signal)},
                        {"ratio", RatioJson(link.ratio)}});
    }
    return list;
}

template <class Element>
Json JsonList(std::vector<Element> const& elements) {
    Json list = Json::array();
    for (Element const& element : elements)
        list.push_back(ToJson(element));
    return list;
}

void PrintDocument(std::ostream& out, ParameterReport const& report) {
    Json settings = Json::array();
    for (std::wstring const& line : report.settings)
        settings.push_back(ToUtf8(line));
    PrintJson(out, Json{{"parameter", ToJson(report.parameter)},
                        {"instrument", ToJson(report.instrument)},
                        {"result_type", report.result_type},
                        {"yields", ResultTypeText(report.result_type)},
                        {"settings", report.settings_fault.empty() ? settings : Json(nullptr)},
                        {"mode", ToJson(report.mode)},
                        {"trigger", ToJson(report.trigger)},
                        {"dimensions", JsonList(report.dimensions)},
                        {"intervals", report.intervals ? ToJson(*report.intervals) : Json(nullptr)},
                        {"rotors", JsonRotors(report.rotors)},
                        {"polygons", JsonList(report.polygons)}});
}

} // namespace

char const* ResultTypeText(int result_type) {
    switch (result_type) {
    case -1:
        return "nothing";
    case 1:
        return "a single value";
    case 2:
        return "a track";
    case 3:
        return "a spectrum";
    case 4:
        return "data of its own kind";
    case 5:
        return "a track of the second kind";
    case 6:
        return "data in two dimensions";
    default:
        return "not known, the number is no instrument's";
    }
}

ParameterReport ExplainParameter(CQtParamInstance parameters, int parameter, DriveOptions const& options) {
    int const instrument = parameters.InstrumentParameterToInstrument(parameter);
    int const trigger = parameters.TriggerId(parameter);
    ParameterReport report{.parameter = NamedParameter(parameters, parameter),
                           .instrument = Named(parameters.Instrument(), instrument),
                           .result_type = CQtParamInstance::ResultType(instrument),
                           .settings = {},
                           .settings_fault = {},
                           .mode = {},
                           .trigger = {trigger, trigger == -1 ? L"" : parameters.TriggerName(trigger)},
                           .dimensions = {},
                           .intervals = {},
                           .rotors = {},
                           .polygons = JudgingPolygons(parameters, parameter)};
    TakeSettings(parameters, report);

    Drive drive = ChooseDrive(
        parameters, options,
        {.parameter = parameter, .gear = BaseOrderReference(parameters, parameter), .trigger = trigger});
    report.mode = drive.mode;
    if (trigger != -1 && drive.mode.id.id != -1)
        for (TriggerInMode& entry : CollectTrigger(parameters, trigger, drive.mode.id.id, {}))
            report.dimensions = std::move(entry.dimensions);
    TakeRotors(parameters, drive, report);
    wchar_t const* const definition = parameters.SpecIntervalDefinition(static_cast<unsigned int>(parameter));
    if (definition != nullptr)
        report.intervals =
            MakeIntervalReport(parameters, parameter, definition, std::move(drive), options, 0);
    return report;
}

void PrintParameter(std::ostream& out, ParameterReport const& report, ReportFormat format) {
    if (format == ReportFormat::Json) {
        PrintDocument(out, report);
        return;
    }
    PrintHead(out, report);
    PrintTrigger(out, report);
    PrintIntervals(out, report);
    PrintRotors(out, report.rotors);
    PrintPolygonTable(out, report.polygons);
}

} // namespace paramdb::tools
