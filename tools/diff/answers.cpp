#include "tools/diff/answers.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/query/trigger_store.h>

#include "tools/diff/interval_answers.h"
#include "tools/short_number.h"
#include "tools/table_names.h"

#include <array>
#include <limits>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace paramdb::tools {
namespace {

using Parameters = CQtParamInstance const&;

constexpr int BitsOfState = 2;

// "signal 10: 0 to 6000 by 500, 4 bits, state", for each parameter of the grid.
std::wstring GridText(Parameters parameters) {
    std::string text;
    for (auto const& [key, params] : parameters.AutoModeParams()) {
        text += (text.empty() ? "signal " : "; signal ") + std::to_string(params.SignalId) + ": " +
                ShortNumber(params.Start) + " to " + ShortNumber(params.Stop) + " by " +
                ShortNumber(params.Step) + ", " + std::to_string(params.IntervalBits) + " bits";
        text += params.HasState ? ", state" : "";
    }
    return FromUtf8(text);
}

void CollectLayout(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    std::int32_t interval_bits = 0;
    std::int32_t state_bits = 0;
    for (auto const& [key, params] : parameters.AutoModeParams()) {
        interval_bits += params.IntervalBits;
        state_bits += params.HasState ? BitsOfState : 0;
    }
    std::wstring const grid = GridText(parameters);
    for (auto const& [mode, name] : parameters.Mode())
        if (!parameters.IsVirtualMode(mode[0]))
            table.Add(std::array<FieldValue, 4>{mode[0], interval_bits + state_bits, state_bits, grid});
}

// The ids in the columns of all tables that hold modes, if they are virtual.
std::set<int> VirtualModesOf(Parameters parameters) {
    std::set<int> modes;
    for (CatalogueEntry const& entry : parameters.Entries()) {
        auto const columns = RowColumnsOf(*entry.description);
        std::vector<std::size_t> places;
        for (std::size_t place = 0; place < columns.columns.size(); ++place)
            if (columns.columns[place].name == "mode" && columns.columns[place].type == FieldType::Int)
                places.push_back(place);
        if (places.empty())
            continue;
        int last = -1;
        entry.rows->VisitRows([&](auto key, auto row) {
            for (std::size_t const place : places) {
                int const id = (place < key.size() ? key[place] : row[place - key.size()]).template As<int>();
                if (id != last && parameters.IsVirtualMode(id))
                    modes.insert(id);
                last = id;
            }
            return true;
        });
    }
    return modes;
}

void CollectVirtualModes(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    for (int const mode : VirtualModesOf(parameters))
        table.Add(std::array<FieldValue, 4>{mode, parameters.VirtMode2BaseMode(mode),
                                            parameters.VirtModeExtension(mode), parameters.ModeName(mode)});
}

// Only channels that inherit somewhere; of any other the tables tell all.
void CollectChannels(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    std::set<int> channels;
    for (auto const& [key, row] : parameters.ChannelInheritance())
        channels.insert(key[0]);
    for (auto const& [mode, name] : parameters.Mode())
        for (int const channel : channels)
            if (parameters.ParentChannel(mode[0], channel) != -1)
                table.Add(std::array<FieldValue, 4>{mode[0], channel,
                                                    parameters.BaseChannel(mode[0], channel),
                                                    parameters.ChannelFlags(mode[0], channel)});
}

// By physical mode the first mode that has it; queries take that.
std::map<int, int> ModesByPhysicalMode(Parameters parameters) {
    std::map<int, int> modes;
    for (auto const& [mode, name] : parameters.Mode())
        if (int const physical_mode = parameters.PhysModeId(mode[0]); physical_mode != -1)
            modes.emplace(physical_mode, mode[0]);
    return modes;
}

void CollectRotors(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    auto const modes = ModesByPhysicalMode(parameters);
    for (auto const& [key, row] : parameters.RotorSpeed()) {
        auto const found = modes.find(key[0]);
        if (found == modes.end())
            continue;
        int const mode = found->second;
        int const rotor = key[1];
        int const source = parameters.RotorSpeedSource(mode, rotor, true);
        bool const is_reference = parameters.RotorSpeedSource(mode, rotor, false) == -1;
        auto const fraction = parameters.RotorSpeedRatio(mode, source, rotor);
        std::string text;
        if (fraction.is_exact() && source != -1)
            text = std::to_string(fraction.numerator()) + "/" + std::to_string(fraction.denominator());
        std::wstring const kind = source == -1 ? L"" : is_reference ? L"reference" : L"source";
        table.Add(std::array<FieldValue, 7>{
            key[0], rotor, parameters.RotorFrequencyRelativeToSpeedSourceRotor(mode, rotor, true),
            FromUtf8(text), source, kind, parameters.RotorSpeedSourceAppId(mode, rotor, true)});
    }
}

void CollectGears(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    std::set<std::pair<int, int>> gears; // physical mode and gear
    for (auto const& [key, row] : parameters.OrderSource2Rotor())
        gears.emplace(key[1], key[0]);
    for (auto const& [key, row] : parameters.Virtual2PhysGear())
        gears.emplace(key[0], key[1]);
    auto const modes = ModesByPhysicalMode(parameters);
    for (auto const& [physical_mode, gear] : gears) {
        auto const found = modes.find(physical_mode);
        if (found == modes.end())
            continue;
        int const mode = found->second;
        table.Add(
            std::array<FieldValue, 6>{physical_mode, gear, parameters.OrderSource2Rotor(mode, gear),
                                      parameters.PhysicalGear(mode, gear), parameters.BaseOrder(mode, gear),
                                      parameters.RotorFrequencyRelativeToSpeedSourceRotor(mode, gear, true)});
    }
}

void CollectTriggers(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    for (auto const& [key, row] : parameters.InstrumentParam())
        table.Add(std::array<FieldValue, 2>{key[0], parameters.TriggerId(key[0])});
}

void CollectFields(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    for (auto const& [key, row] : parameters.TriggerParam()) {
        CTriggerStore::CInterval const interval(row);
        table.Add(std::array<FieldValue, 8>{key[0], key[1], key[2], row.get<"kind">(), interval.start(),
                                            interval.stop(), interval.len(),
                                            std::wstring_view(interval.raising() ? L"raising" : L"falling")});
    }
}

// "1000, 68.5 | 2000, 70"
class PointsText {
public:
    void Add(float x, float y) {
        m_text.append(m_text.empty() ? "" : " | ").append(ShortNumber(x)).append(", ").append(ShortNumber(y));
    }
    std::wstring Take() { return FromUtf8(std::exchange(m_text, {})); }

private:
    std::string m_text;
};

void CollectPolygons(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    auto const& rows = parameters.IpPolygonValue();
    PointsText points;
    for (auto row = rows.begin(); row != rows.end(); ++row) {
        points.Add(row->first.position(), row->second.get<"y">());
        auto const next = std::next(row);
        if (next == rows.end() || next->first.number() != row->first.number())
            table.Add(std::array<FieldValue, 2>{row->first.number(), points.Take()});
    }
}

// The number of a polygon that a two-point definition made depends on all others, so its points stand here.
void CollectExpansions(RowTable& table, Parameters parameters, AnswerOptions const& /*options*/) {
    auto const& in_table = parameters.IpPolygonValue();
    std::int64_t const last = in_table.empty() ? -1 : in_table.rbegin()->first.number();
    for (auto const& [key, entry] : parameters.GroupInfo().Entries()) {
        std::vector<CGrexInfo::group_element> made;
        if (entry.group > last)
            made = parameters.GroupInfo().Group(entry.group);
        PointsText points;
        for (auto const& point : made)
            points.Add(point.x, point.y);
        table.Add(std::array<FieldValue, 10>{key[0], key[1], key[2], key[3], key[4], key[5],
                                             entry.area_interpretation, entry.source_parameter,
                                             made.empty() ? entry.group : -1, points.Take()});
    }
}

using Collector = void (*)(RowTable& table, Parameters parameters, AnswerOptions const& options);

struct Topic {
    AnswerTopic topic;
    Collector collect;
};

std::vector<Topic> MakeTopics() {
    using enum FieldType;
    CountPhrase const none;
    return {
        {{"mode_layout",
          "Layout of virtual modes",
          {{{"mode", Int}, {"extension_bits", Int}, {"state_bits", Int}, {"grid", Text}}, 1},
          {"mode changes its virtual layout", "modes change their virtual layout"},
          none,
          none},
         CollectLayout},
        {{"virtual_modes",
          "Virtual modes in the tables",
          {{{"mode", Int}, {"base_mode", Int}, {"extension", Int}, {"name", Text}}, 1},
          {"virtual mode becomes another one", "virtual modes become other ones"},
          {"id becomes a virtual mode", "ids become virtual modes"},
          {"id is no virtual mode any more", "ids are no virtual modes any more"}},
         CollectVirtualModes},
        {{"channels",
          "Inherited channels",
          {{{"mode", Int}, {"channel", Int}, {"base_channel", Int}, {"flags", Int}}, 2},
          {"channel inherits otherwise", "channels inherit otherwise"},
          {"channel inherits now", "channels inherit now"},
          {"channel inherits no more", "channels inherit no more"}},
         CollectChannels},
        {{"rotors",
          "Rotors",
          {{{"physical_mode", Int},
            {"rotor", Int},
            {"ratio", Double},
            {"fraction", Text},
            {"speed_source", Int},
            {"kind", Text},
            {"signal", Int}},
           2},
          {"rotor changes its ratio or speed source", "rotors change their ratio or speed source"},
          none,
          none},
         CollectRotors},
        {{"gears",
          "Gears and order sources",
          {{{"physical_mode", Int},
            {"gear", Int},
            {"rotor", Int},
            {"physical_gear", Int},
            {"base_order", Float},
            {"ratio", Double}},
           2},
          {"gear changes its orders", "gears change their orders"},
          none,
          none},
         CollectGears},
        {{"intervals",
          "Spectral intervals",
          IntervalColumns(),
          {"spectral interval moves", "spectral intervals move"},
          {"spectral interval is new", "spectral intervals are new"},
          {"spectral interval is gone", "spectral intervals are gone"}},
         CollectIntervals},
        {{"triggers",
          "Triggers of parameters",
          {{{"parameter", Int}, {"trigger", Int}}, 1},
          {"parameter takes another trigger", "parameters take another trigger"},
          none,
          none},
         CollectTriggers},
        {{"trigger_fields",
          "Fields of triggers",
          {{{"mode", Int},
            {"trigger", Int},
            {"dimension", Int},
            {"kind", Int},
            {"start", Float},
            {"stop", Float},
            {"cells", Unsigned},
            {"direction", Text}},
           3},
          {"trigger field moves", "trigger fields move"},
          none,
          none},
         CollectFields},
        {{"polygons",
          "Polygons",
          {{{"polygon", Int}, {"points", Text}}, 1},
          {"polygon moves", "polygons move"},
          none,
          none},
         CollectPolygons},
        {{"expansions",
          "Keys that polygons judge",
          {{{"mode", Int},
            {"instrument", Int},
            {"channel", Int},
            {"location", Int},
            {"parameter", Int},
            {"signal", Int},
            {"area_interpretation", Int},
            {"source_parameter", Int},
            {"polygon", Int},
            {"points", Text}},
           6},
          {"key is judged otherwise", "keys are judged otherwise"},
          {"key gains an expansion", "keys gain an expansion"},
          {"key loses its expansion", "keys lose their expansion"}},
         CollectExpansions},
    };
}

std::vector<Topic> const& Topics() {
    static auto const topics = MakeTopics();
    return topics;
}

} // namespace

std::span<AnswerTopic const> AnswerTopics() {
    static auto const topics = [] {
        std::vector<AnswerTopic> result;
        for (Topic const& topic : Topics())
            result.push_back(topic.topic);
        return result;
    }();
    return topics;
}

std::vector<RowTable> CollectAnswers(CQtParamInstance const& parameters, AnswerOptions const& options) {
    std::vector<RowTable> answers;
    for (Topic const& topic : Topics()) {
        RowTable& table = answers.emplace_back(topic.topic.columns);
        topic.collect(table, parameters, options);
        table.Sort();
    }
    return answers;
}

} // namespace paramdb::tools
