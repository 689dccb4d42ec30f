#include "tools/language_option.h"

#include <CLI/CLI.hpp>
#include <string>

namespace paramdb::tools {

void AddLanguageOption(CLI::App& verb, std::optional<CLibMgr::Language>& language) {
    verb.add_option_function<std::string>(
            "--lang", [&language](std::string const& code) { language = CLibMgr::LanguageOfLocale(code); },
            "The language of the words (default: that of the environment)")
        ->check(CLI::IsMember({"en", "pt", "cs", "de", "fr", "hu", "it", "zh", "es"}))
        ->type_name("LANG");
}

LanguageInForce::LanguageInForce(std::optional<CLibMgr::Language> language) {
    if (!language)
        return;
    m_previous = CLibMgr::GetLanguage();
    CLibMgr::SetLanguage(*language);
}

LanguageInForce::~LanguageInForce() {
    if (m_previous)
        CLibMgr::SetLanguage(*m_previous);
}

} // namespace paramdb::tools
