// The wording of an order definition, with the places of its parts and of what is wrong with it.
//
// OrderInterpreter tells what a definition means and whether it is good; this tells where. Both agree on
// which definitions are good.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// A letter with its number, as it stands in a position.
struct OrderTerm {
    wchar_t letter;
    std::wstring text; // with its sign, without blanks
    bool has_number;   // else it counts as 0; an X is a number
};

// What stands between two ";".
struct WrittenPosition {
    std::vector<OrderTerm> terms; // as they follow each other
    bool is_series = false;       // has an HX
    std::wstring ignored;         // characters that the interpreter does not look at
};

struct OrderFault {
    std::size_t place; // the number of characters before it
    std::string reason;
};

struct OrderText {
    std::vector<WrittenPosition> positions; // up to the fault
    bool is_cut = false;                    // there are more than a definition can have; they are not read
    std::optional<OrderFault> fault;
};

OrderText ReadOrderText(std::wstring_view text);

} // namespace paramdb::tools
