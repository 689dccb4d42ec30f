// `paramdb db`: parameter sets and their revisions in SQL databases.
#include <paramdb/database/connection_text.h>
#include <paramdb/database/export_tables.h>
#include <paramdb/database/import_tables.h>
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/parameter_lake.h>
#include <paramdb/storage/parameter_table_set.h>

#include "tools/databases.h"
#include "tools/db/database_options.h"
#include "tools/db/db_reports.h"
#include "tools/db/set_file.h"
#include "tools/db/table_sources.h"
#include "tools/last_words.h"
#include "tools/loading.h"
#include "tools/messages.h"
#include "tools/report.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>

namespace paramdb::tools {

std::unique_ptr<Verb> MakeDiffVerb();

namespace {

using db::OptionsOfRun;

constexpr char ConnectionHelp[] =
    "CONNECTION is sqlite3:FILE or postgresql:OPTIONS, such as \"postgresql:host=db1 dbname=bench\",\n"
    "with #SET or #SET@REVISION behind it; without a revision the newest counts. A password stands in\n"
    "the environment (PGPASSWORD) or the password file, never here. Other verbs take such a\n"
    "connection wherever they take a FILE, with --cache and --timeout as here.\n\n";

std::string Footer(std::string const& examples) {
    return std::string(ConnectionHelp) + "Examples:\n" + examples + "\n" + ExitCodeHelp;
}

void AddConnection(CLI::App& verb, std::string& connection) {
    verb.add_option("CONNECTION", connection, "A database")
        ->required()
        ->type_name("")
        ->check([](std::string const& text) { return IsConnection(text) ? "" : text + " is no connection"; });
}

// `paramdb db list` and `paramdb db log`.
class ListVerb : public Verb {
public:
    enum class Kind { Sets, Revisions };
    explicit ListVerb(Kind kind) : m_kind(kind) {}

    CLI::App& AddTo(CLI::App& command) override {
        bool const is_list = m_kind == Kind::Sets;
        CLI::App& verb = *command.add_subcommand(
            is_list ? "list" : "log", is_list
                                          ? "List the sets of a database with their newest revisions"
                                          : "List the revisions of a set, or of all sets, the newest first");
        AddConnection(verb, m_connection);
        AddFormatOption(verb, m_format);
        db::AddTimeOut(verb);
        verb.footer(Footer(is_list ? "  paramdb db list sqlite3:bench.db\n"
                                   : "  paramdb db log \"postgresql:host=db1 dbname=bench#gearbox\"\n"));
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        MessageCollector const messages(err);
        auto const revisions = ParamDb::Revisions(FromUtf8(m_connection), OptionsOfRun().timeout);
        if (!revisions)
            return ExitCode::NoLoad;
        if (m_kind == Kind::Sets)
            db::PrintSets(out, *revisions, m_format);
        else
            db::PrintLog(out, *revisions, m_format);
        return ExitCode::Clean;
    }

private:
    Kind m_kind;
    std::string m_connection;
    ReportFormat m_format = ReportFormat::Text;
};

// `paramdb db import`: fetches a revision, checks it on the way, keeps a local copy and writes it as a file.
class ImportVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "import",
            "Read a revision, report what is wrong with it, keep a local copy and write it as a file");
        AddConnection(verb, m_connection);
        AddFormatOption(verb, m_format);
        db::AddTimeOutAndCache(verb);
        verb.add_option("-o,--output", m_output,
                        "A parameter file to write: lake, sea or JSON by its extension, CSV for a folder")
            ->type_name("OUT");
        verb.add_flag("--force", m_force, "Replace the tables in a folder OUT that holds some already");
        verb.add_flag("--strict", m_strict, "Let a single fault in the data make the import fail");
        verb.footer(
            Footer("  paramdb db import sqlite3:bench.db#gearbox@3 -o gearbox_3.lake\n"
                   "  paramdb db import \"postgresql:host=db1 dbname=bench#gearbox\" --cache gearbox.copy\n"
                   "  paramdb load sqlite3:gearbox.copy\n"));
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        if (!m_output.empty() && !db::MayWriteSet(m_output, m_force, err))
            return ExitCode::NoLoad;
        MessageCollector const messages(err);
        ParamDb::CDbTableSet set;
        auto const import = ParamDb::ImportTables(FromUtf8(m_connection), set,
                                                  {.timeout = OptionsOfRun().timeout,
                                                   .strict = m_strict,
                                                   .local_copy = FromUtf8(OptionsOfRun().local_copy)});
        if (!import || (!m_output.empty() && !db::WriteSet(m_output, m_connection, set, err)))
            return ExitCode::NoLoad;
        db::PrintImport(out, *import, m_format);
        return import->faults > 0 ? ExitCode::Findings : ExitCode::Clean;
    }

