// `paramdb convert`: parameters from one kind of file to another.
#include "tools/convert/conversion.h"
#include "tools/databases.h"
#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/message_list.h"
#include "tools/rewrite/safe_write.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <map>
#include <ostream>

namespace paramdb::tools {
namespace {

// Of each sort of faults or losses no more than this are told.
constexpr std::size_t MostTold = 10;

// In the order of LossKind.
constexpr std::array<char const*, LossKinds> LossNames{"comments", "superseded", "unknown", "surplus",
                                                       "faulty"};

class ConvertVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb =
            *command.add_subcommand("convert", "Convert parameters between lake, sea, JSON and CSV");
        verb.add_option("IN", m_input, "The file to read, or the folder of CSV files")
            ->required()
            ->type_name("");
        verb.add_option("OUT", m_output, "The file or folder to write")->required()->type_name("");
        AddDatabaseOptions(verb);
        AddKindOption(verb, "--from", m_from, "The kind of IN (default: as its name tells)");
        AddKindOption(verb, "--to", m_to, "The kind of OUT (default: as its name tells)");
        verb.add_option("--drop", m_dropped,
                        "Leave out what OUT has no place for: comments, superseded, unknown, surplus or "
                        "faulty; may be given more than once")
            ->check(CLI::IsMember(std::vector<std::string>(LossNames.begin(), LossNames.end())))
            ->allow_extra_args(false)
            ->type_name("WHAT");
        verb.add_flag("--lossy", m_lossy, "Leave out all of these");
        verb.add_flag("--force", m_force,
                      "Overwrite OUT even if it is IN, or a folder that holds tables already");
        verb.footer(
            "Kinds: lake, sea and json by their extensions, csv for a folder, which gets a file for each "
            "table\n"
            "and values.csv for version and named texts.\n"
            "\n"
            "Numbers keep every bit, rows their order. What would be lost is told and nothing is written,\n"
            "unless it may be dropped: comments, superseded lines (replaced sections, repeated keys), "
            "unknown\n"
            "ones (no table reads them), surplus text behind rows and values, faulty rows. Before anything "
            "is\n"
            "written the result is proven to load as IN does.\n"
            "\n"
            "Examples:\n"
            "  paramdb convert gearbox.lake gearbox.json --drop comments\n"
            "  paramdb convert gearbox.lake tables/ --drop comments\n"
            "\n"
            "Exit codes:\n"
            "  0  converted\n"
            "  2  nothing written: wrong arguments, a file that cannot be read or written, a loss");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const from = KindOf(m_from, m_input, "--from", err);
        auto const to = KindOf(m_to, m_output, "--to", err);
        if (!from || !to)
            return ExitCode::NoLoad;
        bool const may_write = *to == FileKind::Csv ? MayWriteFolder(m_output, {m_input}, m_force, err)
                                                    : MayWrite(m_output, {m_input}, m_force, err);
        if (!may_write)
            return ExitCode::NoLoad;
        auto const content = ReadContent(*from, m_input, err);
        if (!content)
            return ExitCode::NoLoad;

        MessageList const unseen;
        ReadResult const source = ReadForm(*from, *content);
        if (!TellFaults(source, err) || !TellLosses(source.losses, err))
            return ExitCode::NoLoad;
        std::vector<std::string> faults;
        FormContent const result = WriteForm(*to, source.parameters, faults);
        if (!faults.empty()) {
            Tell(m_input, faults, err);
            return ExitCode::NoLoad;
        }
        if (!ReadsAs(*to, result, source)) {
            err << "paramdb: " << ShownName(m_output)
                << ": would not load as the source does; nothing was written\n";
            return ExitCode::NoLoad;
        }
        if (!WriteContent(m_output, result, err))
            return ExitCode::NoLoad;
        Report(source, out);
        return ExitCode::Clean;
    }

private:
    static void AddKindOption(CLI::App& verb, std::string const& name, std::optional<FileKind>& kind,
                              std::string const& help) {
        static std::map<std::string, FileKind> const kinds{{"lake", FileKind::Lake},
                                                           {"sea", FileKind::Sea},
                                                           {"json", FileKind::Json},
                                                           {"csv", FileKind::Csv}};
        verb.add_option_function<std::string>(
                name, [&kind](std::string const& word) { kind = kinds.at(word); }, help)
            ->check(CLI::IsMember({"lake", "sea", "json", "csv"}))
            ->type_name("KIND");
    }

