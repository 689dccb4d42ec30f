// A program that runs beside the test, with all that it gave out.
#pragma once

#include <string>
#include <vector>

namespace test_support {

struct ProgramRun {
    int code; // -1 if it could not be started or did not end by itself
    std::string out;
    std::string err;
};

// Runs the program to its end. Its path and the arguments are UTF-8 and arrive as they are, also with blanks
// and quotes; its standard input is empty.
ProgramRun RunProgram(std::string const& program, std::vector<std::string> const& arguments);

} // namespace test_support
