#include "load_data.h"

#include <paramdb/query/param_instance.h>

#include "derivation_support.h"
#include "trigger_tables.h"

#include <type_traits>
#include <variant>

namespace derivation {
namespace {

using ParamDb::cell_t;
using ParamDb::row_t;

std::string CellText(cell_t const& cell) {
    return std::visit(
        [](auto const& value) -> std::string {
            if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::wstring>)
                return '"' + std::string(value.begin(), value.end()) + '"';
            else
                return std::to_string(value);
        },
        cell);
}

std::string LineText(row_t const& row) {
    std::string line;
    for (cell_t const& cell : row)
        line += (line.empty() ? "" : " ") + CellText(cell);
    return line;
}

int RandomInstrument(Random& random) {
    static std::vector<int> const few{1001, 2001, 2500, 2700, 3700, 13202, 10201, 1700};
    return random.Pick(few);
}

cell_t RandomCell(paramdb::FieldType type, Random& random) {
    static std::vector<std::wstring> const texts{L"a",  L"b",        L"two words", L"",   L"O1;O2",
                                                 L"HX", L"O1;O2;O3", L"F1,5-L2",   L"OO", L"H1-M0.5;H1+M0.5"};
    switch (type) {
    case paramdb::FieldType::Int:
        return random.Between(-1, 5);
    case paramdb::FieldType::Unsigned:
        return static_cast<std::uint32_t>(random.Between(0, 7));
    case paramdb::FieldType::Int64:
        return static_cast<std::int64_t>(random.Between(-9, 9)) * 10'000'000'000;
    case paramdb::FieldType::Float:
        return static_cast<float>(random.Between(-8, 40)) / 4;
    case paramdb::FieldType::Double:
        return static_cast<double>(random.Between(-8, 8)) / 8;
    case paramdb::FieldType::Text:
        break;
    }
    return random.Pick(texts);
}

row_t RandomRow(paramdb::TableDescription const& table, Random& random) {
    row_t row;
    for (auto const* columns : {&table.key_columns, &table.row_columns})
        for (auto const& column : *columns)
            row.push_back(RandomCell(column.type, random));
    return row;
}

void Append(std::vector<std::wstring>& lines, std::vector<std::wstring> const& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

} // namespace

ParamDb::CDbTableSet Versions() {
    ParamDb::CDbTableSet data;
    data[L"<DbDesign.CacheVersion>"] = {{216}};
    data[L"<DbDesign.CacheMinorVersion>"] = {{1}};
    return data;
}

std::string LakeText(ParamDb::CDbTableSet const& data) {
    std::string text;
    for (auto const& [tag, table] : data) {
        std::string const name(tag.begin(), tag.end());
        if (tag.starts_with(L"<T")) {
            text += name + ": {\n";
            for (row_t const& row : table)
                text += LineText(row) + '\n';
            text += "}\n";
        } else {
            text += name + ": " + LineText(table.front()) + '\n';
        }
    }
    return text;
}

ParamDb::CDbTableSet RandomData(Random& random) {
    ParamDb::CDbTableSet data = Versions();
    for (wchar_t const* const name : {L"<QLearn><FLearnArcName>", L"<QCalib><FCalibFileName>",
                                      L"<QType><FBaseName>", L"<QType><FAliasName>"})
        if (random.OneIn(2))
            data[name] = {{RandomCell(paramdb::FieldType::Text, random)}};
    for (auto const& table : paramdb::Catalogue()) {
        if (random.OneIn(5))
            continue;
        auto& rows = data[table.tag];
        for (int count = random.Between(0, 7); count > 0; --count)
            rows.push_back(RandomRow(table, random));
    }
    for (row_t& row : data[L"<TInstrument>"])
        row[0] = RandomInstrument(random);
    for (row_t& row : data[L"<TInstrumentParam>"])
        row[1] = RandomInstrument(random);
    // The signal tables go together.
    data[L"<TAppSignalProperty>"].clear();
    for (row_t const& signal : data[L"<TApplicationSignal>"])
        data[L"<TAppSignalProperty>"].push_back(
            {signal[0], random.Between(0, 5), L"Hz", 1.0f, random.Between(0, 3), 0});
    // In most files the tables of virtual modes and of limits do, too.
    if (!random.OneIn(4)) {
        data[L"<TAutoModeParam>"].clear();
        data[L"<TAutoModeParamOrder>"].clear();
        for (int count = random.Between(0, 3); count > 0; --count) {
            data[L"<TAutoModeParamOrder>"].push_back({random.Between(0, 3) + 10 * count, count});
            data[L"<TAutoModeParam>"].push_back({count, 0.0f, static_cast<float>(random.Between(1, 4000)),
                                                 1.0f, 1.0f, 0.0f, 1.0f, random.Between(0, 1), 1.0f, 1u});
        }
    }
    if (!random.OneIn(4))
        std::erase_if(data[L"<TRelativeLimit>"], [&data](row_t const& limit) {
            for (row_t const& parameter : data[L"<TInstrumentParam>"])
                if (parameter[0] == limit[4])
                    return false;
            return true;
        });
    return data;
}

std::vector<std::wstring> State(CQtParamDistillery& distillery) {
    std::vector<std::wstring> lines;
    MessageLog messages;
    CQtParamInstance const instance(&distillery);
    instance.DumpTables(0);
    for (Message const& message : messages.Take())
        lines.push_back(message.text);
    for (CString const& text :
         {instance.LearnFileName(), instance.CalibFileName(), instance.BaseType(), instance.AliasType()})
        lines.push_back(text.GetString());

    CQtDerivedInfo const& derived = distillery.DerivedInfo();
    for (auto const& [parameter, trigger] : derived.TriggerIdMap())
        lines.push_back(L"trigger " + std::to_wstring(parameter) + L' ' + std::to_wstring(trigger));
    for (auto const& [place, point] : derived.GroupInfo().Groups())
        lines.push_back(L"point " + std::to_wstring(place.first) + L' ' + std::to_wstring(place.second) +
                        L' ' + std::to_wstring(point.x) + L' ' + std::to_wstring(point.y));
    for (auto const& [key, entry] : derived.GroupInfo().Entries()) {
        std::wstring line = L"entry";
        for (int const number : key.elements())
            line += L' ' + std::to_wstring(number);
        for (int const number : {entry.area_interpretation, entry.source_parameter, entry.group})
            line += L' ' + std::to_wstring(number);
        lines.push_back(line);
    }
    Append(lines, Rows(derived.ChannelInfo().BaseChannels()));
    Append(lines, Rows(derived.SpecIntervals().Intervals()));
    Append(lines, Rows(derived.RotorInfo().Rotor2OrderSources()));
    Append(lines, Rows(derived.RotorInfo().Rotor2OrderReferences()));
    CQtModeInfo const& modes = derived.ModeInfo();
    for (int const number : {modes.ExtensionBits(), modes.StateBits(),
                             static_cast<int>(modes.ExtensionMask()), CQtParamDistillery::TimeSignalId()})
        lines.push_back(std::to_wstring(number));
    for (auto const& [order, params] : modes.Params())
        lines.push_back(L"grid " + std::to_wstring(order) + L' ' + std::to_wstring(params.SignalId) + L' ' +
                        std::to_wstring(params.Stop) + L' ' + std::to_wstring(params.IntervalBits) + L' ' +
                        std::to_wstring(static_cast<int>(params.HasState)));
    return lines;
}

} // namespace derivation
