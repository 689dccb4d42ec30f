// What may have been meant by a name or an id that is not there.
//
//     auto const near = NearestNames(L"Idel", rows);
//     err << "paramdb: Idel: no such mode" << DidYouMean(near) << '\n';
//     // paramdb: Idel: no such mode; did you mean 1 Idle?
#pragma once

#include "tools/named_id.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// How many letters have to be put in, left out, replaced or swapped with their neighbour to come from one
// text to the other, no letter being touched twice. What is more than the limit counts as limit + 1 and costs
// less time. Texts are compared as they are.
std::size_t EditDistance(std::wstring_view from, std::wstring_view to, std::size_t limit);

// The places of the names that a wrong name may stand for, the nearest first and three at most: those that a
// few letters make of it, and those that hold it as a part; those alone that differ in case if there are
// such ones. Case does not count else (case_fold.h). Of names that are as near the first one comes first.
// Empty names are left out. None where nothing is like it.
std::vector<std::size_t> NearestNames(std::wstring_view sought, std::span<std::wstring_view const> names);

// The same for ids with names.
std::vector<NamedId> NearestNames(std::wstring_view sought, std::span<NamedId const> rows);

// The ids with names that are nearest to a wrong id, the nearest first and three at most. Of two that are as
// near the lower one comes first.
std::vector<NamedId> NearestIds(int sought, std::span<NamedId const> rows);

// "; did you mean A, B or C?"; empty without any.
std::string DidYouMean(std::span<std::string const> texts);
// The same with "10 Input speed" for each.
std::string DidYouMean(std::span<NamedId const> rows);

} // namespace paramdb::tools
