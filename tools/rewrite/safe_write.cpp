#include "tools/rewrite/safe_write.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/replace_file.h>

#include "tools/file_path.h"
#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"

#include <filesystem>
#include <ostream>
#include <system_error>

namespace paramdb::tools {
namespace {

bool IsKept(std::filesystem::path const& path) {
    std::error_code ignored;
    auto const status = std::filesystem::status(path, ignored);
    return std::filesystem::is_regular_file(status) || std::filesystem::is_directory(status);
}

} // namespace

std::string SameFile(std::string const& target, std::vector<std::string> const& inputs) {
    auto const path = PathOf(target);
    if (IsKept(path))
        for (std::string const& input : inputs) {
            std::error_code fault;
            if (std::filesystem::equivalent(path, PathOf(input), fault) && !fault)
                return input;
        }
    return "";
}

bool MayWrite(std::string const& target, std::vector<std::string> const& inputs, bool may_be_input,
              std::ostream& err) {
    std::error_code ignored;
    std::string fault;
    if (target.empty())
        fault = "no name of a file";
    else if (std::filesystem::is_directory(PathOf(target), ignored))
        fault = "is a folder";
    else if (auto const input = may_be_input ? "" : SameFile(target, inputs); !input.empty())
        fault = "is " + (input == target ? "an input" : "the input " + ShownName(input)) +
                "; --force overwrites it";
    if (fault.empty())
        return true;
    err << "paramdb: " << ShownName(target) << ": " << fault << '\n';
    return false;
}

bool WriteFile(std::string const& target, std::string_view bytes, std::ostream& err) {
    std::wstring error;
    if (ReplaceFileWith(FromUtf8(target), bytes, error))
        return true;
    err << "paramdb: " << ShownName(target) << ": " << Printable(error) << '\n';
    return false;
}

} // namespace paramdb::tools
