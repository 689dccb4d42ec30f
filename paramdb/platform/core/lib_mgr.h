// Access to the string table: labels and words by number, in the user's language.
//
//     CString word;
//     if (CLibMgr().LoadStringW(101, word)) ...
//
// One language is in force for the whole process: the one the host has set, else the one of the environment
// (LC_ALL, LC_MESSAGES, LANG in this order; on Windows the user's interface language), else English. All
// operations may be called from any thread.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/cstring.h>

#include <cstdint>
#include <string_view>

class PARAMDB_API CLibMgr {
public:
    // The languages the table knows, by the ids of the host system. `standard` reads as English.
    enum class Language : std::uint16_t {
        english = 0x9,
        portuguese = 0x16,
        czech = 0x405,
        german = 0x407,
        french = 0x40C,
        hungarian = 0x40E,
        italian = 0x410,
        standard = 0x800,
        chinese = 0x804,
        spanish = 0xC0A,
    };

    // The host's choice, from now on and for the whole process.
    static void SetLanguage(Language language) noexcept;

    // Takes the host's choice back; the environment is read anew when a language is needed next.
    static void ResetLanguage() noexcept;

    // The language in force.
    [[nodiscard]] static Language GetLanguage() noexcept;

    // The language of a locale name such as "de_AT.UTF-8", "fr" or "zh-CN"; English for any other name.
    [[nodiscard]] static Language LanguageOfLocale(std::string_view name) noexcept;

    // The string of an id in the language in force, in English where that language lacks it. A miss gives
    // false and leaves `text` as it is.
    bool LoadStringW(unsigned id, CString& text) const;

    // The same as a value; a miss gives an empty text.
    [[nodiscard]] CString Text(unsigned id) const;
};
