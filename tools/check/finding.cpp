#include "tools/check/finding.h"

#include <algorithm>
#include <stdexcept>
#include <tuple>
#include <utility>

namespace paramdb::tools::check {

Finding& FindingList::Add(std::string_view code, Place place, std::string message) {
    Code const* const found = FindCode(code);
    if (found == nullptr)
        throw std::logic_error("no such code: " + std::string(code));
    return m_findings.emplace_back(Finding{found, place, std::move(message), {}, {}});
}

std::vector<Finding> FindingList::Take() {
    std::vector<Finding> findings(std::make_move_iterator(m_findings.begin()),
                                  std::make_move_iterator(m_findings.end()));
    m_findings.clear();
    m_explained.clear();
    SortFindings(findings);
    return findings;
}

void SortFindings(std::vector<Finding>& findings) {
    auto const order = [](Finding const& finding) {
        return std::tie(finding.place.file, finding.place.line, finding.place.column, finding.code->code,
                        finding.message);
    };
    std::stable_sort(findings.begin(), findings.end(),
                     [&](Finding const& left, Finding const& right) { return order(left) < order(right); });
    auto const same = [&](Finding const& left, Finding const& right) { return order(left) == order(right); };
    findings.erase(std::unique(findings.begin(), findings.end(), same), findings.end());
}

} // namespace paramdb::tools::check
