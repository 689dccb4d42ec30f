// The options that every verb takes which may read from a database.
#pragma once

#include <chrono>
#include <string>

namespace CLI {
class App;
}

namespace paramdb::tools::db {

// What holds for this run of the command.
struct DatabaseOptions {
    std::chrono::seconds timeout;
    std::string local_copy; // a file; empty for none
};
DatabaseOptions const& OptionsOfRun();

// Each puts the options of the run back to their defaults.
void AddTimeOut(CLI::App& verb);
void AddTimeOutAndCache(CLI::App& verb);
// The same, without a word in the help.
void AddHiddenOptions(CLI::App& verb);

} // namespace paramdb::tools::db
