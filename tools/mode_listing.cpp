#include "tools/mode_listing.h"

#include <paramdb/query/param_instance.h>

#include "tools/named_id.h"
#include "tools/short_number.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <nlohmann/json.hpp>
#include <optional>
#include <ostream>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

constexpr int IdBits = 31;
constexpr int BitsOfState = 2;

struct ModeEntry {
    NamedId mode;
    NamedId physical_mode;
    std::optional<std::uint32_t> flags;
    bool is_hidden;
    bool is_virtual;
};

struct GridEntry {
    int key;
    NamedId signal;
    CVAutoModeParams params;
    int intervals;

    // An interval field holds the index plus 1.
    bool Fits() const {
        return intervals < 0 || params.IntervalBits >= IdBits || intervals < (1 << params.IntervalBits);
    }
};

struct Layout {
    int extension_bits = 0;
    int state_bits = 0;
    unsigned int mask = 0;
    int base_bits_used = 0;
    int largest_mode = 0;
    std::vector<GridEntry> grid;

    int BaseBits() const { return IdBits - extension_bits; }
    int BaseBitsLeft() const { return BaseBits() - base_bits_used; }
};

std::vector<ModeEntry> ModesOf(CQtParamInstance const& parameters) {
    std::vector<ModeEntry> modes;
    auto const& properties = parameters.ModeProperty();
    for (auto const& [key, name] : parameters.Mode()) {
        int const id = key[0];
        auto const row = properties.find(id);
        modes.push_back({.mode = {id, name.name().c_str()},
                         .physical_mode = Named(parameters.PhysMode(), parameters.PhysModeId(id)),
                         .flags = {},
                         .is_hidden = parameters.ModeIsHidden(id),
                         .is_virtual = parameters.IsVirtualMode(id)});
        if (row != properties.end())
            modes.back().flags = row->second.get<"flags">();
    }
    return modes;
}

// The bits that a reduction to the base mode clears. -1 is no mode, so they are seen in two parts.
unsigned int ExtensionMask(CQtParamInstance const& parameters) {
    constexpr int low = std::numeric_limits<int>::max();
    constexpr int high = -2;
    return static_cast<unsigned int>((low ^ parameters.VirtMode2BaseMode(low)) |
                                     (high ^ parameters.VirtMode2BaseMode(high)));
}

Layout LayoutOf(CQtParamInstance const& parameters) {
    Layout layout;
    for (auto const& [key, params] : parameters.AutoModeParams()) {
        layout.grid.push_back({key, Named(parameters.ApplicationSignal(), params.SignalId), params,
                               parameters.VirtModeIntervals(params)});
        layout.extension_bits += params.IntervalBits;
        layout.state_bits += params.HasState ? BitsOfState : 0;
    }
    layout.extension_bits += layout.state_bits;
    layout.mask = ExtensionMask(parameters);
    if (!parameters.Mode().empty())
        layout.largest_mode = std::max(0, parameters.Mode().rbegin()->first[0]);
    layout.base_bits_used = static_cast<int>(std::bit_width(static_cast<unsigned int>(layout.largest_mode)));
    return layout;
}

std::string Hexadecimal(unsigned int number) {
    std::string text = "0x";
    for (int shift = 28; shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[number >> shift & 15];
    return text;
}

void PrintModes(std::ostream& out, std::vector<ModeEntry> const& modes) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Left, Right, Left});
    table.Add({"Mode", "Name", "Physical mode", "Flags", ""});
    for (ModeEntry const& entry : modes) {
        std::string remark = entry.is_hidden ? "hidden" : "";
        if (entry.is_virtual)
            remark += entry.is_hidden ? ", virtual" : "virtual";
        table.Add({std::to_string(entry.mode.id), Printable(entry.mode.name), Shown(entry.physical_mode),
                   entry.flags ? std::to_string(*entry.flags) : "", remark});
    }
    table.Print(out);
}

void PrintBits(std::ostream& out, Layout const& layout) {
    using enum TextTable::Align;
    TextTable table({Left, Right, Left});
    table.Add({"Extension bits", std::to_string(layout.extension_bits),
               std::to_string(layout.state_bits) + " of them for states"});
    table.Add({"Base mode bits", std::to_string(layout.BaseBits()),
               std::to_string(layout.base_bits_used) + " used by ids up to " +
                   std::to_string(layout.largest_mode) + ", " + std::to_string(layout.BaseBitsLeft()) +
                   " left"});
    table.Print(out);
    out << "Extension mask  " << Hexadecimal(layout.mask) << '\n';
}

void PrintGrid(std::ostream& out, std::vector<GridEntry> const& grid) {
    using enum TextTable::Align;
    TextTable table({Right, Left, Right, Right, Right, Right, Right, Left, Left});
    table.Add({"Key", "Signal", "Start", "Stop", "Step", "Intervals", "Bits", "State", ""});
    for (GridEntry const& entry : grid) {
        CVAutoModeParams const& params = entry.params;
        table.Add({std::to_string(entry.key), Shown(entry.signal), ShortNumber(params.Start),
                   ShortNumber(params.Stop), ShortNumber(params.Step),
                   entry.intervals < 0 ? "none" : std::to_string(entry.intervals),
                   std::to_string(params.IntervalBits), params.HasState ? "yes" : "no",
                   entry.Fits() ? "" : "no room for the last interval"});
    }
    table.Print(out);
}

Json JsonModes(std::vector<ModeEntry> const& modes) {
    Json list = Json::array();
    for (ModeEntry const& entry : modes)
        list.push_back({{"id", entry.mode.id},
                        {"name", JsonText(entry.mode.name)},
                        {"physical_mode", ToJson(entry.physical_mode)},
                        {"flags", entry.flags ? Json(*entry.flags) : Json(nullptr)},
                        {"hidden", entry.is_hidden},
                        {"virtual", entry.is_virtual}});
    return list;
}

Json JsonLayout(Layout const& layout) {
    Json grid = Json::array();
    for (GridEntry const& entry : layout.grid)
        grid.push_back({{"key", entry.key},
                        {"signal", ToJson(entry.signal)},
                        {"start", JsonNumber(entry.params.Start)},
                        {"stop", JsonNumber(entry.params.Stop)},
                        {"step", JsonNumber(entry.params.Step)},
                        {"intervals", entry.intervals < 0 ? Json(nullptr) : Json(entry.intervals)},
                        {"interval_bits", entry.params.IntervalBits},
                        {"state", entry.params.HasState},
                        {"fits", entry.Fits()}});
    Json const base_bits = {
        {"all", layout.BaseBits()}, {"used", layout.base_bits_used}, {"left", layout.BaseBitsLeft()}};
    return {{"extension_bits", layout.extension_bits},
            {"state_bits", layout.state_bits},
            {"mask", layout.mask},
            {"base_bits", base_bits},
            {"parameters", std::move(grid)}};
}

} // namespace

void PrintModeListing(std::ostream& out, CQtParamInstance const& parameters, ReportFormat format) {
    auto const modes = ModesOf(parameters);
    Layout const layout = LayoutOf(parameters);
    if (format == ReportFormat::Json) {
        PrintJson(out, Json{{"modes", JsonModes(modes)}, {"layout", JsonLayout(layout)}});
        return;
    }
    PrintModes(out, modes);
    out << "\nVirtual modes\n";
    PrintBits(out, layout);
    if (layout.grid.empty())
        return;
    out << '\n';
    PrintGrid(out, layout.grid);
}

} // namespace paramdb::tools
