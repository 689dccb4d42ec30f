// `paramdb check`: tells everything that is wrong with parameter files in one pass.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/tables/load_progress.h>

#include "tools/check/check_report.h"
#include "tools/check/context.h"
#include "tools/check/findings_document.h"
#include "tools/check/rules.h"
#include "tools/check/suppression.h"
#include "tools/nearest_names.h"
#include "tools/progress_bar.h"
#include "tools/report.h"
#include "tools/terminal.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <iostream>
#include <map>
#include <optional>
#include <ostream>
#include <set>

namespace paramdb::tools {
namespace check {
namespace {

// Shows how far the rules have come, as the load does.
class CheckProgress {
public:
    CheckProgress(CheckContext const& context, std::ostream& err)
        : m_progress([this](wchar_t const* step, std::size_t done, std::size_t total) {
              if (m_bar)
                  m_bar->Show(step, done, total);
          }),
          m_scope(m_progress) {
        constexpr std::chrono::milliseconds delay(300);
        if (err.rdbuf() == std::cerr.rdbuf() && IsErrorTerminal())
            m_bar.emplace(err, delay);
        constexpr std::size_t passes = 2; // over the bytes and over the rows
        BeginProgress(L"check", passes * context.Lake().size());
    }

private:
    std::optional<ProgressBar> m_bar;
    LoadProgress m_progress;
    ProgressScope m_scope;
};

// What to tell about a word that is no code.
std::string UnknownCode(std::string const& word) {
    std::vector<std::wstring> texts;
    for (Code const& code : Codes()) {
        texts.push_back(FromUtf8(code.code));
        texts.push_back(FromUtf8(code.name));
    }
    std::vector<std::wstring_view> const names(texts.begin(), texts.end());
    std::vector<std::string> nearest;
    for (std::size_t const place : NearestNames(FromUtf8(word), names))
        nearest.push_back(ToUtf8(names[place]));
    return Printable(FromUtf8(word)) + ": no such code" + DidYouMean(nearest) + '\n';
}

class CheckVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "check", "Tell everything that is wrong with parameter files in one pass");
        verb.add_option("FILE", m_files, "Parameter files, which are merged in their order")->type_name("");
        verb.add_flag("--strict", m_strict, "Let warnings count as errors for the exit code");
        verb.add_option("--disable", m_disabled,
                        "Do not tell findings of this code; several have commas between")
            ->delimiter(',')
            ->allow_extra_args(false)
            ->type_name("CODE");
        static std::map<std::string, CheckFormat> const formats{{"text", CheckFormat::Text},
                                                                {"json", CheckFormat::Json},
                                                                {"sarif", CheckFormat::Sarif},
                                                                {"github", CheckFormat::Github}};
        verb.add_option_function<std::string>(
                "--format", [this](std::string const& name) { m_format = formats.at(name); },
                "How the findings are printed (default: text)")
            ->check(CLI::IsMember({"text", "json", "sarif", "github"}))
            ->type_name("FORM");
        verb.add_option("--explain", m_explained, "Explain a code, or all of them, and check nothing")
            ->type_name("CODE");
        verb.footer("A comment \"; paramdb: disable CODE\" before a section disables a code for it, and\n"
                    "\"; paramdb: disable-file CODE\" for the file.\n"
                    "\n"
                    "Examples:\n"
                    "  paramdb check gearbox.lake\n"
                    "  paramdb check gearbox.lake customer.lake --strict --disable P119\n"
                    "  paramdb check gearbox.lake --format sarif > gearbox.sarif\n"
                    "  paramdb check --explain P201\n"
                    "\n"
                    "Exit codes:\n"
                    "  0  no errors; with --strict no warnings either\n"
                    "  1  errors; with --strict warnings\n"
                    "  2  not checked as a whole: wrong arguments, an unreadable file, a refused version");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        if (!m_explained.empty())
            return Explain(out, err);
        std::set<Code const*> disabled;
        for (std::string const& word : m_disabled) {
            Code const* const code = FindCode(word);
            if (code == nullptr) {
                err << "paramdb: " << UnknownCode(word);
                return ExitCode::NoLoad;
            }
            disabled.insert(code);
        }
        if (m_files.empty()) {
            err << "FILE is required\nRun with --help for more information.\n";
            return ExitCode::NoLoad;
        }
        auto const context = CheckContext::Make(m_files, err);
        if (!context)
            return ExitCode::NoLoad;
        std::vector<Finding> findings = Check(*context, err);
        std::erase_if(findings, [&](Finding const& finding) { return disabled.contains(finding.code); });
        PrintFindings(out, *context, findings, m_format);
        if (context->IsRefused())
            return ExitCode::NoLoad;
        FindingCounts const counts = CountFindings(findings);
        return counts.errors > 0 || (m_strict && counts.warnings > 0) ? ExitCode::Findings : ExitCode::Clean;
    }

private:
    static std::vector<Finding> Check(CheckContext const& context, std::ostream& err) {
        CheckProgress const progress(context, err);
        FindingList findings;
        RunRules(context, findings);
        return Suppress(context, findings.Take());
    }

    ExitCode Explain(std::ostream& out, std::ostream& err) const {
        if (m_explained == "all") {
            out << FindingsDocument();
            return ExitCode::Clean;
        }
        Code const* const code = FindCode(m_explained);
        if (code == nullptr) {
            err << "paramdb: " << UnknownCode(m_explained);
            return ExitCode::NoLoad;
        }
        out << CodeText(*code);
        return ExitCode::Clean;
    }

    std::vector<std::string> m_files;
    bool m_strict = false;
    std::vector<std::string> m_disabled;
    CheckFormat m_format = CheckFormat::Text;
    std::string m_explained;
};

} // namespace
} // namespace check

std::unique_ptr<Verb> MakeCheckVerb() {
    return std::make_unique<check::CheckVerb>();
}

} // namespace paramdb::tools
