// The bytes of a file that a verb is about to rewrite.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace paramdb::tools {

// All bytes of a file, which may be a pipe; none, with the reason, if it cannot be read to its end.
std::optional<std::string> ReadFileBytes(std::string const& name, std::string& fault);

// Why the bytes are no parameter file; empty if they are one. They are not if there are none, if there is a
// zero among them, or if no line has a key.
std::string ParameterFileFault(std::string_view bytes);

// The bytes of a parameter file, or of one that holds what a revision in a database does. If it is none,
// "paramdb: FILE: reason" goes to the stream.
std::optional<std::string> ReadParameterFile(std::string const& name, std::ostream& err);

// The name of a file for the terminal; "" for an empty one.
std::string ShownName(std::string const& name);

} // namespace paramdb::tools
