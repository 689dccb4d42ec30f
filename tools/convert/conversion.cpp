#include "tools/convert/conversion.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/cfile.h>

#include "tools/databases.h"
#include "tools/file_path.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/safe_write.h"
#include "tools/temporary_folder.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <ostream>
#include <system_error>

namespace paramdb::tools {
namespace {

namespace fs = std::filesystem;

// The path of a folder without a separator at its end, and with links followed if it exists.
fs::path FolderPath(std::string const& name) {
    fs::path path = PathOf(name);
    std::error_code fault;
    if (auto const real = fs::canonical(path, fault); !fault)
        return real;
    return path.has_filename() ? path : path.parent_path();
}

std::string LowerExtension(std::string const& name) {
    std::string extension = NameOf(PathOf(name).extension());
    for (char& letter : extension)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return extension;
}

bool Complain(std::ostream& err, std::string const& name, std::string const& reason) {
    err << "paramdb: " << ShownName(name) << ": " << reason << '\n';
    return false;
}

std::optional<FolderBytes> ReadFolder(std::string const& name, std::ostream& err) {
    std::error_code fault;
    fs::directory_iterator entry(PathOf(name), fault);
    FolderBytes files;
    for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
        std::string const file = NameOf(entry->path().filename());
        if (LowerExtension(file) != ".csv")
            continue;
        std::string reason;
        auto bytes = ReadFileBytes(NameOf(entry->path()), reason);
        if (!bytes) {
            Complain(err, NameOf(entry->path()), reason);
            return std::nullopt;
        }
        files.emplace(file, *std::move(bytes));
    }
    if (fault) {
        Complain(err, name, fault.message());
        return std::nullopt;
    }
    return files;
}

// Lets a new folder take the place of the target, which keeps its own if it has one and that fails.
void Move(fs::path const& folder, fs::path const& target, std::error_code& fault) {
    std::error_code ignored;
    if (!fs::exists(target, ignored)) {
        fs::rename(folder, target, fault);
        return;
    }
    fs::path old = folder;
    old += ".old";
    fs::rename(target, old, fault);
    if (fault)
        return;
    fs::rename(folder, target, fault);
    if (fault)
        fs::rename(old, target, ignored);
    else
        fs::remove_all(old, ignored);
}

// Writes through to the medium. Throws CFileException.
void WriteNewFile(std::string const& name, std::string_view bytes) {
    CFile file(FromUtf8(name).c_str(), CFile::modeCreate | CFile::modeWrite | CFile::typeBinary);
    constexpr std::size_t largest_piece = std::size_t{1} << 30;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), largest_piece)))
        file.Write(bytes.data(), static_cast<unsigned>(std::min(bytes.size(), largest_piece)));
    file.Flush();
    file.Close();
}

bool WriteFolder(std::string const& target, FolderBytes const& files, std::ostream& err) {
    fs::path const path = FolderPath(target);
    std::error_code fault;
    TemporaryFolder const temporary(path.parent_path(), fault);
    if (fault)
        return Complain(err, target, fault.message());
    try {
        for (auto const& [name, bytes] : files)
            WriteNewFile(NameOf(temporary.path() / PathOf(name)), bytes);
    } catch (CFileException const& error) {
        return Complain(err, target, error.what());
    }
    Move(temporary.path(), path, fault);
    return !fault || Complain(err, target, fault.message());
}

} // namespace

std::optional<FileKind> KindOfName(std::string const& name) {
    if (IsConnection(name))
        return FileKind::Lake;
    std::error_code ignored;
    if (fs::is_directory(PathOf(name), ignored) || !PathOf(name).has_filename())
        return FileKind::Csv;
    static std::map<std::string, FileKind> const kinds{{".lake", FileKind::Lake},
                                                       {".sea", FileKind::Sea},
                                                       {".json", FileKind::Json},
                                                       {".csv", FileKind::Csv}};
    auto const found = kinds.find(LowerExtension(name));
    return found == kinds.end() ? std::nullopt : std::optional(found->second);
}

std::optional<FormContent> ReadContent(FileKind kind, std::string const& name, std::ostream& err) {
    if (kind == FileKind::Csv) {
        std::error_code ignored;
        if (fs::exists(PathOf(name), ignored) && !fs::is_directory(PathOf(name), ignored)) {
            Complain(err, name, "is no folder, and CSV is a folder with a file for each table");
            return std::nullopt;
        }
        auto files = ReadFolder(name, err);
        return files ? std::optional<FormContent>(*std::move(files)) : std::nullopt;
    }
    if (IsConnection(name)) {
        auto lake = ReadRevisionAsLake(name, err);
        return lake ? std::optional<FormContent>(*std::move(lake)) : std::nullopt;
    }
    std::string reason;
    auto bytes = ReadFileBytes(name, reason);
    if (!bytes) {
        Complain(err, name, reason);
        return std::nullopt;
    }
    return *std::move(bytes);
}

ReadResult ReadForm(FileKind kind, FormContent const& content) {
    switch (kind) {
    case FileKind::Lake:
        return ReadLakeForm(std::get<std::string>(content));
    case FileKind::Sea:
        return ReadSeaForm(std::get<std::string>(content));
    case FileKind::Json:
        return ReadJsonForm(std::get<std::string>(content));
    case FileKind::Csv:
        break;
    }
    return ReadCsvForm(std::get<FolderBytes>(content));
}

FormContent WriteForm(FileKind kind, ParameterSet const& parameters, std::vector<std::string>& faults) {
    switch (kind) {
    case FileKind::Lake:
        return WriteLakeForm(parameters, faults);
    case FileKind::Sea:
        return WriteSeaForm(parameters, faults);
    case FileKind::Json:
        return WriteJsonForm(parameters, faults);
    case FileKind::Csv:
        break;
    }
    return WriteCsvForm(parameters, faults);
}

bool ReadsAs(FileKind kind, FormContent const& content, ReadResult const& source) {
    ReadResult const read = ReadForm(kind, content);
    auto set = TableSetOf(source.parameters);
    return read.faults.empty() && read.losses.empty() && read.parameters == source.parameters &&
           read.tables == ReadTables(set) &&
           (source.has_partial_rows || read.tables.rows == source.tables.rows);
}

bool MayWriteFolder(std::string const& target, std::vector<std::string> const& inputs, bool may_replace,
                    std::ostream& err) {
    std::error_code fault;
    if (target.empty())
        return Complain(err, target, "no name of a folder");
    fs::path const path = FolderPath(target);
    auto const status = fs::status(path, fault);
    if (!fs::exists(status))
        return true;
    if (!fs::is_directory(status))
        return Complain(err, target, "is no folder");
    if (auto const input = SameFile(target, inputs); !input.empty() && !may_replace)
        return Complain(err, target, "is the input; --force overwrites it");
    for (fs::directory_iterator entry(path, fault); !fault && entry != fs::directory_iterator();
         entry.increment(fault)) {
        if (!may_replace)
            return Complain(err, target, "is not empty; --force replaces the tables in it");
        if (!entry->is_regular_file(fault) || !IsCsvFile(NameOf(entry->path().filename())))
            return Complain(err, target,
                            "holds something else than tables: " +
                                ShownName(NameOf(entry->path().filename())));
    }
    return !fault || Complain(err, target, fault.message());
}

bool WriteContent(std::string const& target, FormContent const& content, std::ostream& err) {
    if (auto const* const files = std::get_if<FolderBytes>(&content))
        return WriteFolder(target, *files, err);
    return WriteFile(target, std::get<std::string>(content), err);
}

} // namespace paramdb::tools
