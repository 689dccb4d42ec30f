// The language of order definitions.
//
// A definition is a list of positions separated by ";", such as "H1-O0.5;H1+O0.5". A position is a sum of
// terms, each a letter and a number: F frequency in Hz, O order, H multiple of the base order, M modulation,
// L spectral lines. Each letter counts once, in any order, and every one but the first needs a sign before
// it; H and M do not go together with F. Blanks do not count, and a comma is a point. "X" in place of a
// number is 1; "HX" makes a series: the positions from there on are repeated for the harmonics 2, 3 and so on
// while there is room.
#pragma once

#include <paramdb/distillery/spec_interval_entry.h>
#include <paramdb/platform/core/export.h>

class PARAMDB_API OrderInterpreter {
public:
    // Parses a definition into `max` positions at most and returns their number. A bad one is reported
    // (category 8, style 3) and gives 0, as do a null and an empty text without report. Positions written
    // before the fault was met stay in `out`.
    static unsigned int GetSpecPositions(wchar_t const* text, QVSpecIntervalEntry::Definition* out,
                                         unsigned int max);
};
