// What stands behind the options in the help of a verb, taken apart.
//
// It is written in the file of the verb, as people read it: paragraphs with blank lines between, one that
// begins with the line "Examples:" (or "Example:") and one that begins with "Exit codes:". Completion and
// manual take it apart again, and the tests run the examples.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

struct HelpNotes {
    // The lines of each paragraph that is none of the other two.
    std::vector<std::vector<std::string>> paragraphs;
    // A command each, as it is typed: "paramdb load gearbox.lake".
    std::vector<std::string> examples;
    // The lines below the title.
    std::vector<std::string> exit_codes;
};

HelpNotes ReadHelpNotes(std::string_view text);

} // namespace paramdb::tools
