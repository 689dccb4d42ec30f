// All names of all tables, whatever the tables: those of ids, of instrument parameters and triggers, of
// polygons and procedures, and the texts of errors and of reports.
//
// A name is any text of a key or row but the unit of a signal and the definition of a calculation.
#pragma once

#include <paramdb/tables/catalogue.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>

class CQtParamInstance;

namespace paramdb::tools {

// A name with its place. It is valid during the visit.
struct NameField {
    TableDescription const* table;
    std::string_view column;
    CQParamTableRows::ConstFields key;
    CQParamTableRows::ConstFields row;
    std::wstring_view name;

    // The number that has the name: the key, if it is one number, or what a name that is the key stands for.
    std::optional<int> Id() const;
    // The elements of the key with a slash between, as `paramdb show` takes them.
    std::wstring KeyText() const;
};

// Shows the names in the order of the tables and of their rows.
void VisitNames(CQtParamInstance const& parameters, std::function<void(NameField const&)> const& visitor);

} // namespace paramdb::tools
