// What a check has found, and where.
//
//     findings.Add("P204", row.Whole(), "the key 11 is there already").Relate(first, "the row that counts");
#pragma once

#include "tools/check/codes.h"

#include <compare>
#include <cstddef>
#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools::check {

// A piece of a line.
struct Place {
    std::size_t file = 0;   // counted from 0 in the order of the command line
    std::size_t line = 0;   // from 1; 0 for the file as a whole
    std::size_t column = 0; // from 1
    std::size_t length = 1; // characters to be marked

    auto operator<=>(Place const&) const = default;
};

struct RelatedPlace {
    Place place;
    std::string text; // what is to be seen there, in UTF-8
};

// All texts are UTF-8 without a full stop or line end; texts of the data went through Printable (report.h).
struct Finding {
    Code const* code;
    Place place;
    std::string message;
    std::string hint; // how to mend it; may be empty
    std::vector<RelatedPlace> related;

    Finding& Hint(std::string text) {
        hint = std::move(text);
        return *this;
    }
    Finding& Relate(Place where, std::string text) {
        related.push_back({where, std::move(text)});
        return *this;
    }
};

// Puts findings into the order of places and codes, and leaves out what is there twice.
void SortFindings(std::vector<Finding>& findings);

// Collects the findings of all rules.
class FindingList {
public:
    // Adds a finding of that code, which must be in the list of codes. The result stays where it is.
    Finding& Add(std::string_view code, Place place, std::string message);

    // Tells that a finding stands for that message of the load, an index of CheckContext::Messages(). Faults
    // among the messages that no rule speaks for become findings of their own.
    void Explain(std::size_t message) { m_explained.insert(message); }
    bool IsExplained(std::size_t message) const { return m_explained.contains(message); }

    // The findings, sorted; leaves none.
    std::vector<Finding> Take();

private:
    std::deque<Finding> m_findings;
    std::set<std::size_t> m_explained;
};

} // namespace paramdb::tools::check
