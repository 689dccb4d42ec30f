// P2..: the rows of tables.
#include "tools/check/codes.h"

namespace paramdb::tools::check {
namespace {

constexpr Code TablesList[] = {
    {"P201", "row-with-colon", Severity::Error, "A colon makes a key of a row",
     "The first colon outside of quotes makes a line with a key. No table reads such lines: the row is gone "
     "without a "
     "message of the load.",
     "\t1 Gear:1\n", "Put the text that holds the colon in quotes."},
    {"P202", "comment-in-table", Severity::Warning, "A comment or blank line stands in a table",
     "Inside of a section every line without a key is a row. One without fields repeats the row before it "
     "and is left "
     "out as a duplicate; it does harm as soon as it stands before the first row.",
     "\t1 \"Idle\"\n"
     "\t; two of them\n"
     "\t2 \"Warm up\"\n",
     "Put comments and blank lines outside of sections. The closing line may have a comment: `} ; <TMode>`."},
    {"P203", "row-from-comment", Severity::Error, "A comment or blank line adds a row",
     "Inside of a section every line without a key is a row. Before the first row one without fields makes a "
     "row with the key -1, zeros and empty texts. It makes one, too, behind a row that was left out, in a "
     "table "
     "with a text as key, and in one that takes several rows of a key.",
     "<TMode>: {\n"
     "\t; steps\n"
     "\t1 \"Idle\"\n",
     "Put comments and blank lines outside of sections."},
    {"P204", "duplicate-row", Severity::Warning, "The key of a row is there already",
     "Of several rows with one key the first one counts, and the load leaves the others out without a "
     "message. Only "
     "`<TSensorGroupList>` takes several.",
     "\t1 \"Idle\"\n"
     "\t1 \"Warm up\"\n",
     "Leave one of the rows out, or give one of them another key."},
    {"P205", "unreadable-number", Severity::Error, "A field is not the number that its column takes",
     "The row is left out of the table; the load reports it in two messages. Numbers are decimal, with a "
     "point, "
     "whatever the language of the system is. The finding marks the field where reading stopped; the mistake "
     "may be a "
     "field that is missing before it.",
     "\tone \"Idle\"\n",
     "Correct the field. `paramdb tables` lists the columns of every table with their types."},
    {"P206", "text-too-long", Severity::Error, "Too much of the line is left where a text begins",
     "A text is refused if 199 or more characters of the line are left where it begins, counting all that "
     "follows: a "
     "short name before many other fields can be too much. The row is left out of the table.",
     "\t2 Warmmmmmmmmmm...\n", "Shorten the texts of the row."},
    {"P207", "text-at-limit", Severity::Warning, "A text is as long as one can be",
     "198 characters of the line are left where the text begins, the most that is read. Programs that write "
     "such a "
     "line have often cut the text, and with one character more the row is left out (P206).",
     "\t2 Warmmmmmmmmmm...\n", "See whether the text is whole, and shorten it."},
    {"P208", "short-row", Severity::Warning, "A row has too few fields",
     "A number that is missing at the end of a line keeps the value of the line before it in the table, also "
     "of a "
     "line that was left out; before the first row it is 0. A text that is missing is empty. So the row "
     "changes when "
     "another one is put before it.",
     "\t1 2\n"
     "\t2\n",
     "Write all fields of the row."},
    {"P209", "surplus-fields", Severity::Warning, "A row has too many fields",
     "What stands behind the last field of a row is not read. Often a text with a blank lacks its quotes, so "
     "that "
     "only its first word is taken, or a comment stands behind the row.",
     "\t2 Warm up\n", "Put texts in quotes, and comments outside of the section."},
    {"P210", "glued-fields", Severity::Warning, "Two fields have no blank between them",
     "A number ends where it is no number any more, and the next field begins right there: in a column for "
     "whole "
     "numbers `1.5` is the number 1, and .5 goes to the next column.",
     "\t1.5\n", "Write the number that the column takes, and a blank behind each field."},
    {"P211", "not-a-number", Severity::Warning, "A field is nan",
     "`nan` is read as a number that is equal to nothing and has no place in any order. Every calculation "
     "with it "
     "gives nan again, and every limit holds for it.",
     "\t1 nan\n", "Write a number."},
};

} // namespace

std::span<Code const> TableCodes() {
    return TablesList;
}

} // namespace paramdb::tools::check
