// P1..: the file, its sections, its characters, the load as a whole.
#include "tools/check/codes.h"

namespace paramdb::tools::check {
namespace {

constexpr Code LakeList[] = {
    {"P101", "version-missing", Severity::Error, "The database version is missing",
     "A load looks at the version before it touches a table. A file, or the files of a merge together, need "
     "both "
     "numbers; one that is missing counts as 0, and the load is refused.",
     "<DbDesign.CacheVersion>: 216\n",
     "Add the line that is missing at the top level. Both numbers are shown in the hint."},
    {"P102", "version-too-old", Severity::Error, "The database version is too old",
     "The tables of an older version have other columns, so the load is refused. The rows are checked all "
     "the same, "
     "as if they were of the present version; what needs loaded tables is not checked.",
     "<DbDesign.CacheVersion>: 215\n"
     "<DbDesign.CacheMinorVersion>: 7\n",
     "Bring the file up to the present version with the program that wrote it. Changing the number alone "
     "makes the "
     "load read columns that mean something else."},
    {"P103", "version-too-new", Severity::Error, "The database version is too new",
     "The file was made for a later program; the load is refused. As with P102 only the lines are checked.",
     "<DbDesign.CacheVersion>: 217\n", "Load the file with a newer program, or write it for this one."},
    {"P104", "version-not-a-number", Severity::Warning, "A number of the version is not just a whole number",
     "A number of the version is read as far as it is one, and what is behind it is passed over. A value "
     "that begins "
     "with anything else counts as 0. In a file with one line `216.1` the minor version is still missing.",
     "<DbDesign.CacheVersion>: 216.1\n", "Write each of the two numbers on its own line."},
    {"P105", "unclosed-section", Severity::Error, "A section is never closed",
     "A section ends with the first line in it that has no key and begins with `}`. Where that is missing, "
     "the section "
     "takes in all that follows, and also the files that are merged behind it. The next section then stands "
     "inside of "
     "it, where nothing looks for it, and takes the closing line that was meant for the outer one.",
     "<TMode>: {\n"
     "\t1 \"Idle\"\n"
     "<TChannel>: {\n"
     "\t1 \"Fixed\"\n"
     "}\n",
     "Put a line `}` behind the last row of the section."},
    {"P106", "nested-section", Severity::Error, "A section stands inside of another one",
     "Tables are looked for at the top level alone. A section inside of another one is kept with the file, "
     "but no "
     "table reads it. Most often the outer section was not closed (P105). The finding stands at the first "
     "section "
     "inside, and counts the others.",
     "<TMode>: {\n"
     "\t1 \"Idle\"\n"
     "\t<TChannel>: {\n"
     "\t\t1 \"Fixed\"\n"
     "\t}\n"
     "}\n",
     "Move the inner section out, or close the outer one before it."},
    {"P107", "section-without-key", Severity::Error, "A section has no key",
     "A bracket on a line of its own opens a section, but nothing can look for it. This happens where the "
     "bracket "
     "stands on the line below the tag.",
     "<TMode>:\n"
     "{\n"
     "\t1 \"Idle\"\n"
     "}\n",
     "Put the bracket behind the colon, in the line of the tag."},
    {"P108", "stray-bracket", Severity::Error, "A bracket closes nothing",
     "A closing line at the top level ends the data for every reader. What stands behind it is kept with the "
     "file but "
     "never found, in this file and in those that are merged behind it, and the file cannot be written back.",
     "<TMode>: {\n"
     "\t1 \"Idle\"\n"
     "}\n"
     "}\n"
     "<TChannel>: {\n"
     "\t1 \"Fixed\"\n"
     "}\n",
     "Leave the line out. If rows stand before it that belong to no section, look above them for a bracket "
     "that "
     "closes their section too early."},
    {"P109", "text-behind-bracket", Severity::Warning, "More than a comment stands in a closing line",
     "A line without a key that begins with `}` closes its section, whatever else stands in it. Only a "
     "comment behind "
     "a semicolon is of use there.",
     "<TMode>: {\n"
     "\t1 \"Idle\"\n"
     "} <TMode>\n",
     "Put a semicolon before the text, or take the bracket away if the line is meant to be a row."},
    {"P110", "unclosed-quote", Severity::Warning, "A quote is never closed",
     "A double quote hides colons and semicolons up to the next one or to the end of the line, and a text "
     "that begins "
     "with a quote takes the rest of the line. There is no way to write a quote inside of a quoted text.",
     "\t1 \"Idle\n", "Put the second quote behind the text."},
    {"P111", "unknown-section", Severity::Warning, "No table has this tag",
     "A section is read if its key is the tag of a table, letter by letter. Any other section is kept with "
     "the file "
     "and read by nothing here.",
     "<TMoed>: {\n"
     "\t1 \"Idle\"\n"
     "}\n",
     "Correct the tag; `paramdb tables --all` lists them. If another program reads the section, disable the "
     "code "
     "for it."},
    {"P112", "unknown-key", Severity::Warning, "Nothing looks for this key",
     "At the top level there are two numbers of the version and four named texts. Any other line with a key "
     "is kept "
     "with the file and read by nothing here.",
     "<QType><FBasename>: TG-6031\n",
     "Correct the key. If another program reads it, disable the code for it."},
    {"P113", "loose-line", Severity::Warning, "A line stands outside of any section",
     "A line without a key is a row of the section it stands in. At the top level, also before the first "
     "section, "
     "nothing reads it. Lines that follow each other are one finding.",
     "Gearbox, six speeds\n",
     "Put a semicolon before a comment, a colon behind a key, or the row into the section of its table."},
    {"P114", "bracket-with-more", Severity::Error, "A bracket with something behind it opens no section",
     "A section is opened by a line with nothing but the bracket behind the colon. A comment behind it makes "
     "all of it "
     "a value, the rows below stand at the top level, and their closing line closes nothing.",
     "<TMode>: { ; test steps\n"
     "\t1 \"Idle\"\n"
     "}\n",
     "Put the comment on a line of its own before the section."},
    {"P115", "wrong-kind-of-line", Severity::Error, "A key stands with the wrong kind of value",
     "The tag of a table has to open a section; with a value behind the colon the table stays empty. The "
     "numbers of "
     "the version and the named texts have to stand with a value, and no section.",
     "<TMode>: 1 \"Idle\"\n",
     "Put a bracket behind the colon and the rows on lines of their own, or the value behind the colon."},
    {"P116", "superseded-section", Severity::Warning, "A later section has the same key",
     "Of several sections with one key the last one is read, and the rows of all others are out of sight; "
     "sections are "
     "not joined. Within one file that is hardly ever meant.",
     "<TMode>: {\n"
     "\t1 \"Idle\"\n"
     "}\n"
     "<TMode>: {\n"
     "\t2 \"Warm up\"\n"
     "}\n",
     "Join the sections, or leave the earlier one out."},
    {"P117", "replaced-rows", Severity::Note, "A table of a later file lacks rows of the one it replaces",
     "When files are merged, a section replaces the one of an earlier file as a whole. This note names the "
     "keys that "
     "are gone with it; nothing is told where the later section has them all.",
     "<TMode>: {\n"
     "\t2 \"Warm up\"\n"
     "}\n",
     "Take the rows over into the later file if they are to stay."},
    {"P118", "repeated-key", Severity::Warning, "A key is there already",
     "Of several lines with one key and a value the first one counts, in one file as in several. A section "
     "and a value "
     "with one key get into each other's way: the section is read, and the value stays that of the first "
     "line.",
     "<QType><FBaseName>: TG-6031\n"
     "<QType><FBaseName>: TG-6032\n",
     "Leave one of the lines out."},
    {"P119", "kept-value", Severity::Note, "A value of an earlier file stays",
     "When files are merged, the tables of a later file replace those of an earlier one, but a line with a "
     "value does "
     "not: the first one counts, and this one has no effect.",
     "<QType><FAliasName>: K7\n", "Put the file first if its value is to count, or leave the line out."},
    {"P120", "cut-text", Severity::Warning, "A named text is cut",
     "A named text in quotes ends at the second quote. Without quotes it ends at the first blank.",
     "<QType><FBaseName>: TG-6031 A\n", "Put the whole text in quotes."},
    {"P121", "byte-order-mark", Severity::Error, "A byte order mark stands before the first line",
     "A byte is a character here, and a byte order mark is three of them. They belong to the first line: a "
     "key there "
     "is not found, and a comment is none.",
     "\xEF\xBB\xBF<QType><FBaseName>: TG-6031\n",
     "Save the file as ISO 8859-1, or as plain UTF-8 if all of it is ASCII."},
    {"P122", "utf-8", Severity::Warning, "A text looks like UTF-8",
     "A byte is a character here, that of its number in ISO 8859-1 (Latin-1). A letter that UTF-8 writes as "
     "several "
     "bytes shows as several characters, takes more room, and is found under no name. Told once for each "
     "file.",
     "\t1 \"Pr\xC3\xBC"
     "fen\"\n",
     "Save the file as ISO 8859-1."},
    {"P123", "no-such-character", Severity::Warning, "A character has no byte in this format",
     "Files hold the characters U+0000 to U+00FF. One beyond them cannot be written: where a program puts it "
     "into the "
     "data, the rest of the file is lost when that is written back.",
     "\t1 \"Idle \xE2\x80\x93 cold\"\n",
     "Use another character, such as a hyphen for a dash or EUR for the sign of the euro."},
    {"P124", "control-character", Severity::Warning, "A control character stands in a text",
     "Characters below U+0020 other than the tab, and U+007F to U+009F, are not seen and are changed by many "
     "editors. "
     "0x80 to 0x9F are most often letters of Windows-1252 (dashes, curly quotes, the sign of the euro), "
     "which this "
     "format reads as control characters; 0x85 and 0xA0 are blanks here and part fields.",
     "\t1 \"Idle \xC2\x96 cold\"\n", "Use characters of ISO 8859-1."},
    {"P191", "incomplete-load", Severity::Error, "The load is not complete, or reports a fault",
     "The tables are read, but what is derived from them is missing, since they contradict each other. Other "
     "findings say where. A message of the load about a fault that no other code tells is told here as well, "
     "in "
     "its own words.",
     "<TApplicationSignal>: {\n"
     "\t1 \"Vibration\"\n"
     "}\n",
     "Mend the other findings first."},
    {"P192", "wrong-disable", Severity::Warning, "A comment for this check is not understood",
     "A comment `; paramdb: disable` names the codes that are not to be told, as P204 or duplicate-row, and "
     "perhaps "
     "the keys of the rows it is for. What is not understood disables nothing.",
     "; paramdb: disable P999\n", "Correct the comment; `paramdb check --explain all` lists the codes."},
    {"P193", "idle-disable", Severity::Warning, "A comment disables what is not there",
     "The lines that the comment is for have no finding of that code, so the comment can go. Otherwise it "
     "would hide "
     "the next one.",
     "; paramdb: disable P204\n", "Leave the comment, or the code in it, out."},
};

} // namespace

std::span<Code const> LakeCodes() {
    return LakeList;
}

} // namespace paramdb::tools::check
