#include "tools/named_id.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/report.h"

#include <nlohmann/json.hpp>

namespace paramdb::tools {

NamedId Named(CDynNameIdTable const& names, int id) {
    return {id, id == -1 ? L"" : names.Name(id)};
}

NamedId NamedParameter(CQtParamInstance const& parameters, int id) {
    auto const row = parameters.InstrumentParam().find(id);
    bool const is_there = id != -1 && row != parameters.InstrumentParam().end();
    return {id, is_there ? row->second.get<"name">().c_str() : L""};
}

NamedId NamedPolygon(CQtParamInstance const& parameters, int number) {
    auto const row = parameters.IpPolygon().find(number);
    return {number, row != parameters.IpPolygon().end() ? row->second.get<"name">().c_str() : L""};
}

std::string Shown(NamedId const& id) {
    if (id.id == -1)
        return "";
    std::string text = std::to_string(id.id);
    if (!id.name.empty())
        text.append(" ").append(Printable(id.name));
    return text;
}

nlohmann::ordered_json ToJson(NamedId const& id) {
    return id.id == -1 ? nlohmann::ordered_json(nullptr)
                       : nlohmann::ordered_json({{"id", id.id}, {"name", JsonText(id.name)}});
}

nlohmann::ordered_json JsonText(std::wstring_view text) {
    return text.empty() ? nlohmann::ordered_json(nullptr) : nlohmann::ordered_json(ToUtf8(text));
}

} // namespace paramdb::tools
