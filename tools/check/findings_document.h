// The codes of findings for readers, in Markdown: one by one, and all of them as docs/findings.md.
#pragma once

#include "tools/check/codes.h"

#include <string>

namespace paramdb::tools::check {

// Title, severity, explanation, example and remedy of a code.
std::string CodeText(Code const& code);

// The whole document.
std::string FindingsDocument();

} // namespace paramdb::tools::check
