// `paramdb polygons`: loads parameter files and lists the polygons and the keys that they judge.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/loading.h"
#include "tools/polygon_listing.h"
#include "tools/sources.h"
#include "tools/table_names.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class PolygonsVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "polygons", "Load parameter files and list the polygons and the keys that they judge");
        AddFilesArgument(verb, m_files);
        verb.add_option("-k,--key", m_key,
                        "Only what judges these keys: mode/instrument/channel/location/parameter/signal")
            ->type_name("KEY");
        AddFormatOption(verb, m_format);
        verb.footer(KeyPatternHelp +
                    std::string("\n"
                                "Example:\n"
                                "  paramdb polygons gearbox.lake --key '11..12/*/*/*/1076'\n\n") +
                    ExitCodeHelp + "\nThat there is nothing to list is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        TableDescription const& table = *FindTable("IpParamAndStore"); // which has the keys
        std::wstring const key = FromUtf8(m_key.value_or(""));
        auto const pattern = KeyPattern::Parse(key, table.key_columns);
        if (auto const* const fault = std::get_if<KeyFault>(&pattern)) {
            err << "paramdb: " << KeyFaultText(table, key, *fault);
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(m_files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        KeyPattern const* const chosen = m_key ? &std::get<KeyPattern>(pattern) : nullptr;
        if (PrintPolygons(out, CQtParamInstance(), chosen, m_format) > 0)
            return ExitCodeOf(*load);
        err << "paramdb: "
            << (m_key ? "no polygon judges a key of " + Printable(key) : "there are no polygons") << '\n';
        return ExitCode::Findings;
    }

private:
    std::vector<std::string> m_files;
    std::optional<std::string> m_key;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakePolygonsVerb() {
    return std::make_unique<PolygonsVerb>();
}

} // namespace paramdb::tools
