#include "tools/rotor_listing.h"
#include "tools/short_number.h"

#include <nlohmann/json.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

std::string FractionText(numeric::CRatio const& fraction) {
    if (!fraction.is_exact())
        return "";
    std::string text = std::to_string(fraction.numerator());
    return text.append("/").append(std::to_string(fraction.denominator()));
}

char const* KindWord(SpeedSourceKind kind) {
    switch (kind) {
    case SpeedSourceKind::Source:
        return "source";
    case SpeedSourceKind::Reference:
        return "reference";
    case SpeedSourceKind::None:
        break;
    }
    return "";
}

void PrintRotorTable(std::ostream& out, std::vector<RotorEntry> const& rotors) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Right, Left, Left, Left, Left});
    table.Add({"Rotor", "Name", "Fraction", "Ratio", "Speed source", "Kind", "Signal"});
    for (RotorEntry const& entry : rotors)
        table.Add({std::to_string(entry.rotor.id), Printable(entry.rotor.name), FractionText(entry.fraction),
                   ShortNumber(entry.ratio), Shown(entry.speed_source), KindWord(entry.speed_source_kind),
                   Shown(entry.signal)});
    table.Print(out);
}

void PrintSourceTable(std::ostream& out, std::vector<RotorEntry> const& rotors) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Left, Right});
    table.Add({"Rotor", "Order source", "Gear", "Base order"});
    bool is_empty = true;
    for (RotorEntry const& entry : rotors) {
        std::string rotor = std::to_string(entry.rotor.id);
        for (OrderSourceEntry const& source : entry.order_sources) {
            table.Add({rotor, Shown(source.source),
                       source.gear.id == source.source.id ? "" : Shown(source.gear),
                       source.base_order ? ShortNumber(*source.base_order) : "none"});
            rotor.clear();
            is_empty = false;
        }
    }
    if (is_empty)
        return;
    out << '\n';
    table.Print(out);
}

void PrintText(std::ostream& out, std::vector<PhysicalModeRotors> const& list) {
    for (PhysicalModeRotors const& mode : list) {
        out << (&mode == list.data() ? "" : "\n") << "Physical mode " << Shown(mode.physical_mode) << "\n\n";
        PrintRotorTable(out, mode.rotors);
        PrintSourceTable(out, mode.rotors);
    }
}

Json JsonSources(std::vector<OrderSourceEntry> const& sources) {
    Json list = Json::array();
    for (OrderSourceEntry const& entry : sources)
        list.push_back({{"order_source", ToJson(entry.source)},
                        {"gear", ToJson(entry.gear)},
                        {"base_order", entry.base_order ? JsonNumber(*entry.base_order) : Json(nullptr)}});
    return list;
}

Json JsonRotor(RotorEntry const& entry) {
    bool const has_fraction = entry.fraction.is_exact();
    bool const has_source = entry.speed_source_kind != SpeedSourceKind::None;
    return {{"rotor", ToJson(entry.rotor)},
            {"numerator", has_fraction ? Json(entry.fraction.numerator()) : Json(nullptr)},
            {"denominator", has_fraction ? Json(entry.fraction.denominator()) : Json(nullptr)},
            {"ratio", JsonNumber(entry.ratio)},
            {"speed_source", ToJson(entry.speed_source)},
            {"speed_source_kind", has_source ? Json(KindWord(entry.speed_source_kind)) : Json(nullptr)},
            {"signal", ToJson(entry.signal)},
            {"order_sources", JsonSources(entry.order_sources)}};
}

} // namespace

void PrintRotors(std::ostream& out, std::vector<PhysicalModeRotors> const& list, ReportFormat format) {
    if (format == ReportFormat::Text) {
        PrintText(out, list);
        return;
    }
    Json document = Json::array();
    for (PhysicalModeRotors const& mode : list) {
        Json rotors = Json::array();
        for (RotorEntry const& entry : mode.rotors)
            rotors.push_back(JsonRotor(entry));
        document.push_back({{"physical_mode", ToJson(mode.physical_mode)}, {"rotors", std::move(rotors)}});
    }
    PrintJson(out, document);
}

} // namespace paramdb::tools
