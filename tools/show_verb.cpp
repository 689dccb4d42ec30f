// `paramdb show`: loads parameter files and prints rows of a table with the names of its columns.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/storage/line_origins.h>
#include <paramdb/storage/parameter_lake.h>

#include "tools/key_pattern.h"
#include "tools/loading.h"
#include "tools/report.h"
#include "tools/row_origins.h"
#include "tools/row_printer.h"
#include "tools/show_words.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>
#include <ostream>

namespace paramdb::tools {
namespace {

class ShowFormatter : public CLI::Formatter {
public:
    std::string make_usage(CLI::App const*, std::string name) const override {
        return "Usage: " + name + " [OPTIONS] FILE... TAG [KEY]\n";
    }
};

class ShowVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "show", "Load parameter files and print rows of a table with the names of its columns");
        verb.formatter(std::make_shared<ShowFormatter>());
        verb.add_option("FILE", m_words,
                        "Parameter files as for load, then a table as <TMode>, TMode or Mode, then a key")
            ->required()
            ->type_name("");
        verb.add_option("-t,--table", m_tag, "The table; all words are files then")->type_name("TAG");
        verb.add_option("-k,--key", m_key, "The key, where it is no word")->type_name("KEY");
        AddRowFormatOption(verb);
        verb.add_flag("--origin", m_origin, "Show with each row the file and line it comes from");

        verb.footer(KeyPatternHelp +
                    std::string("\n"
                                "Examples:\n"
                                "  paramdb show gearbox.lake Mode\n"
                                "  paramdb show gearbox.lake customer.lake RotorSpeed '1..6/2' --format csv\n"
                                "  paramdb show gearbox.lake customer.lake Mode 11 --origin\n"

                                "\n") +
                    ExitCodeHelp + "\nThat there is no row to show is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        std::string fault;
        auto const words = Words(fault);
        if (!fault.empty()) {
            err << "paramdb: " << fault;
            return ExitCode::NoLoad;
        }
        std::wstring const key = FromUtf8(words.key.value_or(""));
        auto const pattern = KeyPattern::Parse(key, words.table->key_columns);
        if (auto const* const key_fault = std::get_if<KeyFault>(&pattern)) {
            err << "paramdb: " << KeyFaultText(*words.table, key, *key_fault);
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(words.files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        CatalogueEntry const& entry = EntryOf(*words.table);
        if (PrintRows(out, *words.table, *entry.rows, std::get<KeyPattern>(pattern), m_format,
                      m_origin ? OriginsOf(entry, *load) : RowOriginOf()) == 0) {
            err << "paramdb: " << TagOf(*words.table)
                << (words.key ? ": no row has the key " + Printable(key) : ": the table has no rows") << '\n';
            return ExitCode::Findings;
        }
        return ExitCodeOf(*load);
    }

private:
    void AddRowFormatOption(CLI::App& verb) {
        static std::map<std::string, RowFormat> const formats{
            {"text", RowFormat::Text}, {"json", RowFormat::Json}, {"csv", RowFormat::Csv}};
        verb.add_option_function<std::string>(
                "--format", [this](std::string const& name) { m_format = formats.at(name); },
                "How the rows are printed (default: text)")
            ->check(CLI::IsMember({"text", "json", "csv"}))
            ->type_name("FORM");
    }

    static RowOriginOf OriginsOf(CatalogueEntry const& table, Load const& load) {
        CLake const& lake = CParameterLake::Lake();
        auto const rows = std::make_shared<RowOrigins const>(table, lake);
        auto const lines = std::make_shared<LineOrigins const>(lake);
        return [&load, rows, lines](std::size_t row) -> std::optional<RowOrigin> {
            CLakeNode const* const line = rows->Line(row);
            auto const origin = line != nullptr ? lines->Find(*line) : std::nullopt;
            if (!origin)
                return std::nullopt;
            return RowOrigin{load.sources.files[origin->file].name, origin->line};
        };
    }

    // What the command line asks for; not of use if there is a fault.
    ShowWords Words(std::string& fault) const {
        ShowWords result;
        if (m_tag) {
            result = {.files = m_words, .table = FindTable(*m_tag), .key = {}};
            if (result.table == nullptr)
                fault = UnknownTable(*m_tag, "no such table");
        } else {
            auto split = SplitShowWords(m_words);
            if (auto const* const text = std::get_if<std::string>(&split))
                fault = *text;
            else
                result = std::get<ShowWords>(std::move(split));
        }
        if (m_key && result.key)
            fault = "the KEY is given twice\n";
        else if (m_key)
            result.key = m_key;
        return result;
    }

    std::vector<std::string> m_words;
    std::optional<std::string> m_tag;
    std::optional<std::string> m_key;
    bool m_origin = false;
    RowFormat m_format = RowFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeShowVerb() {
    return std::make_unique<ShowVerb>();
}

} // namespace paramdb::tools
