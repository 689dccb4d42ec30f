#include "tools/sources.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/read_file.h>
#include <paramdb/storage/parameter_lake.h>

#include "tools/databases.h"
#include "tools/file_path.h"
#include "tools/report.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <ostream>

namespace paramdb::tools {
namespace {

std::optional<std::uint64_t> ByteCount(std::string const& name) {
    std::error_code fault;
    auto const size = std::filesystem::file_size(PathOf(name), fault);
    return fault ? std::nullopt : std::optional<std::uint64_t>(size);
}

// Why nothing, or not all, could be read from a file. It is opened again for that, but not where this could
// wait for a writer that never comes.
std::string ReadingFault(std::string const& name, bool complete) {
    std::string const none = complete ? "the file is empty" : "the file cannot be read to its end";
    std::error_code ignored;
    if (std::filesystem::is_fifo(PathOf(name), ignored))
        return none;
    CFile file;
    CFileException fault;
    if (!file.Open(FromUtf8(name).c_str(), CFile::modeRead | CFile::typeBinary, &fault))
        return fault.what();
    try {
        if (!complete)
            static_cast<void>(ReadToEnd(file));
    } catch (CFileException const& reading) {
        return reading.what();
    }
    return none;
}

bool HoldsZero(LakeText text) {
    return text.Visit([](auto characters) {
        using Character = typename decltype(characters)::value_type;
        return characters.find(Character{}) != characters.npos;
    });
}

// Counts what the lake holds; an answer other than the empty text says why it is no parameter file.
std::string Examine(CLake const& lake, SourceFile& file) {
    bool has_key = false;
    for (auto line = std::next(lake.begin()); line != lake.end(); ++line) {
        if (HoldsZero(line->key_text()) || HoldsZero(line->value_text()) || HoldsZero(line->comment_text()))
            return "no parameter file: it holds binary data";
        has_key = has_key || line->is_named();
        file.sections += line->is_section() ? 1 : 0;
        ++file.lines;
    }
    return has_key ? "" : "no parameter file: none of its lines has a key";
}

class SourceReader {
public:
    // Reads the file into the lake, which is empty. Returns what is at fault, or nothing.
    std::string Read(std::string const& name, CLake& lake) {
        // A lake takes an empty name as the one it read last.
        bool complete = true;
        if (!name.empty())
            Measure([&] { complete = lake.read(FromUtf8(name)); });
        if (!complete || lake.empty())
            return ReadingFault(name, complete);
        SourceFile& file = m_sources.files.emplace_back(SourceFile{name, ByteCount(name)});
        return Examine(lake, file);
    }

    void Merge(CLake& other) {
        Measure([&] { CParameterLake::Lake().merge(other); });
    }

    Sources Take() { return std::move(m_sources); }

private:
    template <class Action>
    void Measure(Action action) {
        auto const start = std::chrono::steady_clock::now();
        action();
        m_sources.seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    Sources m_sources;
};

} // namespace

void AddFilesArgument(CLI::App& verb, std::vector<std::string>& files) {
    verb.add_option("FILE", files, "Parameter files; tables of a later file replace those of an earlier one")
        ->required()
        ->type_name("");
    AddDatabaseOptions(verb);
}

bool IsFile(std::string const& name) {
    if (IsConnection(name))
        return true;
    std::error_code fault;
    auto const status = std::filesystem::status(PathOf(name), fault);
    return std::filesystem::exists(status) && !std::filesystem::is_directory(status);
}

std::optional<Sources> ReadSources(std::vector<std::string> const& files, std::ostream& err) {
    CLake& lake = CParameterLake::Lake();
    lake.clear();
    SourceReader reader;
    bool at_fault = false;
    for (auto name = files.begin(); name != files.end(); ++name) {
        CLake other;
        bool const first = name == files.begin();
        std::string const fault = reader.Read(*name, first ? lake : other);
        if (!fault.empty()) {
            err << "paramdb: " << (name->empty() ? "\"\"" : Printable(FromUtf8(*name))) << ": " << fault
                << '\n';
            at_fault = true;
        } else if (!first && !at_fault) {
            reader.Merge(other);
        }
    }
    if (at_fault) {
        lake.clear();
        return std::nullopt;
    }
    return reader.Take();
}

} // namespace paramdb::tools
