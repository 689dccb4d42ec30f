// P3..: references from row to row.
#include "tools/check/codes.h"

namespace paramdb::tools::check {
namespace {

constexpr Code ReferencesList[] = {
    {"P301", "unknown-reference", Severity::Error, "A field refers to an id that does not exist",
     "The column holds ids of another table, which has no row of this id: there is no such trigger, source "
     "parameter, polygon and so on. -1 stands for none and is no reference. Nothing is told about ids of a "
     "table that no file has, so that a file that is made to be merged over another one can be checked "
     "alone.",
     "\t1015 9 90 6 \"H1\" 2500 1001\n",
     "Write an id that exists, or add the row to the other table. The hint names the nearest ids."},
    {"P302", "unknown-id-in-key", Severity::Warning, "A row is for an id that does not exist",
     "The key of the row holds an id of another table, which has no such row. Queries ask for ids that "
     "exist, "
     "so "
     "the row is of no use. Several rows of a table with the same wrong id are told once.",
     "\t9 0 0 0 0\n", "Correct the id, or leave the row out."},
    {"P303", "nameless-rotor", Severity::Warning, "A rotor, gear or order source has no name",
     "Rotors, gears and order sources have their names in `<TLocation>`. One without a row there works, but "
     "is "
     "shown without a name, and may be a slip of the pen. Each is told once, where it comes first.",
     "\t7 1.0\n", "Add the row to `<TLocation>`, or correct the number."},
    {"P304", "foreign-instrument", Severity::Warning, "A parameter is not one of the instrument beside it",
     "The row names an instrument and a parameter, but `<TInstrumentParam>` says that the parameter belongs "
     "to "
     "another instrument. No result has such a key. Several rows of a table with the same pair are told "
     "once.",
     "\t1 1001 1 1 1002 1 1 0.0 80.0\n", "Correct the instrument or the parameter."},
    {"P305", "parameter-without-row", Severity::Warning, "A parameter has no settings",
     "Each instrument has a table in which its parameters have their settings, for example `<TIpSpectrum>` "
     "for instrument 2500. A parameter without a row there cannot be calculated. Nothing is told if no file "
     "has "
     "any such table.",
     "\t1001 2500 \"Order spectrum\" 0 1 0\n", "Add the row, or leave the parameter out."},
    {"P306", "borrowed-trigger", Severity::Error, "A parameter takes the trigger of another one",
     "The trigger of a parameter is that of the first row in the table of its instrument whose id is not "
     "lower. A "
     "parameter without a row of its own thus takes over the trigger of the next one.",
     "\t1001 2500 \"Order spectrum\" 0 1 0\n", "Add a row for the parameter."},
    {"P307", "row-of-other-instrument", Severity::Warning,
     "Settings stand in the table of another instrument",
     "The parameter has another instrument, whose settings stand in another table. Nothing reads this row.",
     "\t1002 1 20 0.0 0\n", "Move the row to the table of the instrument, or correct the parameter."},
    {"P308", "relative-limit-without-parameter", Severity::Error,
     "A relative limit is for a parameter that does not exist",
     "The load fills in the instrument of each relative limit from its parameter. At one whose parameter "
     "does "
     "not "
     "exist, -1 among them, it ends without a message: the limits behind it stay as they are, and illegal "
     "result "
     "codes and accumulations are not corrected.",
     "\t-1 1001 -1 -1 1099 -1 3.0 6.0\n", "Correct the parameter, or leave the row out."},
};

} // namespace

std::span<Code const> ReferenceCodes() {
    return ReferencesList;
}

} // namespace paramdb::tools::check
