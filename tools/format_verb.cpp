// `paramdb format`: parameter files in their canonical layout.
#include "tools/databases.h"
#include "tools/file_path.h"
#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/layout.h"
#include "tools/rewrite/safe_write.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <ostream>

namespace paramdb::tools {
namespace {

bool IsRegularFile(std::string const& name) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(PathOf(name), ignored);
}

class FormatVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb =
            *command.add_subcommand("format", "Rewrite parameter files in their canonical layout");
        verb.add_option("FILE", m_files, "Parameter files, each by itself")->required()->type_name("");
        AddDatabaseOptions(verb);
        CLI::Option* const check = verb.add_flag(
            "--check", m_check, "Write nothing, and print the names of files that are not in that layout");
        verb.add_flag("--stdout", m_to_output, "Print the one FILE in its layout and leave it as it is")
            ->excludes(check);
        verb.footer(
            "The layout: a tab of indent for each section; one blank behind the colon of a key, between the\n"
            "fields of a row, and around the semicolon of a comment; quotes around texts that are empty or "
            "hold\n"
            "a blank or one of : ; { }. Order, comments, blank lines and numbers stay as they are written, "
            "and\n"
            "so do line ends, all as most of them. Before anything is written the new text is proven to load "
            "as\n"
            "the old one does.\n"
            "\n"
            "Examples:\n"
            "  paramdb format gearbox.lake customer.lake\n"
            "  paramdb format --stdout gearbox.lake\n"
            "\n"
            "Exit codes:\n"
            "  0  all files are in their layout now\n"
            "  1  with --check: a file is not\n"
            "  2  wrong arguments, or a file that cannot be read or written");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        if (m_to_output && m_files.size() != 1) {
            err << "paramdb: --stdout takes one file\n";
            return ExitCode::NoLoad;
        }
        auto code = ExitCode::Clean;
        for (std::string const& name : m_files)
            code = std::max(code, FormatFile(name, out, err));
        return code;
    }

private:
    ExitCode FormatFile(std::string const& name, std::ostream& out, std::ostream& err) const {
        auto const bytes = ReadParameterFile(name, err);
        if (!bytes)
            return ExitCode::NoLoad;
        if (!HasLayout(*bytes)) {
            err << "paramdb: " << ShownName(name) << ": sections stand deeper than " << MostLevels
                << " levels; the file was left as it is\n";
            return ExitCode::NoLoad;
        }
        std::string const text = CanonicalLayout(*bytes);
        bool const is_canonical = text == *bytes;
        if (!is_canonical && !IsSameButForLayout(*bytes, text)) {
            err << "paramdb: " << ShownName(name)
                << ": the canonical layout would not load as the file does; it was left as it is\n";
            return ExitCode::NoLoad;
        }
        if (m_to_output) {
            out << text;
            return ExitCode::Clean;
        }
        if (is_canonical)
            return ExitCode::Clean;
        if (m_check) {
            out << ShownName(name) << '\n';
            return ExitCode::Findings;
        }
        if (!IsRegularFile(name)) {
            err << "paramdb: " << ShownName(name) << ": is no regular file; --stdout prints its layout\n";
            return ExitCode::NoLoad;
        }
        if (!WriteFile(name, text, err))
            return ExitCode::NoLoad;
        std::size_t const changed = CountChangedLines(*bytes, text);
        out << ShownName(name) << ": " << Grouped(changed) << (changed == 1 ? " line" : " lines")
            << " changed\n";
        return ExitCode::Clean;
    }

    std::vector<std::string> m_files;
    bool m_check = false;
    bool m_to_output = false;
};

} // namespace

std::unique_ptr<Verb> MakeFormatVerb() {
    return std::make_unique<FormatVerb>();
}

} // namespace paramdb::tools