    static std::optional<FileKind> KindOf(std::optional<FileKind> given, std::string const& name,
                                          std::string const& option, std::ostream& err) {
        auto const kind = given ? given : KindOfName(name);
        if (!kind)
            err << "paramdb: " << ShownName(name)
                << ": the name does not tell the kind of file; give it with " << option
                << " lake, sea, json or csv\n";
        return kind;
    }

    // Tells lines "paramdb: NAME: text", but not too many of them.
    static void Tell(std::string const& name, std::vector<std::string> const& texts, std::ostream& err) {
        for (std::size_t index = 0; index < std::min(texts.size(), MostTold); ++index)
            err << "paramdb: " << ShownName(name) << ": " << texts[index] << '\n';
        if (texts.size() > MostTold)
            err << "paramdb: " << ShownName(name) << ": and " << Grouped(texts.size() - MostTold)
                << " more\n";
    }
    void TellFindings(std::vector<Finding> const& findings, std::ostream& err) const {
        for (std::size_t index = 0; index < std::min(findings.size(), MostTold); ++index)
            err << "paramdb: " << ShownName(m_input + findings[index].place) << ": " << findings[index].text
                << '\n';
        if (findings.size() > MostTold)
            Tell(m_input, {"and " + Grouped(findings.size() - MostTold) + " more"}, err);
    }

    bool TellFaults(ReadResult const& source, std::ostream& err) const {
        TellFindings(source.faults, err);
        auto const& parameters = source.parameters;
        bool const is_empty =
            parameters.tables.empty() &&
            std::ranges::none_of(parameters.version, [](auto const& part) { return part.has_value(); }) &&
            std::ranges::none_of(parameters.texts, [](auto const& text) { return text.has_value(); });
        if (source.faults.empty() && is_empty)
            err << "paramdb: " << ShownName(m_input) << ": holds no table and no value\n";
        return source.faults.empty() && !is_empty;
    }

    bool IsDropped(LossKind kind) const {
        return m_lossy ||
               std::ranges::find(m_dropped, LossNames[static_cast<std::size_t>(kind)]) != m_dropped.end();
    }

    // True if nothing is lost that was not asked for.
    bool TellLosses(std::vector<Loss> const& losses, std::ostream& err) const {
        std::string options;
        for (std::size_t kind = 0; kind < LossKinds; ++kind) {
            std::vector<Finding> findings;
            for (Loss const& loss : losses)
                if (loss.kind == static_cast<LossKind>(kind) && !IsDropped(loss.kind))
                    findings.push_back(loss.finding);
            TellFindings(findings, err);
            if (!findings.empty())
                options += std::string(" --drop ") + LossNames[kind];
        }
        if (!options.empty())
            err << "paramdb: " << ShownName(m_output)
                << ": not written, since this would be lost; it is left out with" << options << '\n';
        return options.empty();
    }

    void Report(ReadResult const& source, std::ostream& out) const {
        auto const tables = source.parameters.tables.size();
        auto const rows = source.parameters.RowCount();
        out << ShownName(m_output) << ": " << Grouped(tables)
            << (tables == 1 ? " table with " : " tables with ") << Grouped(rows)
            << (rows == 1 ? " row" : " rows");
        std::string left_out;
        for (std::size_t kind = 0; kind < LossKinds; ++kind) {
            std::size_t count = 0;
            for (Loss const& loss : source.losses)
                count += loss.kind == static_cast<LossKind>(kind) ? loss.count : 0;
            if (count > 0)
                left_out += (left_out.empty() ? "" : ", ") + Grouped(count) + ' ' + LossNames[kind];
        }
        out << (left_out.empty() ? "" : "; left out: " + left_out) << '\n';
    }

    std::string m_input;
    std::string m_output;
    std::optional<FileKind> m_from;
    std::optional<FileKind> m_to;
    std::vector<std::string> m_dropped;
    bool m_lossy = false;
    bool m_force = false;
};

} // namespace

std::unique_ptr<Verb> MakeConvertVerb() {
    return std::make_unique<ConvertVerb>();
}

} // namespace paramdb::tools
