// A program that runs on a terminal, as a person starts it; not on Windows.
#pragma once

#include "program_run.h"

namespace test_support {

// Runs the program to its end with standard output and standard error on one new terminal; `out` is all that
// it showed there, with CR LF at the ends of lines. Its path and the arguments are UTF-8; its standard input
// is empty. The environment is that of the test.
ProgramRun RunOnTerminal(std::string const& program, std::vector<std::string> const& arguments);

} // namespace test_support
