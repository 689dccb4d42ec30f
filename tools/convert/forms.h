// The kinds of files that hold parameters, and reading and writing each of them.
//
//   lake    the text file that loads read; docs/lake_format.md
//   sea     the text file of a CResourceSea: a list for each table, with lines as in a lake, and a value with
//           index 0 for each part of the version and each named text
//   JSON    one object: {"version": {"major", "minor"}, "texts": {"learn_file", "calib_file", "base_type",
//           "alias_type"}, "tables": {TAG: [{COLUMN: value, ...}, ...], ...}}, each part left out where there
//           is none. 64-bit numbers that a double cannot hold, nan and infinities are texts.
//   CSV     a folder with one file for each table, named by its tag without brackets, with the names of the
//           columns as its first line, and a file `values.csv` with the columns key and value for the rest.
//           UTF-8; quotes and line ends after RFC 4180.
//
// Numbers have the shortest form from which the same bits can be read again.
#pragma once

#include "tools/convert/parameter_set.h"
#include "tools/rewrite/lake_proof.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace paramdb::tools {

enum class FileKind { Lake, Sea, Json, Csv };

// The files of a folder by their names.
using FolderBytes = std::map<std::string, std::string>;

// What a source holds that a ParameterSet has no place for.
enum class LossKind {
    Comments,   // that people wrote
    Superseded, // lines that a repeated key hides
    Unknown,    // what no table and no load reads
    Surplus,    // what stands behind the last field of a row, or behind a value
    Faulty,     // rows that cannot be read
};
inline constexpr std::size_t LossKinds = 5;

// Where something stands, to be put behind the name of the source: ":12", "/TMode.csv:3" or nothing.
struct Finding {
    std::string place;
    std::string text;
    bool operator==(Finding const&) const = default;
};

struct Loss {
    LossKind kind;
    Finding finding;
    std::size_t count = 1;
    bool operator==(Loss const&) const = default;
};

struct ReadResult {
    ParameterSet parameters;
    std::vector<Loss> losses;
    std::vector<Finding> faults; // with any of them the parameters are of no use
    TableContents tables;        // as the library itself reads the source
    // Whether the library reads rows that the parameters lack: a sea line that cannot be read in full is a
    // row all the same.
    bool has_partial_rows = false;
};

ReadResult ReadLakeForm(std::string_view bytes);
ReadResult ReadSeaForm(std::string_view bytes);
ReadResult ReadJsonForm(std::string_view bytes);
ReadResult ReadCsvForm(FolderBytes const& files);

// Whether a folder of tables has a file of that name.
bool IsCsvFile(std::string const& name);

// Each writes all that it can; what the kind cannot hold is told as a fault.
std::string WriteLakeForm(ParameterSet const& parameters, std::vector<std::string>& faults);
std::string WriteSeaForm(ParameterSet const& parameters, std::vector<std::string>& faults);
std::string WriteJsonForm(ParameterSet const& parameters, std::vector<std::string>& faults);
FolderBytes WriteCsvForm(ParameterSet const& parameters, std::vector<std::string>& faults);

} // namespace paramdb::tools
