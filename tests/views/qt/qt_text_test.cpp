#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/views/qt/qt_text.h>

#include <gtest/gtest.h>
#include <map>
#include <random>

using paramdb::qt::FromQString;
using paramdb::qt::ToQString;

TEST(QtText, CarriesEveryUnit) {
    std::wstring all;
    for (int unit = 1; unit <= 0xFFFF; ++unit)
        all.push_back(static_cast<wchar_t>(unit));
    QString const text = ToQString(CString(all));
    ASSERT_EQ(text.size(), 0xFFFF);
    for (int unit = 1; unit <= 0xFFFF; ++unit)
        ASSERT_EQ(text.at(unit - 1).unicode(), unit);
    EXPECT_EQ(FromQString(text), all);
}

TEST(QtText, CarriesZerosAndNothing) {
    EXPECT_TRUE(ToQString(CString()).isEmpty());
    EXPECT_TRUE(FromQString(QString()).IsEmpty());
    CString const zeros(L"a\0b", 3);
    EXPECT_EQ(ToQString(zeros).size(), 3);
    EXPECT_EQ(FromQString(ToQString(zeros)), zeros);
}

TEST(QtText, SplitsAUnitThatIsTooWide) {
    if constexpr (sizeof(wchar_t) > 2) {
        std::wstring const wide{static_cast<wchar_t>(0x1F600), static_cast<wchar_t>(0x110000)};
        QString const text = ToQString(CString(wide));
        ASSERT_EQ(text.size(), 3);
        EXPECT_EQ(text.at(0).unicode(), 0xD83D);
        EXPECT_EQ(text.at(1).unicode(), 0xDE00);
        EXPECT_EQ(text.at(2).unicode(), 0xFFFD);
        EXPECT_EQ(FromQString(text), std::wstring({L'\xD83D', L'\xDE00', L'\xFFFD'}));
    }
}

TEST(QtText, NamesTheFilterInEveryLanguage) {
    using Language = CLibMgr::Language;
    std::map<Language, char16_t const*> const words{{Language::english, u"Filter"},
                                                    {Language::german, u"Filter"},
                                                    {Language::standard, u"Filter"},
                                                    {Language::portuguese, u"Filtro"},
                                                    {Language::italian, u"Filtro"},
                                                    {Language::spanish, u"Filtro"},
                                                    {Language::czech, u"Filtr"},
                                                    {Language::french, u"Filtre"},
                                                    {Language::hungarian, u"Sz\u0171r\u0151"},
                                                    {Language::chinese, u"\u7B5B\u9009"}};
    for (auto const& [language, word] : words) {
        CLibMgr::SetLanguage(language);
        EXPECT_EQ(paramdb::qt::FilterWord(), QString::fromUtf16(word));
    }
    CLibMgr::ResetLanguage();
}
