#include "tools/interval_report.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/report.h"
#include "tools/short_number.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

bool HasLines(OrderMeaning const& meaning) {
    return std::any_of(meaning.positions.begin(), meaning.positions.end(),
                       [](OrderMeaning::Position const& position) { return position.lines() != 0; });
}

void AddPart(TextTable& table, char const* label, DrivePart const& part) {
    table.Add({label, part.id.id == -1 ? "none" : Shown(part.id), part.reason});
}

std::string JoinedPair(std::string left, std::string_view separator, std::string_view right) {
    return left.append(separator).append(right);
}

// Columns that no band has anything for are left out.
struct BandColumns {
    bool hz;
    bool lines;
    bool fault;

    explicit BandColumns(std::vector<IntervalBand> const& bands) {
        auto const any = [&bands](auto const& has) { return std::any_of(bands.begin(), bands.end(), has); };
        hz = any([](IntervalBand const& band) { return band.hz.has_value(); });
        lines = any([](IntervalBand const& band) { return band.lines.has_value(); });
        fault = any([](IntervalBand const& band) { return !band.fault.empty(); });
    }

    std::vector<TextTable::Align> Alignments() const {
        using enum TextTable::Align;
        std::vector<TextTable::Align> columns{Right, Left, Left, Left, Right, Right};
        columns.insert(columns.end(), hz ? 2 : 0, Right);
        columns.insert(columns.end(), lines ? 1 : 0, Right);
        columns.insert(columns.end(), fault ? 1 : 0, Left);
        return columns;
    }
    std::vector<std::string> Heads() const {
        std::vector<std::string> heads{"Interval", "From", "To", "Unit", "Lower", "Upper"};
        if (hz)
            heads.insert(heads.end(), {"Lower Hz", "Upper Hz"});
        if (lines)
            heads.emplace_back("Lines");
        if (fault)
            heads.emplace_back("Fault");
        return heads;
    }
    void AddCells(std::vector<std::string>& cells, IntervalBand const& band) const {
        bool const is_there = band.fault.empty();
        cells.push_back(is_there ? ShortNumber(band.lower) : "");
        cells.push_back(is_there ? ShortNumber(band.upper) : "");
        if (hz) {
            cells.push_back(band.hz ? ShortNumber(band.hz->first) : "");
            cells.push_back(band.hz ? ShortNumber(band.hz->second) : "");
        }
        if (lines)
            cells.push_back(band.lines ? JoinedPair(std::to_string(band.lines->first), " to ",
                                                    std::to_string(band.lines->second))
                                       : "");
        if (fault)
            cells.push_back(band.fault);
    }
};

Json JsonBand(IntervalBand const& band, OrderMeaning const& meaning, std::size_t place) {
    auto const& [lower, upper] = meaning.intervals[place];
    bool const is_there = band.fault.empty();
    return {{"from", SumText(meaning.positions[lower])},
            {"to", SumText(meaning.positions[upper])},
            {"unit", UnitWord(band.unit)},
            {"result", static_cast<int>(band.result)},
            {"fault", is_there ? Json(nullptr) : Json(band.fault)},
            {"lower", is_there ? JsonNumber(band.lower) : Json(nullptr)},
            {"upper", is_there ? JsonNumber(band.upper) : Json(nullptr)},
            {"lower_hz", band.hz ? JsonNumber(band.hz->first) : Json(nullptr)},
            {"upper_hz", band.hz ? JsonNumber(band.hz->second) : Json(nullptr)},
            {"first_line", band.lines ? Json(band.lines->first) : Json(nullptr)},
            {"last_line", band.lines ? Json(band.lines->second) : Json(nullptr)}};
}

} // namespace

std::string FractionText(numeric::CRatio const& ratio) {
    return ratio.is_exact()
               ? JoinedPair(std::to_string(ratio.numerator()), "/", std::to_string(ratio.denominator()))
               : "";
}

std::string RatioText(SpeedRatio const& ratio) {
    if (ratio.value == 0)
        return "none";
    std::string const value = ShortNumber(ratio.value);
    return ratio.fraction.is_exact() ? JoinedPair(FractionText(ratio.fraction), ", ", value) : value;
}

Json RatioJson(SpeedRatio const& ratio) {
    bool const is_exact = ratio.fraction.is_exact();
    return {{"numerator", is_exact ? Json(ratio.fraction.numerator()) : Json(nullptr)},
            {"denominator", is_exact ? Json(ratio.fraction.denominator()) : Json(nullptr)},
            {"value", JsonNumber(ratio.value)}};
}

bool IntervalReport::HasFault() const {
    return meaning.verdict != OrderVerdict::Good ||
           std::any_of(bands.begin(), bands.end(),
                       [](IntervalBand const& band) { return !band.fault.empty(); });
}

