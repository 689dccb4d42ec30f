// The option --lang of a verb: the language of the words that stand in its answer.
//
//     AddLanguageOption(verb, m_language);  // std::optional<CLibMgr::Language>
//     ...
//     LanguageInForce const language(m_language);
#pragma once

#include <paramdb/platform/core/lib_mgr.h>

#include <optional>

namespace CLI {
class App;
}

namespace paramdb::tools {

// Adds the option to a verb. Its value is one of en, pt, cs, de, fr, hu, it, zh and es; what it chooses is
// stored at `language`, which must outlive the parsing. Without the option that stays as it is.
void AddLanguageOption(CLI::App& verb, std::optional<CLibMgr::Language>& language);

// Puts a language into force for the whole process while it lives, and then the one before. Without a
// language nothing changes.
class LanguageInForce {
public:
    explicit LanguageInForce(std::optional<CLibMgr::Language> language);
    LanguageInForce(LanguageInForce const&) = delete;
    LanguageInForce& operator=(LanguageInForce const&) = delete;
    ~LanguageInForce();

private:
    std::optional<CLibMgr::Language> m_previous;
};

} // namespace paramdb::tools
