// The programs that are measured beside the library, each filling the same rows from its own kind of file.
#pragma once

#include "generate.h"
#include "plain_tables.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace benchmarks {

struct Peer {
    std::string name;
    std::string file_name;
    // Writes the rows in the form that the peer reads best.
    void (*write)(std::vector<TableRows> const& tables, std::filesystem::path const& path);
    // Opens the file and fills the tables, which are empty.
    void (*load)(std::filesystem::path const& path, PlainTables& tables);
    std::size_t most_rows;
    std::size_t most_repeats;
};

// The peers that this program was built with.
std::vector<Peer> Peers();

// Each in a source of its own, which is built where its library is there.
Peer SimdjsonPeer();
Peer SqlitePeer();
Peer NlohmannPeer();
Peer TomlPeer();

} // namespace benchmarks
