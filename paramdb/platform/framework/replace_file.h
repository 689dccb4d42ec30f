// Replacing a file's content as a whole: afterwards the name holds the old content or the new one, never a
// torn mix, also after a crash.
//
// The content goes into a temporary file in the target's folder, is flushed to the medium, and takes the
// target's place by renaming. An existing target keeps its permissions and, where the system lets, its owner;
// a symbolic link stays a link and its target is replaced; other hard links to the old file keep the old
// content. A target that may not be written is refused. What is no regular file (a terminal, a pipe, a
// device) cannot be replaced and is written directly. Any thread; of two writers to one name the last to
// rename wins.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cfile.h>

#include <functional>
#include <string>
#include <string_view>

namespace paramdb {

// True once `name` holds `content`. Otherwise false, the old file is as it was, no temporary is left, and
// `error` has the system's text for the reason; on success `error` is untouched.
[[nodiscard]] PARAMDB_API bool ReplaceFileWith(std::wstring const& name, std::string_view content,
                                               std::wstring& error);

// The same with content that `write` puts into the file it is given, piece by piece. A CFileException from
// `write` is a failure as above; any other exception passes through after the temporary is gone.
[[nodiscard]] PARAMDB_API bool ReplaceFileWith(std::wstring const& name,
                                               std::function<void(CFile&)> const& write, std::wstring& error);

} // namespace paramdb
