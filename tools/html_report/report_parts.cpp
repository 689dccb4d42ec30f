#include "tools/html_report/report_parts.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/html_report/script_json.h"
#include "tools/named_id.h"
#include "tools/parameter_report.h"
#include "tools/polygon_listing.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <stdexcept>

namespace paramdb::tools {
namespace {

using Json = nlohmann::ordered_json;

// The lines of a text as JSON, empty ones left out.
Json LinesJson(std::wstring_view text) {
    Json lines = Json::array();
    while (!text.empty()) {
        std::wstring_view const line = text.substr(0, text.find(L'\n'));
        if (!line.empty())
            lines.push_back(ToUtf8(line));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return lines;
}

Json SettingsJson(CQtParamInstance& parameters, int parameter) {
    try {
        return LinesJson(parameters.IpDisplayText(parameter, L"", L"\n").GetString());
    } catch (std::out_of_range const&) { // a host would meet it, too
        return nullptr;
    }
}

NamedId TriggerOf(CQtParamInstance const& parameters, int parameter) {
    int const trigger = parameters.TriggerId(parameter);
    return {trigger, trigger == -1 ? L"" : parameters.TriggerName(trigger)};
}

} // namespace

Json PolygonsPart(CQtParamInstance const& parameters) {
    std::ostringstream listing;
    PrintPolygons(listing, parameters, nullptr, ReportFormat::Json);
    return Json::parse(listing.str());
}

Json ParametersPart(CQtParamInstance& parameters) {
    Json list = Json::array();
    for (auto const& [key, row] : parameters.InstrumentParam()) {
        int const instrument = row.get<"instrument">();
        list.push_back({{"parameter", ToJson(NamedId{key[0], row.get<"name">().c_str()})},
                        {"instrument", ToJson(Named(parameters.Instrument(), instrument))},
                        {"trigger", ToJson(TriggerOf(parameters, key[0]))},
                        {"yields", ResultTypeText(CQtParamInstance::ResultType(instrument))},
                        {"settings", SettingsJson(parameters, key[0])}});
    }
    return list;
}

void AppendKeysPart(std::string& out, CQtParamInstance const& parameters) {
    out += "{\"words\":";
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        out += element == 0 ? '[' : ',';
        AppendScriptText(out, Clavis::ElementName(element, 1).GetString());
    }
    out += "],\"rows\":[";
    std::set<int> other_modes;
    bool is_first = true;
    for (auto const& [key, row] : parameters.IpParamAndStore()) {
        out += is_first ? "\n[" : ",\n[";
        is_first = false;
        for (int const element : key.elements())
            out.append(std::to_string(element)).append(1, ',');
        AppendScriptText(out, parameters.FormatClavisTextNice(key, false, L"/").GetString());
        out += ']';
        if (int const mode = key[Clavis::qMode]; !parameters.IsValidMode(mode))
            other_modes.insert(mode);
    }
    out += "],\"modes\":[";
    is_first = true;
    for (int const mode : other_modes) {
        out.append(is_first ? "[" : ",[").append(std::to_string(mode)).append(1, ',');
        is_first = false;
        AppendScriptText(out, parameters.ModeName(mode));
        out += ']';
    }
    out += "]}";
}

} // namespace paramdb::tools
