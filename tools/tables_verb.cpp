// `paramdb tables`: loads parameter files and lists the tables.
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/table_listing.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>

namespace paramdb::tools {
namespace {

class TablesVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "tables", "Load parameter files and list the tables with their columns, rows and memory");
        AddFilesArgument(verb, m_files);
        AddFormatOption(verb, m_format);
        verb.add_flag_callback(
            "--with-rows", [this] { m_choice = TableChoice::WithRows; }, "List only tables that hold a row");
        verb.footer(std::string("Example:\n"
                                "  paramdb tables gearbox.lake --with-rows\n\n") +
                    ExitCodeHelp);
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const load = LoadFiles(m_files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        PrintTableListing(out, CQtParamInstance().Entries(), m_choice, m_format);
        return ExitCodeOf(*load);
    }

private:
    std::vector<std::string> m_files;
    ReportFormat m_format = ReportFormat::Text;
    TableChoice m_choice = TableChoice::All;
};

} // namespace

std::unique_ptr<Verb> MakeTablesVerb() {
    return std::make_unique<TablesVerb>();
}

} // namespace paramdb::tools
