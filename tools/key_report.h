// The answer of `paramdb key`: a key in the texts that a host shows for it, and its elements one by one.
//
// In JSON it is an object. The keys stay; new ones may be added.
//
//   key         the six numbers, -1 for an element that is not set; null if a name could not be resolved
//   short_text, nice_text
//               null if a name could not be resolved
//   elements    a list of six
//     element   the technical word, the same in every language ("Mode")
//     word      the word on the screen ("Test step")
//     id        null if it is not set or could not be resolved
//     name      that of the id, or the given one that could not be resolved; null for none
//     is_known  whether there is such an id; true also if it is not set
//     nearest   a list of {id, name} that may have been meant
#pragma once

#include "tools/key_words.h"
#include "tools/named_id.h"
#include "tools/report.h"

#include <array>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

class CQtParamInstance;

namespace paramdb::tools {

struct KeyElement {
    std::optional<int> id; // -1 for one that is not set; none for a name that could not be resolved
    std::wstring name;
    std::string fault; // what to tell; empty for one that is known or not set
    std::vector<NamedId> nearest;
};

using ResolvedKey = std::array<KeyElement, Clavis::ElementCount>;

// Finds the ids of names and the names of ids. A parameter by its name is one of the instrument of the key,
// if that is set.
ResolvedKey ResolveKey(CQtParamInstance const& parameters, KeyWords const& words);

// Prints the key; as text nothing if a name could not be resolved. `both` as in
// CQtParamInstance::FormatLocaChanText.
void PrintKey(std::ostream& out, CQtParamInstance const& parameters, ResolvedKey const& elements, bool both,
              ReportFormat format);

} // namespace paramdb::tools
