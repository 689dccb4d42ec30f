#include "tools/check/revision_files.h"

#include "tools/databases.h"
#include "tools/file_path.h"
#include "tools/rewrite/safe_write.h"

#include <filesystem>
#include <ostream>

namespace paramdb::tools::check {

RevisionFiles::RevisionFiles(std::vector<std::string> names, std::ostream& err) : m_names(std::move(names)) {
    for (std::string& name : m_names)
        if (IsConnection(name))
            m_is_good = Replace(name, err) && m_is_good;
}

bool RevisionFiles::Replace(std::string& name, std::ostream& err) {
    auto const lake = ReadRevisionAsLake(name, err);
    if (!lake)
        return false;
    std::error_code fault;
    if (!m_folder)
        m_folder = std::make_unique<TemporaryFolder>(std::filesystem::temp_directory_path(fault), fault);
    if (fault) {
        err << "paramdb: no folder for temporary files: " << fault.message() << '\n';
        return false;
    }
    auto const number = std::to_string(&name - m_names.data());
    name = NameOf(m_folder->path() / (number + ".lake"));
    return WriteFile(name, *lake, err);
}

} // namespace paramdb::tools::check
