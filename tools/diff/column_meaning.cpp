#include "tools/diff/column_meaning.h"

#include <paramdb/tables/calc_parameter.h>

#include <algorithm>
#include <iterator>
#include <list>

namespace paramdb::tools {
namespace {

// A column with ids. Without a tag it is in all tables that no line above names.
struct IdColumn {
    std::string_view name;
    std::string_view kind;
    std::wstring_view tag = {};
};

constexpr IdColumn IdColumns[] = {
    {"referred_id", "signal", L"<TSpeedSource>"},
    {"referred_id", "location", L"<TRotorSpeedSource>"},
    {"referred_id", "location", L"<TRotorSpeedReference>"},
    {"referred_id", "type", L"<TRetype>"},
    {"group", "sensorgroup", L"<TSensorGroup>"},
    {"group", "sensorgroup", L"<TSensorGroupList>"},
    {"group", "errorgroup", L"<TErrorGroup>"},
    {"base_mode", "mode"},
    {"base_channel", "channel"},
    {"base_order_reference", "location"},
    {"bench", "bench"},
    {"channel", "channel"},
    {"code", "error"},
    {"configuration", "sensorconfig"},
    {"gear", "location"},
    {"instrument", "instrument"},
    {"job", "job"},
    {"learn_procedure_a", "procedure"},
    {"learn_procedure_b", "procedure"},
    {"location", "location"},
    {"measurement", "measurement"},
    {"mode", "mode"},
    {"order_source", "location"},
    {"parameter", "parameter"},
    {"parent_channel", "channel"},
    {"physical_gear", "location"},
    {"physical_mode", "physmode"},
    {"polygon", "polygon"},
    {"procedure", "procedure"},
    {"rotor", "location"},
    {"second_polygon", "polygon"},
    {"second_source_instrument", "instrument"},
    {"second_source_parameter", "parameter"},
    {"set", "set"},
    {"signal", "signal"},
    {"source_instrument", "instrument"},
    {"source_location", "location"},
    {"source_parameter", "parameter"},
    {"speed_source", "location"},
    {"trigger", "trigger"},
    {"type", "type"},
    {"unit", "unit"},
};

struct SettingColumn {
    std::string_view name;
    int setting;
    std::wstring_view tag = {};
};

constexpr SettingColumn SettingColumns[] = {
    {"calculation", 47, L"<TIpSignalGuard>"},
    {"area_interpretation", 9},
    {"binary_operation_mode", 27},
    {"calculation", 0},
    {"calculation_special", 33},
    {"interpretation", 2},
    {"polygon_mode", 42},
    {"shifting_evaluation", 34},
};

// The line of a list that holds for a column; null for none.
template <class List>
auto Line(List const& list, std::wstring_view tag, ColumnDescription const& column) {
    auto const line = std::find_if(std::begin(list), std::end(list), [&](auto const& entry) {
        return entry.name == column.name && (entry.tag.empty() || entry.tag == tag);
    });
    return line != std::end(list) ? line : nullptr;
}

} // namespace

std::vector<ColumnMeaning> MeaningsOf(std::wstring_view tag, RowColumns const& columns) {
    std::vector<ColumnMeaning> meanings;
    for (ColumnDescription const& column : columns.columns) {
        ColumnMeaning& meaning = meanings.emplace_back();
        if (column.type != FieldType::Int)
            continue;
        if (auto const* const line = Line(IdColumns, tag, column))
            meaning.kind = FindKind(line->kind);
        if (auto const* const line = Line(SettingColumns, tag, column))
            meaning.setting = line->setting;
    }
    return meanings;
}

std::optional<std::wstring> SettingWord(int setting, std::int32_t value) {
    std::list<CString> words;
    auto const count = QVIpCalcParameter::GetCalcParamEnumSubTexts(setting, words);
    if (value < 0 || static_cast<std::size_t>(value) >= count)
        return std::nullopt;
    return std::next(words.begin(), value)->GetString();
}

} // namespace paramdb::tools
