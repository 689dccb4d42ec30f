// Writing a file that must never be half written, nor be one of those it was made from.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

// The first of the inputs that is the same file or folder as the target, by whatever name or link; empty if
// none is. A terminal, pipe or device is never the same as another, since nothing is lost there.
std::string SameFile(std::string const& target, std::vector<std::string> const& inputs);

// Whether the target may be written; if not, a line "paramdb: TARGET: reason" goes to the stream. It may not
// if it is a folder, or one of the inputs and this is not allowed.
bool MayWrite(std::string const& target, std::vector<std::string> const& inputs, bool may_be_input,
              std::ostream& err);

// Makes the file hold these bytes, as ReplaceFileWith does: all or nothing. False, with such a line, if it
// cannot.
bool WriteFile(std::string const& target, std::string_view bytes, std::ostream& err);

} // namespace paramdb::tools
