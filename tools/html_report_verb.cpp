// `paramdb report`: loads parameter files and writes all that is in them as one page for a browser.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/platform/framework/replace_file.h>

#include "tools/drive_options.h"
#include "tools/file_path.h"
#include "tools/html_report/page.h"
#include "tools/html_report/report_data.h"
#include "tools/html_report/report_findings.h"
#include "tools/language_option.h"
#include "tools/loading.h"
#include "tools/report.h"
#include "tools/sources.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <ostream>

namespace paramdb::tools {
namespace {

std::string Speed(std::string const& text) {
    auto const speed = FiniteNumber(text);
    return speed && *speed > 0 ? "" : Printable(FromUtf8(text)) + " is no number above 0";
}

class HtmlReportVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "report", "Load parameter files and write all that is in them as one page for a browser");
        AddFilesArgument(verb, m_files);
        verb.add_option("-o,--output", m_output, "The page to write (default: to standard output)")
            ->type_name("FILE");
        AddLanguageOption(verb, m_language);
        verb.add_option_function<std::string>(
                "--rpm", [this](std::string const& text) { m_rpm = *FiniteNumber(text); },
                "The speed at which the page opens, in turns in a minute (default: 3000)")
            ->check(Speed)
            ->type_name("N");
        verb.footer(
            std::string("The page is one file that needs no other and no network. It holds every table,\n"
                        "searchable and sortable, the drive train, the bands of order definitions at a\n"
                        "speed that can be dragged, polygons, limits, keys and settings.\n\n"
                        "Examples:\n"
                        "  paramdb report gearbox.lake -o report.html\n"
                        "  paramdb report gearbox.lake customer.lake --lang de -o report.html\n\n") +
            ExitCodeHelp + "\nWhat `paramdb check` finds is a finding here, too.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        if (IsInput()) {
            err << "paramdb: " << ShownOutput() << ": it is one of the files to read\n";
            return ExitCode::NoLoad;
        }
        auto const context = check::CheckContext::Make(m_files, err);
        if (!context)
            return ExitCode::NoLoad;
        for (check::LoadMessage const& message : context->Messages())
            err << ToUtf8(message.text);
        if (context->IsRefused())
            return ExitCode::NoLoad;
        auto const findings = FindingsOf(*context);
        Load const& load = context->LoadInfo();
        LanguageInForce const language(m_language);
        std::string page(PageHead());
        page.append(ReportData({.load = load, .findings = findings, .rpm = m_rpm})).append(PageTail());
        if (m_output.empty())
            out << page;
        else if (!Write(page, *load.tables, findings.size(), out, err))
            return ExitCode::NoLoad;
        return findings.empty() ? ExitCodeOf(load) : ExitCode::Findings;
    }

private:
    std::string ShownOutput() const { return Printable(FromUtf8(m_output)); }

    bool IsInput() const {
        std::error_code ignored; // what is not there is no input
        for (std::string const& file : m_files)
            if (!m_output.empty() && std::filesystem::equivalent(PathOf(file), PathOf(m_output), ignored))
                return true;
        return false;
    }

    bool Write(std::string const& page, TableTotals const& totals, std::size_t findings, std::ostream& out,
               std::ostream& err) const {
        std::wstring fault;
        if (!ReplaceFileWith(FromUtf8(m_output), page, fault)) {
            err << "paramdb: " << ShownOutput() << ": " << Printable(fault) << '\n';
            return false;
        }
        out << ShownOutput() << ": " << Grouped(totals.rows) << " rows in " << totals.tables << " tables, "
            << (findings == 0 ? "no" : Grouped(findings)) << (findings == 1 ? " finding, " : " findings, ")
            << Grouped(page.size()) << " bytes\n";
        return true;
    }

    std::vector<std::string> m_files;
    std::string m_output;
    std::optional<CLibMgr::Language> m_language;
    float m_rpm = 3000;
};

} // namespace

std::unique_ptr<Verb> MakeHtmlReportVerb() {
    return std::make_unique<HtmlReportVerb>();
}

} // namespace paramdb::tools
