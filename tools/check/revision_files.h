// Revisions of databases as files, whose lines can be looked at.
#pragma once

#include "tools/temporary_folder.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace paramdb::tools::check {

// Files are taken as they are. A revision is written into a file that goes with this object.
class RevisionFiles {
public:
    // Where a revision cannot be read or written, `err` is told, and IsGood is false.
    RevisionFiles(std::vector<std::string> names, std::ostream& err);

    bool IsGood() const { return m_is_good; }
    std::vector<std::string> const& Names() const { return m_names; }

private:
    bool Replace(std::string& name, std::ostream& err);

    std::vector<std::string> m_names;
    std::unique_ptr<TemporaryFolder> m_folder;
    bool m_is_good = true;
};

} // namespace paramdb::tools::check