private:
    std::string m_connection;
    std::string m_output;
    ReportFormat m_format = ReportFormat::Text;
    bool m_force = false;
    bool m_strict = false;
};

// `paramdb db export`: files, or other revisions, into a database.
class ExportVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "export", "Load parameter files and add them to a database as a new revision");
        AddLastWordsArgument(verb, m_words, "CONNECTION");
        for (char const* const option : {"--timeout", "--cache"}) // of the files, if they are revisions
            verb.get_option(option)->group("Options");
        AddFormatOption(verb, m_format);
        verb.add_option("-m,--remark", m_remark, "What is new in the revision")->type_name("TEXT");
        verb.add_option("--who", m_who, "Who exports (default: the user and the host)")->type_name("NAME");
        verb.add_flag("--strict", m_strict, "Export nothing if the load of the files has findings");
        verb.add_flag("--foreign-keys", m_foreign_keys,
                      "Demand that each id is that of a row, unless it is -1; a database that is made by\n"
                      "this export demands it of all later ones");
        verb.footer(Footer(
            "  paramdb db export gearbox.lake customer.lake sqlite3:bench.db#gearbox -m \"New limits\"\n"
            "  paramdb db export sqlite3:bench.db#gearbox@3 sqlite3:bench.db#gearbox -m \"Back to 3\"\n"));
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const words = SplitLastWords(m_words, 1);
        if (!words) {
            err << "paramdb: a FILE is required before the CONNECTION\n";
            return ExitCode::NoLoad;
        }
        std::string const& connection = words->words.front();
        if (!IsConnection(connection)) {
            err << "paramdb: " << Printable(FromUtf8(connection)) << ": is no connection\n";
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(words->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        if (m_strict && ExitCodeOf(*load) != ExitCode::Clean) {
            err << "paramdb: nothing was exported, since the load has findings\n";
            return ExitCode::NoLoad;
        }
        auto const set = LoadedSet();
        MessageCollector const messages(err);
        auto const revision = ParamDb::ExportTables(set, FromUtf8(connection),
                                                    {.timeout = OptionsOfRun().timeout,
                                                     .who = FromUtf8(m_who),
                                                     .remark = FromUtf8(m_remark),
                                                     .foreign_keys = m_foreign_keys});
        if (!revision)
            return ExitCode::NoLoad;
        db::PrintExport(out, *revision, m_format);
        return ExitCodeOf(*load);
    }

private:
    // What was loaded, as it was read: the load adds virtual modes to its tables.
    static ParamDb::CDbTableSet LoadedSet() {
        if (auto& set = ParamDb::CParameterTableSet::TableSet(); !set.empty())
            return std::move(set);
        // The load has reported the rows that cannot be read.
        auto previous = PrWin::SetSink([](int, int, std::wstring const&) {});
        auto set = db::TableSetOf(CParameterLake::Lake());
        PrWin::SetSink(std::move(previous));
        return set;
    }

    std::vector<std::string> m_words;
    std::string m_remark;
    std::string m_who;
    bool m_strict = false;
    bool m_foreign_keys = false;
    ReportFormat m_format = ReportFormat::Text;
};

class DbVerb : public Verb {
public:
    DbVerb() {
        m_verbs.push_back(std::make_unique<ListVerb>(ListVerb::Kind::Sets));
        m_verbs.push_back(std::make_unique<ListVerb>(ListVerb::Kind::Revisions));
        m_verbs.push_back(std::make_unique<ImportVerb>());
        m_verbs.push_back(std::make_unique<ExportVerb>());
        m_verbs.push_back(MakeDiffVerb());
    }

    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand("db", "Parameter sets and their revisions in SQL databases");
        verb.require_subcommand(1);
        for (auto const& inner : m_verbs)
            m_parsers.push_back(&inner->AddTo(verb));
        verb.footer(Footer("  paramdb db log sqlite3:bench.db\n"
                           "  paramdb db diff sqlite3:bench.db#gearbox@3 sqlite3:bench.db#gearbox\n"));
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const parsed =
            std::find_if(m_parsers.begin(), m_parsers.end(), [](auto* parser) { return parser->parsed(); });
        return m_verbs[static_cast<std::size_t>(parsed - m_parsers.begin())]->Run(out, err);
    }

private:
    std::vector<std::unique_ptr<Verb>> m_verbs;
    std::vector<CLI::App*> m_parsers;
};

} // namespace

std::unique_ptr<Verb> MakeDbVerb() {
    return std::make_unique<DbVerb>();
}

} // namespace paramdb::tools
