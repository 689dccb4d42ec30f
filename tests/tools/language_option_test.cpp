#include "tools/language_option.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

using Language = CLibMgr::Language;

class LanguageOptionTest : public testing::Test {
protected:
    LanguageOptionTest() { CLibMgr::SetLanguage(Language::spanish); }
    ~LanguageOptionTest() override { CLibMgr::ResetLanguage(); }
};

} // namespace

TEST_F(LanguageOptionTest, ReadsCodes) {
    struct Case {
        char const* code;
        Language language;
    };
    Case const cases[] = {
        {"en", Language::english}, {"pt", Language::portuguese}, {"cs", Language::czech},
        {"de", Language::german},  {"fr", Language::french},     {"hu", Language::hungarian},
        {"it", Language::italian}, {"zh", Language::chinese},    {"es", Language::spanish},
    };
    for (Case const& test : cases) {
        CLI::App app;
        std::optional<Language> language;
        AddLanguageOption(app, language);
        app.parse(std::vector<std::string>{test.code, "--lang"});
        EXPECT_EQ(language, test.language) << test.code;
    }
}

TEST_F(LanguageOptionTest, RefusesOthers) {
    for (char const* const code : {"", "nl", "DE", "de_DE", "e"}) {
        CLI::App app;
        std::optional<Language> language;
        AddLanguageOption(app, language);
        EXPECT_THROW(app.parse(std::vector<std::string>{code, "--lang"}), CLI::ValidationError) << code;
    }
}

TEST_F(LanguageOptionTest, IsInForceForAWhile) {
    {
        LanguageInForce const german(Language::german);
        EXPECT_EQ(CLibMgr::GetLanguage(), Language::german);
        {
            LanguageInForce const same(std::nullopt);
            EXPECT_EQ(CLibMgr::GetLanguage(), Language::german);
        }
        EXPECT_EQ(CLibMgr::GetLanguage(), Language::german);
    }
    EXPECT_EQ(CLibMgr::GetLanguage(), Language::spanish);
}