IntervalReport MakeIntervalReport(CQtParamInstance const& parameters, int parameter,
                                  std::wstring const& definition, Drive drive, DriveOptions const& options,
                                  unsigned int line_count) {
    int const mode = drive.mode.id.id;
    int const rotor = drive.rotor.id.id;
    int const gear = drive.gear.id.id;
    CQtSpecInterval calculation(parameters);
    calculation.LoadTransformParams(mode, rotor, gear);
    IntervalReport report{
        .parameter = NamedParameter(parameters, parameter),
        .definition = definition,
        .options = options,
        .line_count = line_count,
        .drive = std::move(drive),
        .base_order = calculation.BaseOrderValue(),
        .ratio = {parameters.RotorSpeedRatio(mode, rotor, gear), calculation.RatioAssembly2SpeedSrc()},
        .meaning = MeaningOf(definition),
        .bands = {}};
    numeric::CRatio& fraction = report.ratio.fraction;
    if (fraction.is_exact() && fraction.numerator() < 0)
        fraction = fraction / numeric::CRatio(-1, 1);
    report.bands = BandsOf(report.meaning, calculation, options, line_count);
    return report;
}

void PrintDrive(std::ostream& out, IntervalReport const& report, bool with_parameter) {
    // Long as they may be, these two do not move what stands beside the others.
    if (with_parameter && report.parameter.id != -1)
        out << "Parameter   " << Shown(report.parameter) << '\n';
    out << "Definition  " << Printable(report.definition) << '\n';
    using enum TextTable::Align;
    TextTable table({Left, Left, Left});
    AddPart(table, "Mode", report.drive.mode);
    AddPart(table, "Rotor", report.drive.rotor);
    AddPart(table, "Gear", report.drive.gear);
    table.Add({"Base order", report.base_order == 0 ? "none" : ShortNumber(report.base_order)});
    table.Add({"Ratio", RatioText(report.ratio),
               report.ratio.value == 0 ? "" : "turns of the gear for one of the rotor"});
    if (report.options.speed)
        table.Add({"Speed", ShortNumber(*report.options.speed) + " Hz",
                   ShortNumber(*report.options.speed * 60) + " turns of the rotor in a minute"});
    if (report.options.line_distance)
        table.Add({"Lines",
                   report.line_count == 0 ? "without end" : std::to_string(report.line_count) + " of them",
                   "each " + ShortNumber(*report.options.line_distance) + " from the one before"});
    table.Print(out);
}

void PrintBands(std::ostream& out, IntervalReport const& report) {
    OrderMeaning const& meaning = report.meaning;
    BandColumns const columns(report.bands);
    TextTable table(columns.Alignments());
    table.Add(columns.Heads());
    for (std::size_t place = 0; place < report.bands.size(); ++place) {
        auto const& [lower, upper] = meaning.intervals[place];
        IntervalBand const& band = report.bands[place];
        std::vector<std::string> cells{std::to_string(place + 1), SumText(meaning.positions[lower]),
                                       SumText(meaning.positions[upper]), UnitWord(band.unit)};
        columns.AddCells(cells, band);
        table.Add(std::move(cells));
    }
    table.Print(out);
    if (HasLines(meaning) && !report.options.line_distance)
        out << "Lines are left out: --line-distance tells how far apart they are.\n";
}

Json ToJson(DrivePart const& part) {
    if (part.id.id == -1)
        return nullptr;
    Json object = ToJson(part.id);
    object["reason"] = part.reason.empty() ? Json(nullptr) : Json(part.reason);
    return object;
}

Json ToJson(IntervalReport const& report) {
    auto const& [mode, rotor, gear] = report.drive;
    auto const& options = report.options;
    Json intervals = Json::array();
    for (std::size_t place = 0; place < report.bands.size(); ++place)
        intervals.push_back(JsonBand(report.bands[place], report.meaning, place));
    return {{"parameter", ToJson(report.parameter)},
            {"definition", ToUtf8(report.definition)},
            {"verdict", VerdictWord(report.meaning.verdict)},
            {"mode", ToJson(mode)},
            {"rotor", ToJson(rotor)},
            {"gear", ToJson(gear)},
            {"base_order", JsonNumber(report.base_order)},
            {"ratio", RatioJson(report.ratio)},
            {"speed", options.speed ? JsonNumber(*options.speed) : Json(nullptr)},
            {"line_distance", options.line_distance ? JsonNumber(*options.line_distance) : Json(nullptr)},
            {"line_count", report.line_count},
            {"intervals", std::move(intervals)}};
}

} // namespace paramdb::tools
