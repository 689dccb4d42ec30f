// Names of files on the command line and the paths of the standard library.
#pragma once

#include <filesystem>
#include <string>

namespace paramdb::tools {

// The path of a name in UTF-8.
std::filesystem::path PathOf(std::string const& name);

// The name of a path in UTF-8.
std::string NameOf(std::filesystem::path const& path);

} // namespace paramdb::tools
