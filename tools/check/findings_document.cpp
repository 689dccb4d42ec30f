#include "tools/check/findings_document.h"

#include <paramdb/platform/core/utf8.h>

#include "tools/report.h"

#include <algorithm>

namespace paramdb::tools::check {
namespace {

// Each paragraph in lines of at most 116 characters.
std::string Wrapped(std::string_view text) {
    constexpr std::size_t width = 116;
    std::string result;
    std::size_t column = 0;
    while (!text.empty()) {
        std::size_t const end = std::min(text.find_first_of(" \n"), text.size());
        std::string_view const word = text.substr(0, end);
        if (column > 0 && column + 1 + word.size() > width) {
            result += '\n';
            column = 0;
        }
        if (column > 0) {
            result += ' ';
            ++column;
        }
        result += word;
        column += word.size();
        if (end < text.size() && text[end] == '\n') {
            result += '\n';
            column = 0;
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result + '\n';
}

// Characters that cannot be seen are shown as such; tabs and line ends stay.
std::string ShownExample(std::string_view example) {
    std::string text;
    while (!example.empty()) {
        std::size_t const end = std::min(example.find_first_of("\t\n"), example.size());
        text += Printable(FromUtf8(example.substr(0, end)));
        if (end < example.size())
            text += example[end];
        example.remove_prefix(std::min(end + 1, example.size()));
    }
    return text;
}

constexpr char const* Introduction =
    "# Findings\n"
    "\n"
    "`paramdb check FILE...` tells in one pass what is wrong with parameter files, or looks as if it were. A "
    "finding\n"
    "has a code, by which it is explained here and by `paramdb check --explain CODE`:\n"
    "\n"
    "| Family | About |\n"
    "|---|---|\n"
    "| P1.. | the file, its sections, its characters, the load as a whole |\n"
    "| P2.. | the rows of tables |\n"
    "| P3.. | references from one row to another |\n"
    "| P4.. | what is derived from the tables |\n"
    "\n"
    "An error is a fault in the data: something is lost, or the load refuses it. A warning is something that "
    "is read\n"
    "otherwise than it looks, or is of no use. A note tells what may well be meant. The exit code is 1 if "
    "there is an\n"
    "error, or with `--strict` a warning; 2 if the files cannot be read or loaded; else 0.\n"
    "\n"
    "What is meant as it is can be disabled: for one run with `--disable CODE`, and in the file with a "
    "comment.\n"
    "\n"
    "| Comment | For which lines |\n"
    "|---|---|\n"
    "| `; paramdb: disable P111 P204` | the next line that is no comment; the whole section if that opens "
    "one |\n"
    "| `; paramdb: disable P204 for 11/1` | in them the rows with these keys, as `paramdb show` takes them "
    "|\n"
    "| `} ; paramdb: disable P204` | the section that the line closes |\n"
    "| `; paramdb: disable-file P112` | the whole file, wherever the comment stands |\n"
    "\n"
    "A code may be given by its name, and `all` stands for every code. Inside of a section a comment is read "
    "as a row\n"
    "(P202), so such comments stand outside.\n";

} // namespace

std::string CodeText(Code const& code) {
    std::string severity = SeverityWord(code.severity);
    severity.front() = static_cast<char>(severity.front() - 'a' + 'A');
    std::string text = "## " + std::string(code.code) + ' ' + std::string(code.name) + "\n\n";
    text += Wrapped("**" + severity + ".** " + std::string(code.title) + ".") + '\n';
    text += Wrapped(code.explanation) + "\n```\n" + ShownExample(code.example) + "```\n\n";
    return text + Wrapped("**Remedy.** " + std::string(code.remedy));
}

std::string FindingsDocument() {
    std::string text = Introduction;
    for (Code const& code : Codes())
        text += '\n' + CodeText(code);
    return text;
}

} // namespace paramdb::tools::check
