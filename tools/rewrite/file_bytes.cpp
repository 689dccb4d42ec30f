#include "tools/rewrite/file_bytes.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/storage/lake_line.h>

#include "tools/databases.h"
#include "tools/report.h"

#include <ostream>

namespace paramdb::tools {

std::optional<std::string> ReadFileBytes(std::string const& name, std::string& fault) {
    try {
        CFile file;
        CFileException error;
        if (!file.Open(FromUtf8(name).c_str(), CFile::modeRead | CFile::shareDenyNone | CFile::typeBinary,
                       &error))
            throw CFileException(error);
        return ReadToEnd(file);
    } catch (CFileException const& error) {
        fault = error.what();
        return std::nullopt;
    }
}

std::string ParameterFileFault(std::string_view bytes) {
    if (bytes.empty())
        return "the file is empty";
    if (bytes.find('\0') != std::string_view::npos)
        return "no parameter file: it holds binary data";
    char const* const end = bytes.data() + bytes.size();
    for (char const* next = bytes.data(); next != end;)
        if (!TakeLine(next, end).key.empty())
            return "";
    return "no parameter file: none of its lines has a key";
}

std::optional<std::string> ReadParameterFile(std::string const& name, std::ostream& err) {
    if (IsConnection(name))
        return ReadRevisionAsLake(name, err);
    std::string fault;
    auto bytes = ReadFileBytes(name, fault);
    if (bytes)
        fault = ParameterFileFault(*bytes);
    if (fault.empty())
        return bytes;
    err << "paramdb: " << ShownName(name) << ": " << fault << '\n';
    return std::nullopt;
}

std::string ShownName(std::string const& name) {
    return name.empty() ? "\"\"" : Printable(FromUtf8(name));
}

} // namespace paramdb::tools
