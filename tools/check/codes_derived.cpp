// P4..: what is derived from the tables.
#include "tools/check/codes.h"

namespace paramdb::tools::check {
namespace {

constexpr Code DerivedList[] = {
    {"P401", "inheritance-cycle", Severity::Error, "A channel inherits from itself",
     "Each channel takes over the flags of its parent in `<TChannelInheritance>`, and of its parent's "
     "parent. "
     "The rows lead back to the channel where they began, in every mode or in one; the load stops there, and "
     "which channel is the base is a matter of chance.",
     "\t1 -1 2\n\t2 -1 1\n", "Leave one of the rows out, or write -1 as the parent for the mode."},
    {"P402", "bad-order-definition", Severity::Error, "An order definition is bad",
     "The definition counts as empty and the parameter measures nothing. The finding marks where it is bad; "
     "`paramdb order` explains definitions term by term.",
     "\t1 1 90 6 \"F100+H1\" 2500 1\n", "Correct the definition."},
    {"P403", "odd-order-definition", Severity::Error, "An order definition has an odd number of positions",
     "Positions go together as the lower and the upper end of an interval. One alone is an interval of its "
     "own; of "
     "any other odd number one is left over, and the whole definition is ignored.",
     "\t1 1 90 6 \"O1;O2;O3\" 2500 1\n", "Add the position that is missing, or leave one out."},
    {"P404", "deprecated-interpretation", Severity::Warning, "An interpretation is deprecated",
     "The interpretations 1 to 4 of spectral values and tracks are of older programs. They are still read, "
     "and "
     "the load mentions each.",
     "\t1 1 90 2 \"O1-L1;O1+L1\" 2500 1\n", "Write 6 for the maximum of the points or 8 for their sum."},
    {"P405", "long-order-definition", Severity::Warning, "An order definition has too many positions",
     "A definition can have 32 positions. What stands behind them is not read.",
     "\t1 1 90 6 \"O1;O2;O3;...\n", "Spread the positions over several parameters."},
    {"P406", "ignored-order-text", Severity::Warning, "Part of an order definition is not looked at",
     "The letters F, O, M, L and H are looked for in each position, each once, with the number behind it. "
     "Whatever "
     "else stands there does nothing: a second term with the same letter, a small letter, a lost digit.",
     "\t1 1 90 6 \"2+O1-L1;O1+L1\" 2500 1\n", "Leave it out, or write what was meant."},
    {"P407", "empty-order-definition", Severity::Warning, "An order definition is empty",
     "Without a position the parameter has no interval to measure in.", "\t1 1 90 6 \"\" 2500 1\n",
     "Write a definition, or leave the row out."},
    {"P410", "order-source-without-base-order", Severity::Error, "An order source has no base order",
     "The physical gear of the order source, or the order source itself where `<TVirtual2PhysGear>` has no "
     "row "
     "for it, needs a row in `<TBaseOrder>`. Without one the load leaves the order source out.",
     "\t90 1 1\n", "Add the gear to `<TBaseOrder>`, or leave the order source out."},
    {"P411", "rotor-without-ratio", Severity::Error, "A rotor has no ratio",
     "The speed of a rotor relative to others stands in `<TRotorSpeed>`, under its physical gear or under "
     "its "
     "own "
     "number. Without a row every ratio to and from the rotor is 0 in this physical mode. Each rotor is told "
     "once "
     "for each physical mode.",
     "\t1 2 1\n", "Add the row to `<TRotorSpeed>`."},
    {"P412", "rotor-without-source", Severity::Warning, "A rotor has no speed source",
     "Neither `<TRotorSpeedSource>` nor `<TRotorSpeedReference>` says by which signal the speed of the rotor "
     "is "
     "known in this physical mode, so channels find none of its order sources. Each rotor is told once for "
     "each "
     "physical mode.",
     "\t90 1 2\n", "Add a row to one of the two tables."},
    {"P413", "zero-ratio", Severity::Error, "The ratio of a rotor is 0",
     "Ratios between rotors are quotients of their numbers in `<TRotorSpeed>`. With 0 each is 0.",
     "\t1 1 0.0 0 0\n", "Write the ratio."},
    {"P414", "ratio-and-fraction-differ", Severity::Warning, "A ratio and its fraction differ",
     "A row of `<TRotorSpeed>` tells the ratio as a number and as a fraction; some queries take the one and "
     "some "
     "the other. They differ by more than a ten-thousandth. A denominator of 0 means that there is no "
     "fraction.",
     "\t1 1 0.5 1 3\n", "Correct the number or the fraction."},
    {"P420", "mode-without-physical-mode", Severity::Warning, "A mode has no row in <TModeProperty>",
     "The row says which physical mode a mode has; by that go all ratios, gears and speed sources, and the "
     "names of virtual modes. Without it there is none. Nothing is told if no file has the table.",
     "\t2 \"Warm up\"\n", "Add a row, with -1 for a mode without a physical mode."},
    {"P421", "incongruent-grid", Severity::Error, "The two tables of the grid do not fit together",
     "`<TAutoModeParamOrder>` puts the signals of `<TAutoModeParam>` into an order. Each must be in both, "
     "once; "
     "otherwise the load makes no grid, and there are no virtual modes.",
     "\t0 11\n", "Make the two tables hold the same signals."},
    {"P422", "order-key", Severity::Error, "The order keys of the grid do not count from 0",
     "Where a virtual mode is checked, the keys of `<TAutoModeParamOrder>` count as positions in the grid. "
     "If "
     "they are not 0, 1, 2 and so on, no virtual mode is valid.",
     "\t1 10\n", "Number the rows from 0."},
    {"P423", "empty-range", Severity::Error, "A parameter of the grid has no intervals",
     "The range from start to stop is cut into steps. The start must be below the stop, and the step above "
     "0.",
     "\t10 6000.0 0.0 500.0 1.0 0.0 1.0 1 1.0 1\n", "Correct the range or the step."},
    {"P424", "interval-without-room", Severity::Error, "The last interval of a parameter has no room",
     "In the id of a virtual mode the field of a parameter holds the number of the interval plus 1, since 0 "
     "is "
     "for none. The load makes it as wide as the quotient of range and step needs, which is too little by "
     "one "
     "where the number of intervals is a power of two and the quotient is a little below it or 1: the last "
     "interval then runs over into the field before. The hint tells the bits that are used and left.",
     "\t10 0.0 3900.0 500.0 1.0 0.0 1.0 1 1.0 1\n",
     "Widen or narrow the range, so that the number of intervals is no power of two."},
    {"P425", "too-many-bits", Severity::Error, "Modes and grid need too many bits",
     "The id of a virtual mode has 31 bits for the grid and for the id of its mode. If they are not enough, "
     "the load ends; if it is the highest mode alone that needs one more, that mode counts as a virtual one.",
     "<TAutoModeParam>: {\n", "Make the grid coarser, or give the modes lower ids."},
    {"P426", "no-bit-left", Severity::Note, "Modes and grid take all bits",
     "The ids of virtual modes have no bit to spare: a finer grid, another parameter or a mode with a higher "
     "id will not fit any more (P425). The hint tells what takes how many.",
     "<TAutoModeParam>: {\n", "Nothing need be done now."},
    {"P430", "polygon-of-one-point", Severity::Warning, "A polygon has one point only",
     "A polygon is a line from point to point. With one alone it has no length, and no value is within it.",
     "\t1 1000.0 66.0\n", "Add a second point, or leave the polygon out."},
    {"P431", "polygon-without-points", Severity::Warning, "A polygon has no points",
     "`<TIpPolygon>` has its name, but `<TIpPolygonValue>` none of its points.", "\t2 1 \"Mesh level\"\n",
     "Add the points, or leave the row out."},
    {"P432", "points-out-of-order", Severity::Warning, "The points of a polygon are not in the order of x",
     "The load puts the points of each polygon in the order of x, so that the line does not run as the rows "
     "do. "
     "Often a digit is missing.",
     "\t1 1000.0 66.0\n\t1 200.0 70.0\n", "Correct x, or put the rows in order."},
    {"P433", "reversed-line", Severity::Warning, "A line of two points runs backwards",
     "The end of a definition by two points is not above its start. What is between them is empty.",
     "\t-1 10001 -1 -1 1 -1 0 0 3 2 0.0 1 2000.0 1000.0 60.0 70.0\n", "Write the lower x first."},
    {"P440", "row-without-match", Severity::Warning, "A row of <TIpTrackPolygon> matches no key",
     "The row holds for the keys of `<TIpParamAndStore>` that its own key matches, -1 matching anything. "
     "There "
     "is "
     "none. Nothing is told if no file has that table.",
     "\t9 10001 -1 -1 1 -1 1 0 3 2 0.0 0 0.0 0.0 0.0 0.0\n", "Correct the key, or leave the row out."},
    {"P441", "ambiguous-wildcards", Severity::Warning, "Two rows match the same key",
     "Neither row is more special than the other: each has wildcards in as many elements. The first in the "
     "order "
     "of keys counts, -1 coming before all ids. The load mentions it without saying which they are.",
     "\t-1 10001 -1 1 1 -1 1 0 3 2 0.0 0 0.0 0.0 0.0 0.0\n\t1 10001 -1 -1 1 -1 2 0 3 2 0.0 0 0.0 0.0 0.0 "
     "0.0\n",
     "Change the keys so that only one of the rows matches."},
    {"P442", "shadowed-row", Severity::Error, "A row with wildcards hides a more special one",
     "Of several rows that match a key the first in the order of keys counts, and -1 comes before all ids. "
     "So "
     "a "
     "row for a single mode does not make an exception from one for all modes: it is never used there.",
     "\t-1 10001 -1 -1 1 -1 1 0 3 2 0.0 0 0.0 0.0 0.0 0.0\n\t1 10001 -1 -1 1 -1 2 0 3 2 0.0 0 0.0 0.0 0.0 "
     "0.0\n",
     "Give the row with wildcards the keys that it is for, one by one."},
    {"P450", "incongruent-signals", Severity::Error, "The two tables of signals differ",
     "`<TApplicationSignal>` and `<TAppSignalProperty>` must have the same ids. Otherwise the load ends, and "
     "nothing is derived from the tables.",
     "\t2 \"Microphone\"\n", "Add the missing row, or leave the other one out."},
    {"P451", "illegal-result-code", Severity::Error, "A result code is above 3",
     "The result codes of `<TErrorGroup>` go from 0 to 3. The load takes any other for 3, system error.",
     "\t1 4 1 \"Noise\" \"Level above limit\"\n", "Write a code from 0 to 3."},
    {"P452", "unknown-accumulation", Severity::Error, "There is no such accumulation",
     "Spectra are put together as the maximum (20), the average (21) or the last one (22), or not at all "
     "(0). "
     "Older files have 2 for the maximum and 3 for an average or the last one, depending on the decay. The "
     "load "
     "takes any other for 0.",
     "\t1 1 4 0.0 0\n", "Write 0, 20, 21 or 22."},
    {"P453", "finite-decay", Severity::Warning, "The decay of an average is not infinite",
     "Averages are over all spectra. A decay below 1000 would fade the older ones out; the load reports it "
     "and "
     "takes it as infinite.",
     "\t1 1 21 500.0 0\n", "Write 1000 or more."},
    {"P460", "trigger-dimension", Severity::Error, "A trigger has a dimension that does not exist",
     "A trigger has the dimensions 1 to 4, the third number of the key. With any other, queries for all "
     "dimensions of the trigger fail in this mode.",
     "\t1 1 5 1 10 0.0 100.0 10.0 0.0 0 0 0 0\n", "Correct the dimension."},
    {"P461", "trigger-step", Severity::Warning, "The step of a trigger is not above 0",
     "The cells of a trigger are as wide as its step. With 0 or less there are none that a position could "
     "fall "
     "into.",
     "\t1 1 1 1 10 0.0 100.0 0.0 0.0 0 0 0 0\n", "Write a step above 0."},
};

} // namespace

std::span<Code const> DerivedCodes() {
    return DerivedList;
}

} // namespace paramdb::tools::check
