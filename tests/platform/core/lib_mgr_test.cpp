#include <paramdb/platform/core/lib_mgr.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace {

using Language = CLibMgr::Language;

// The language is one for the whole process; each test leaves it as the environment has it.
class LibMgr : public testing::Test {
protected:
    void SetUp() override { CLibMgr::SetLanguage(Language::english); }
    void TearDown() override { CLibMgr::ResetLanguage(); }
};

TEST_F(LibMgr, LoadsTexts) {
    CString text = L"before";
    EXPECT_TRUE(CLibMgr().LoadStringW(101, text));
    EXPECT_EQ(text, L"Trigger");
    EXPECT_EQ(CLibMgr().Text(99), L"Calculation parameter");
}

TEST_F(LibMgr, AMissLeavesTheTextAlone) {
    for (unsigned const id : {0u, 6u, 24u, 98u, 152u, 199u, 209u, 293u + 2u, 516u, 552u, 0xFFFFFFFFu}) {
        CString text = L"before";
        EXPECT_FALSE(CLibMgr().LoadStringW(id, text)) << id;
        EXPECT_EQ(text, L"before") << id;
        EXPECT_EQ(CLibMgr().Text(id), L"") << id;
    }
}

TEST_F(LibMgr, EveryLanguageHasATextForEveryId) {
    for (Language const language :
         {Language::english, Language::portuguese, Language::czech, Language::german, Language::french,
          Language::hungarian, Language::italian, Language::standard, Language::chinese, Language::spanish}) {
        CLibMgr::SetLanguage(language);
        EXPECT_EQ(CLibMgr::GetLanguage(), language);
        for (unsigned id = 100; id <= 151; ++id)
            EXPECT_FALSE(CLibMgr().Text(id).IsEmpty()) << id;
    }
}

TEST_F(LibMgr, StandardReadsAsEnglish) {
    CLibMgr::SetLanguage(Language::standard);
    EXPECT_EQ(CLibMgr().Text(20), L"Average");
}

TEST(LibMgrLocale, LanguageOfLocaleNames) {
    struct Case {
        char const* name;
        Language language;
    };
    Case const cases[] = {
        {"de_AT.UTF-8", Language::german},
        {"de", Language::german},
        {"zh-CN", Language::chinese},
        {"cs_CZ", Language::czech},
        {"es@euro", Language::spanish},
        {"fr.UTF-8", Language::french},
        {"hu_HU", Language::hungarian},
        {"it_CH", Language::italian},
        {"pt_BR.utf8", Language::portuguese},
        {"en_GB", Language::english},
        {"C", Language::english},
        {"C.UTF-8", Language::english},
        {"POSIX", Language::english},
        {"", Language::english},
        {"ja_JP", Language::english},
        {"deu", Language::english},
        {"_de", Language::english},
    };
    for (Case const& c : cases)
        EXPECT_EQ(CLibMgr::LanguageOfLocale(c.name), c.language) << c.name;
}

#ifndef _WIN32

// Sets a variable for one test and puts back what was there.
class Variable {
public:
    Variable(char const* name, char const* value) : m_name(name) {
        if (char const* const old = std::getenv(name)) {
            m_old = old;
            m_was_set = true;
        }
        setenv(name, value, 1);
    }
    Variable(Variable const&) = delete;
    Variable& operator=(Variable const&) = delete;
    ~Variable() {
        if (m_was_set)
            setenv(m_name, m_old.c_str(), 1);
        else
            unsetenv(m_name);
    }

private:
    char const* m_name;
    std::string m_old;
    bool m_was_set = false;
};

TEST_F(LibMgr, EnvironmentInItsOrder) {
    struct Case {
        char const* all;
        char const* messages;
        char const* lang;
        Language language;
    };
    Case const cases[] = {
        {"de_DE.UTF-8", "fr_FR", "it_IT", Language::german},
        {"", "fr_FR", "it_IT", Language::french},
        {"", "", "it_IT", Language::italian},
        {"", "", "", Language::english},
        {"C", "fr_FR", "it_IT", Language::english},
    };
    for (Case const& c : cases) {
        Variable const all("LC_ALL", c.all);
        Variable const messages("LC_MESSAGES", c.messages);
        Variable const lang("LANG", c.lang);
        CLibMgr::ResetLanguage();
        EXPECT_EQ(CLibMgr::GetLanguage(), c.language) << c.all << ' ' << c.messages << ' ' << c.lang;
    }
}

TEST_F(LibMgr, TheHostsChoiceComesFirst) {
    Variable const all("LC_ALL", "de_DE.UTF-8");
    CLibMgr::SetLanguage(Language::french);
    EXPECT_EQ(CLibMgr::GetLanguage(), Language::french);
    CLibMgr::ResetLanguage();
    EXPECT_EQ(CLibMgr::GetLanguage(), Language::german);
}

#endif

} // namespace
