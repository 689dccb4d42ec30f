// What has an id and a name, by the word that people type for it: mode, channel, location and so on.
//
// Each kind has a table of the catalogue with a row for each id; the first text in the row is the name. Where
// the query object has a query for the name or the id, that is asked, so that an answer is what a host gets.
#pragma once

#include <paramdb/tables/catalogue.h>

#include "tools/named_id.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

struct Kind {
    std::string_view word;
    std::string_view table;                                             // its tag without brackets and T
    wchar_t const* (*name)(CQtParamInstance const& parameters, int id); // null for none
    int (*id)(CQtParamInstance const& parameters, wchar_t const* name) = nullptr; // null for none
};

// All kinds. The first six are the elements of a key, in the order of Clavis::qOrder.
std::span<Kind const> Kinds();

// The kind of that word; null if there is none.
Kind const* FindKind(std::string_view word);
// The kind that has this table; null if there is none.
Kind const* KindOf(TableDescription const& table);

// The words of all kinds, with commas between.
std::string KindList();

// All ids of a kind with their names, in the order of ids.
std::vector<NamedId> RowsOf(Kind const& kind);

// The name of an id, which may be empty; none if there is no such id. A virtual mode that is no row is an id
// if its base mode is one.
std::optional<std::wstring> NameOf(Kind const& kind, CQtParamInstance const& parameters, int id);

// The ids of a kind with exactly that name. First the one that a host gets, then the others in their order.
std::vector<int> IdsOf(Kind const& kind, CQtParamInstance const& parameters, std::wstring_view name);

} // namespace paramdb::tools
