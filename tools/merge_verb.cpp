// `paramdb merge`: several parameter files as one.
#include "tools/report.h"
#include "tools/rewrite/file_bytes.h"
#include "tools/rewrite/merge_report.h"
#include "tools/rewrite/merging.h"
#include "tools/rewrite/safe_write.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class MergeVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "merge", "Merge parameter files into one, and tell which table comes from which file");
        AddFilesArgument(verb, m_files);
        verb.add_option("-o,--output", m_output, "The file to write")->required()->type_name("OUT");
        verb.add_flag("--clean", m_clean,
                      "Leave out the lines that no reader finds any more: replaced sections and repeated "
                      "keys");
        verb.add_flag("--force", m_force, "Overwrite OUT even if it is one of the files");
        AddFormatOption(verb, m_format);
        verb.footer("All other lines are written byte for byte as they are, a blank line between two files.\n"
                    "\n"
                    "Example:\n"
                    "  paramdb merge gearbox.lake customer.lake -o merged.lake --clean\n"
                    "\n"
                    "Exit codes:\n"
                    "  0  merged\n"
                    "  2  nothing written: wrong arguments, a file that cannot be read, merged or written");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        if (!MayWrite(m_output, m_files, m_force, err))
            return ExitCode::NoLoad;
        std::vector<MergeInput> inputs;
        for (std::string const& name : m_files)
            if (auto bytes = ReadParameterFile(name, err))
                inputs.push_back({name, *std::move(bytes)});
        if (inputs.size() < m_files.size())
            return ExitCode::NoLoad;
        auto const faults = MergeFaults(inputs);
        for (std::string const& fault : faults)
            err << "paramdb: " << fault << '\n';
        if (!faults.empty())
            return ExitCode::NoLoad;

        Merged const merged = MergeFiles(inputs, m_clean ? MergeLines::WithoutSuperseded : MergeLines::All);
        if (!IsMergeOf(merged, inputs)) {
            err << "paramdb: " << ShownName(m_output)
                << ": the merged lines would not read as the files do; nothing was written\n";
            return ExitCode::NoLoad;
        }
        if (!WriteFile(m_output, merged.bytes, err))
            return ExitCode::NoLoad;
        PrintMergeReport(out, merged, inputs, m_output, m_format);
        return ExitCode::Clean;
    }

private:
    std::vector<std::string> m_files;
    std::string m_output;
    bool m_clean = false;
    bool m_force = false;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeMergeVerb() {
    return std::make_unique<MergeVerb>();
}

} // namespace paramdb::tools
