// The report of `paramdb order`: a definition explained term by term.
//
// In JSON it is an object. The keys stay; new ones may be added. Positions are counted from 1.
//
//   parameter     {id, name}; null where the definition was given as it is
//   base_order    {id, name} of the gear that H and M refer to; null if not known
//   definition
//   verdict       "good", "bad", "odd" (no intervals, since one position is left over) or "empty"
//   fault         {place, reason}, with the number of characters before it; null unless bad
//   positions     a list
//     terms       a list of {text, letter, value, has_number}; empty for what a series has added
//     domain      "lines", "frequency", "order" or "mixed"
//     frequency, order, harmonic, modulation, lines
//     ignored     characters that do not count; null for none
//   written       how many of them stand in the text
//   series        {first, last, harmonics}: the written positions that are repeated, and up to which
//                 harmonic; null for none
//   cut           whether the text has more positions than a definition can have
//   intervals     a list of {lower, upper}, numbers of positions
#pragma once

#include "tools/named_id.h"
#include "tools/report.h"

#include <iosfwd>

namespace paramdb::tools {

struct OrderQuestion {
    NamedId parameter;
    NamedId base_order;
    std::wstring definition;
};

enum class OrderVerdict { Good, Bad, Odd, Empty };

// "good", "bad", "odd" or "empty".
char const* VerdictWord(OrderVerdict verdict);

OrderVerdict PrintOrder(std::ostream& out, OrderQuestion const& question, ReportFormat format);

} // namespace paramdb::tools
