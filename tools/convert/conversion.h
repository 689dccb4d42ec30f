// Files and folders of all kinds in and out of memory, and the proof that one says what another said.
#pragma once

#include "tools/convert/forms.h"

#include <iosfwd>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace paramdb::tools {

// The kind that a name tells: by its extension, or CSV for a folder and for a name that ends as one. A
// revision in a database is read as a lake.
std::optional<FileKind> KindOfName(std::string const& name);

// A file, or the files of a folder.
using FormContent = std::variant<std::string, FolderBytes>;

// Reads a file, or all files of a folder that end with ".csv". None, with "paramdb: NAME: reason" on the
// stream, for what cannot be read.
std::optional<FormContent> ReadContent(FileKind kind, std::string const& name, std::ostream& err);

ReadResult ReadForm(FileKind kind, FormContent const& content);
FormContent WriteForm(FileKind kind, ParameterSet const& parameters, std::vector<std::string>& faults);

// Whether the content reads back as the parameters of the source, without a loss, and the library loads the
// same tables from it as from the source and as from a table set.
bool ReadsAs(FileKind kind, FormContent const& content, ReadResult const& source);

// Whether the target may be written, apart from MayWrite: a folder must be missing or empty. Where replacing
// is allowed it may hold tables, but nothing else. If not, a line goes to the stream.
bool MayWriteFolder(std::string const& target, std::vector<std::string> const& inputs, bool may_replace,
                    std::ostream& err);

// Writes the file as WriteFile does. The files of a folder go into a new one beside the target, which takes
// its place when all of them are written.
bool WriteContent(std::string const& target, FormContent const& content, std::ostream& err);

} // namespace paramdb::tools
