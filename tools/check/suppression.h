// Findings that a file says are meant as they are.
//
//     ; paramdb: disable P111 P204          before a section: for all of it; else for the next line
//     ; paramdb: disable P204 for 11/1      the same, for the rows with these keys (key_pattern.h)
//     } ; paramdb: disable P204             in the closing line: for the section
//     ; paramdb: disable-file P112          anywhere: for the whole file
//
// Comments inside of a section would be read as rows (P202), so these stand outside. "all" stands for every
// code. A word that is no code, and a comment without effect, is a finding of its own.
#pragma once

#include "tools/check/context.h"
#include "tools/check/finding.h"

#include <vector>

namespace paramdb::tools::check {

// Takes away the findings that comments of the files disable, and adds those about such comments. The
// findings must be in their order and stay in it.
std::vector<Finding> Suppress(CheckContext const& context, std::vector<Finding> findings);

} // namespace paramdb::tools::check
