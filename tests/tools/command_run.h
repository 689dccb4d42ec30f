// A run of the command inside the test program, with all that it gave out.
#pragma once

#include "tests/support/sources.h"
#include "tests/support/temp_dir.h"
#include "tools/command.h"

#include <regex>
#include <sstream>
#include <string>
#include <vector>

struct CommandRun {
    int code;
    std::string out;
    std::string err;
};

inline CommandRun RunCommand(std::vector<std::string> const& arguments) {
    std::ostringstream out;
    std::ostringstream err;
    int const code = paramdb::tools::RunCommand(arguments, out, err);
    return {code, out.str(), err.str()};
}

// The text report with its two lines of times, which differ from run to run, cut short.
inline std::string WithoutTimes(std::string const& report) {
    std::regex const times("(Time|Throughput) +[^\n]*");
    return std::regex_replace(report, times, "$1 ...");
}

// A test that runs the command over files in a folder of its own.
class CommandTest : public LoadTest {
protected:
    // Makes a file and returns its name as an argument.
    std::string File(std::u8string const& name, std::string const& content) {
        test_support::WriteBytes(m_folder / name, content);
        return Name(name);
    }
    // The name of a file in the folder, which need not exist.
    std::string Name(std::u8string const& name) const {
        std::u8string const path = (m_folder / name).u8string();
        return {path.begin(), path.end()};
    }
    std::string Folder() const { return m_folder.path().string(); }

private:
    test_support::TempDir m_folder;
};
