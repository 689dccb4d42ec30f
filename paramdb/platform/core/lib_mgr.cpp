#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/platform/core/windows_api.h>

#include <atomic>
#include <cstdlib>
#include <string>

namespace {

using Language = CLibMgr::Language;

// What is in force; 0 until the environment has been asked.
constinit std::atomic<std::uint16_t> language_in_force{0};

Language LanguageOfEnvironment() {
#ifdef _WIN32
    switch (GetUserDefaultUILanguage() & 0x3FF) { // the low ten bits are the language without its region
    case 0x04:
        return Language::chinese;
    case 0x05:
        return Language::czech;
    case 0x07:
        return Language::german;
    case 0x0A:
        return Language::spanish;
    case 0x0C:
        return Language::french;
    case 0x0E:
        return Language::hungarian;
    case 0x10:
        return Language::italian;
    case 0x16:
        return Language::portuguese;
    default:
        return Language::english;
    }
#else
    for (char const* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        char const* const name = std::getenv(variable);
        if (name && *name)
            return CLibMgr::LanguageOfLocale(name);
    }
    return Language::english;
#endif
}

} // namespace

void CLibMgr::SetLanguage(Language language) noexcept {
    language_in_force = static_cast<std::uint16_t>(language);
}

void CLibMgr::ResetLanguage() noexcept {
    language_in_force = 0;
}

CLibMgr::Language CLibMgr::GetLanguage() noexcept {
    std::uint16_t language = language_in_force;
    if (language == 0) {
        auto const found = static_cast<std::uint16_t>(LanguageOfEnvironment());
        // A choice that the host made meanwhile stands.
        if (language_in_force.compare_exchange_strong(language, found))
            language = found;
    }
    return static_cast<Language>(language);
}

CLibMgr::Language CLibMgr::LanguageOfLocale(std::string_view name) noexcept {
    struct Name {
        std::string_view code;
        Language language;
    };
    static constexpr Name Names[] = {
        {"cs", Language::czech},      {"de", Language::german},    {"es", Language::spanish},
        {"fr", Language::french},     {"hu", Language::hungarian}, {"it", Language::italian},
        {"pt", Language::portuguese}, {"zh", Language::chinese},
    };
    std::string_view const code = name.substr(0, name.find_first_of("_-.@"));
    for (Name const& known : Names) {
        if (code == known.code)
            return known.language;
    }
    return Language::english;
}

bool CLibMgr::LoadStringW(unsigned id, CString& text) const {
    wchar_t const* const found = paramdb::FindString(static_cast<std::uint16_t>(GetLanguage()), id);
    if (!found)
        return false;
    text = found;
    return true;
}

CString CLibMgr::Text(unsigned id) const {
    CString text;
    LoadStringW(id, text);
    return text;
}
