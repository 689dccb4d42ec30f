// `paramdb dump`: loads parameter files and prints tables in the form in which the library protocols them.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/messages.h"
#include "tools/quiet.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/table_names.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <ostream>

namespace paramdb::tools {
namespace {

constexpr int ProtocolCategory = 8;

// What is wrong with the text as a limit; nothing if it is one.
std::string WrongLimit(std::string const& text) {
    int limit = 0;
    auto const [end, fault] = std::from_chars(text.data(), text.data() + text.size(), limit);
    bool const is_limit = fault == std::errc() && end == text.data() + text.size() && limit >= 0;
    return is_limit ? "" : Printable(FromUtf8(text)) + " is no number from 0 to 2147483647";
}

// Sends the lines of the protocol to one stream and every other message to another while it lives.
class ProtocolPrinter {
public:
    ProtocolPrinter(std::ostream& out, std::ostream& err)
        : m_previous(PrWin::SetSink([&](int category, int style, std::wstring const& text) {
              bool const is_line = category == ProtocolCategory && style == PlainStyle;
              if (is_line || !IsQuiet(err))
                  (is_line ? out : err) << ToUtf8(text);
          })) {}
    ProtocolPrinter(ProtocolPrinter const&) = delete;
    ProtocolPrinter& operator=(ProtocolPrinter const&) = delete;
    ~ProtocolPrinter() { PrWin::SetSink(std::move(m_previous)); }

private:
    PrWin::Sink m_previous;
};

class DumpVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "dump", "Load parameter files and print tables line by line, as in the protocol window");
        AddFilesArgument(verb, m_files);
        verb.add_option("-t,--table", m_tags,
                        "A table to print, as <TMode>, TMode or Mode; may be given more than once (default: "
                        "all tables)")
            ->allow_extra_args(false)
            ->type_name("TAG");
        verb.add_option("-n,--limit", m_limit,
                        "Print N + 1 rows of each table at most, then \"... more ...\"; 0 for all rows "
                        "(default: 0)")
            ->check(WrongLimit)
            ->type_name("N");
        verb.footer(std::string("Example:\n"
                                "  paramdb dump gearbox.lake --table Mode --table Trigger --limit 10\n\n") +
                    ExitCodeHelp);
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const tables = Tables(err);
        if (tables.empty())
            return ExitCode::NoLoad;
        auto const load = LoadFiles(m_files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        ProtocolPrinter const printer(out, err);
        for (TableDescription const* table : tables)
            EntryOf(*table).table->DumpTable(m_limit);
        return ExitCodeOf(*load);
    }

private:
    // The tables to print; none if a tag is wrong.
    std::vector<TableDescription const*> Tables(std::ostream& err) const {
        std::vector<TableDescription const*> tables;
        bool at_fault = false;
        for (std::string const& tag : m_tags) {
            TableDescription const* const table = FindTable(tag);
            tables.push_back(table);
            if (table == nullptr) {
                err << "paramdb: " << UnknownTable(tag, "no such table");
                at_fault = true;
            }
        }
        if (at_fault)
            return {};
        if (m_tags.empty())
            for (TableDescription const& table : Catalogue())
                tables.push_back(&table);
        return tables;
    }

    std::vector<std::string> m_files;
    std::vector<std::string> m_tags;
    int m_limit = 0;
};

} // namespace

std::unique_ptr<Verb> MakeDumpVerb() {
    return std::make_unique<DumpVerb>();
}

} // namespace paramdb::tools
