#include "tools/kinds.h"

#include <paramdb/query/param_instance.h>

#include "tools/table_names.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace paramdb::tools {
namespace {

using Parameters = CQtParamInstance const&;
using ConstFields = CQParamTableRows::ConstFields;

constexpr Kind AllKinds[] = {
    {"mode", "Mode", [](Parameters all, int id) { return all.ModeName(id); },
     [](Parameters all, wchar_t const* name) { return all.ModeId(name); }},
    {"instrument", "Instrument", [](Parameters all, int id) { return all.InstrumentName(id); },
     [](Parameters all, wchar_t const* name) { return all.InstrumentId(name); }},
    {"channel", "Channel", [](Parameters all, int id) { return all.ChannelName(id); },
     [](Parameters all, wchar_t const* name) { return all.ChannelId(name); }},
    {"location", "Location", [](Parameters all, int id) { return all.LocationName(id); },
     [](Parameters all, wchar_t const* name) { return all.LocationId(name); }},
    {"parameter", "InstrumentParam", [](Parameters all, int id) { return all.InstrumentParamName(id); }},
    {"signal", "ApplicationSignal", [](Parameters all, int id) { return all.ApplicationSignalName(id); },
     [](Parameters all, wchar_t const* name) { return all.ApplicationSignalId(name); }},
    {"physmode", "PhysMode", [](Parameters all, int id) { return all.PhysModeName(id); },
     [](Parameters all, wchar_t const* name) { return all.PhysModeId(name); }},
    {"type", "AliasType", [](Parameters all, int id) { return all.TypeAliasName(id); },
     [](Parameters all, wchar_t const* name) { return all.TypeAliasId(name); }},
    {"bench", "AliasBench", [](Parameters all, int id) { return all.BenchAliasName(id); },
     [](Parameters all, wchar_t const* name) { return all.BenchAliasId(name); }},
    {"job", "ResamplingGroup", [](Parameters all, int id) { return all.ResamplingJobName(id); },
     [](Parameters all, wchar_t const* name) { return all.ResamplingJobId(name); }},
    {"set", "ProcessingUnit", [](Parameters all, int id) { return all.ResamplingSetName(id); },
     [](Parameters all, wchar_t const* name) { return all.ResamplingSetId(name); }},
    {"sensorgroup", "SensorGroup", [](Parameters all, int id) { return all.SensorGroupName(id); },
     [](Parameters all, wchar_t const* name) { return all.SensorGroupId(name); }},
    {"sensorconfig", "TpSensorConfig", [](Parameters all, int id) { return all.SensorConfigName().Name(id); },
     [](Parameters all, wchar_t const* name) { return all.SensorConfigName().Idx(name); }},
    {"trigger", "Trigger", [](Parameters all, int id) { return all.TriggerName(id); },
     [](Parameters all, wchar_t const* name) { return all.TriggerId(name); }},
    {"unit", "SignalUnit", [](Parameters all, int id) { return all.SignalUnit().Name(id); },
     [](Parameters all, wchar_t const* name) { return all.SignalUnit().Idx(name); }},
    {"measurement", "TEMeasurement", nullptr},
    {"polygon", "IpPolygon", nullptr},
    {"procedure", "LearnProcedures", nullptr},
    {"error", "ErrorCode", nullptr},
    {"errorgroup", "ErrorGroup", nullptr},
};

// The name in a row.
std::wstring_view NameIn(ConstFields row) {
    auto const text = std::find_if(row.begin(), row.end(),
                                   [](ConstField field) { return field.type() == FieldType::Text; });
    return text != row.end() ? text->As<CFixedText>().view() : std::wstring_view();
}

// The tables of the kinds, in the same order.
std::span<TableDescription const* const> Tables() {
    static auto const tables = [] {
        std::array<TableDescription const*, std::size(AllKinds)> found{};
        std::transform(std::begin(AllKinds), std::end(AllKinds), found.begin(),
                       [](Kind const& kind) { return FindTable(kind.table); });
        return found;
    }();
    return tables;
}

CQParamTableRows const& TableOf(Kind const& kind) {
    return *EntryOf(*Tables()[static_cast<std::size_t>(&kind - AllKinds)]).rows;
}

// A virtual mode gets its name from its base mode and its place in the grid.
bool IsVirtualModeId(Kind const& kind, Parameters parameters, int id) {
    return &kind == &AllKinds[Clavis::qMode] && parameters.IsVirtualMode(id) &&
           parameters.IsValidMode(parameters.VirtMode2BaseMode(id));
}

} // namespace

std::span<Kind const> Kinds() {
    return AllKinds;
}

Kind const* FindKind(std::string_view word) {
    for (Kind const& kind : AllKinds) {
        if (kind.word == word)
            return &kind;
    }
    return nullptr;
}

Kind const* KindOf(TableDescription const& table) {
    auto const found = std::find(Tables().begin(), Tables().end(), &table);
    return found != Tables().end() ? &AllKinds[found - Tables().begin()] : nullptr;
}

std::string KindList() {
    std::string list;
    for (Kind const& kind : AllKinds)
        list.append(list.empty() ? "" : ", ").append(kind.word);
    return list;
}

std::vector<NamedId> RowsOf(Kind const& kind) {
    std::vector<NamedId> rows;
    CQParamTableRows const& table = TableOf(kind);
    rows.reserve(table.RowCount());
    table.VisitRows([&rows](ConstFields key, ConstFields row) {
        rows.push_back({key[0].As<std::int32_t>(), std::wstring(NameIn(row))});
        return true;
    });
    return rows;
}

std::optional<std::wstring> NameOf(Kind const& kind, CQtParamInstance const& parameters, int id) {
    std::optional<std::wstring> name;
    TableOf(kind).VisitRows([&name, id](ConstFields key, ConstFields row) {
        if (key[0].As<std::int32_t>() == id)
            name = NameIn(row);
        return !name;
    });
    if ((name && kind.name != nullptr) || IsVirtualModeId(kind, parameters, id))
        name = kind.name(parameters, id);
    return name;
}

std::vector<int> IdsOf(Kind const& kind, CQtParamInstance const& parameters, std::wstring_view name) {
    std::vector<int> ids;
    TableOf(kind).VisitRows([&ids, name](ConstFields key, ConstFields row) {
        if (NameIn(row) == name)
            ids.push_back(key[0].As<std::int32_t>());
        return true;
    });
    if (ids.size() > 1 && kind.id != nullptr) {
        auto const first = std::find(ids.begin(), ids.end(), kind.id(parameters, std::wstring(name).c_str()));
        if (first != ids.end())
            std::rotate(ids.begin(), first, first + 1);
    }
    return ids;
}

} // namespace paramdb::tools
