// Ids with the names that belong to them, for reports.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

class CDynNameIdTable;
class CQtParamInstance;

namespace paramdb::tools {

// -1 stands for none; the name is empty where there is none.
struct NamedId {
    int id = -1;
    std::wstring name;
};

// An id of a name table, an instrument parameter or a polygon, with its name.
NamedId Named(CDynNameIdTable const& names, int id);
NamedId NamedParameter(CQtParamInstance const& parameters, int id);
NamedId NamedPolygon(CQtParamInstance const& parameters, int number);

// "10 Input speed", the id alone if it has no name, nothing for none.
std::string Shown(NamedId const& id);

// {"id": 10, "name": "Input speed"}; null for none, and in place of a name that is empty.
nlohmann::ordered_json ToJson(NamedId const& id);

// A text of the data in JSON, in UTF-8; null if it is empty.
nlohmann::ordered_json JsonText(std::wstring_view text);

} // namespace paramdb::tools
