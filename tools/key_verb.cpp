// `paramdb key`: loads parameter files and shows a key of six elements with the names in it.
#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/key_report.h"
#include "tools/language_option.h"
#include "tools/last_words.h"
#include "tools/loading.h"
#include "tools/verb.h"

#include <CLI/CLI.hpp>
#include <ostream>

namespace paramdb::tools {
namespace {

class KeyVerb : public Verb {
public:
    CLI::App& AddTo(CLI::App& command) override {
        CLI::App& verb = *command.add_subcommand(
            "key", "Load parameter files and show a key of six elements with the names in it");
        AddLastWordsArgument(verb, m_words, "KEY");
        verb.add_flag("--both", m_both, "Show the location of a mix channel too in the nice text");
        AddLanguageOption(verb, m_language);
        AddFormatOption(verb, m_format);
        verb.footer(KeyWordsHelp +
                    std::string("\n"
                                "Examples:\n"
                                "  paramdb key gearbox.lake 11/1001/1/1/1011/1\n"
                                "  paramdb key gearbox.lake '1. gear drive/1001/Mix' --lang de\n\n") +
                    ExitCodeHelp + "\nAn id or a name that is not there is a finding.");
        return verb;
    }

    ExitCode Run(std::ostream& out, std::ostream& err) override {
        auto const split = SplitLastWords(m_words, 1);
        if (!split) {
            err << "paramdb: a KEY is required behind the files\n";
            return ExitCode::NoLoad;
        }
        std::wstring const text = FromUtf8(split->words[0]);
        auto const words = ReadKeyWords(text);
        if (auto const* const fault = std::get_if<KeyFault>(&words)) {
            err << "paramdb: " << KeyWordsFaultText(text, *fault);
            return ExitCode::NoLoad;
        }
        auto const load = LoadFiles(split->files, err);
        if (!load || load->result == LoadResult::Refused)
            return ExitCode::NoLoad;
        LanguageInForce const language(m_language);
        CQtParamInstance const parameters;
        ResolvedKey const elements = ResolveKey(parameters, std::get<KeyWords>(words));
        bool is_known = true;
        for (KeyElement const& element : elements) {
            if (element.fault.empty())
                continue;
            is_known = false;
            err << "paramdb: " << element.fault << '\n';
        }
        PrintKey(out, parameters, elements, m_both, m_format);
        return is_known ? ExitCodeOf(*load) : ExitCode::Findings;
    }

private:
    std::vector<std::string> m_words;
    bool m_both = false;
    std::optional<CLibMgr::Language> m_language;
    ReportFormat m_format = ReportFormat::Text;
};

} // namespace

std::unique_ptr<Verb> MakeKeyVerb() {
    return std::make_unique<KeyVerb>();
}

} // namespace paramdb::tools
