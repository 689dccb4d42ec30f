// The codes of findings: what each one means, and what to do about it.
//
// A code is a P and three digits: P1.. the file and its sections, P2.. the rows of tables, P3.. references
// from row to row, P4.. what is derived from the tables. Codes are never used again for another meaning. Each
// family is a list in a file of its own, in the order of codes; docs/findings.md is made from them.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// Notes tell what may be meant as it is, and never count against a file.
enum class Severity { Note, Warning, Error };

struct Code {
    std::string_view code; // "P201"
    std::string_view name; // short, in words with hyphens: "row-with-colon"
    Severity severity;
    std::string_view title;       // one line without a full stop
    std::string_view explanation; // whole sentences in Markdown, paragraphs with a blank line between
    std::string_view example;     // lines of the file of that code in tests/findings, which has the finding;
                                  // three dots at the end of a line stand for the rest of it
    std::string_view remedy;      // whole sentences in Markdown
};

// The families.
std::span<Code const> LakeCodes();
std::span<Code const> TableCodes();
std::span<Code const> ReferenceCodes();
std::span<Code const> DerivedCodes();

// All codes in their order.
std::vector<Code> const& Codes();

// The code of that text in any case, or of that name; null if there is none.
Code const* FindCode(std::string_view text);

// "error", "warning" or "note".
char const* SeverityWord(Severity severity);

} // namespace paramdb::tools::check
