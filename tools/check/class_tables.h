// The tables in which instruments keep the settings of their parameters.
#pragma once

#include <span>
#include <string_view>

namespace paramdb::tools::check {

struct ClassTable {
    int instrument;
    std::string_view table; // its tag without brackets
    // Whether the load looks up the trigger of a parameter there, taking the first row that is not below it.
    bool gives_trigger;
};

// In the order of instruments. Track polygons, which go by whole keys, are not among them.
std::span<ClassTable const> ClassTables();

// Null if there is none.
ClassTable const* ClassTableOf(int instrument);

} // namespace paramdb::tools::check
