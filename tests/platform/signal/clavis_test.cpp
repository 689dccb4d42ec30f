#include <paramdb/platform/core/lib_mgr.h>
#include <paramdb/platform/core/string_tables.h>
#include <paramdb/platform/signal/clavis.h>

#include <cstdint>
#include <gtest/gtest.h>

namespace {

// Each test leaves the language as the environment has it.
class ClavisElementName : public testing::Test {
protected:
    void SetUp() override { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    void TearDown() override { CLibMgr::ResetLanguage(); }
};

TEST_F(ClavisElementName, AllForms) {
    wchar_t const* const words[6][3] = {
        {L"Mode", L"Test step", L"Test steps"},
        {L"Instrument", L"Instrument", L"Instruments"},
        {L"Channel", L"Channel", L"Channels"},
        {L"Location", L"Object", L"Objects"},
        {L"InstrumentParam", L"Parameter", L"Parameters"},
        {L"ApplicationSignal", L"Sensor", L"Sensors"},
    };
    for (int element = 0; element < 6; ++element) {
        for (int form = 0; form < 3; ++form)
            EXPECT_EQ(Clavis::ElementName(element, form), words[element][form]) << element << ' ' << form;
    }
}

TEST_F(ClavisElementName, FollowsTheLanguageButForTheTechnicalWord) {
    using enum CLibMgr::Language;
    wchar_t const* const technical[] = {L"Mode",     L"Instrument",      L"Channel",
                                        L"Location", L"InstrumentParam", L"ApplicationSignal"};
    for (CLibMgr::Language const language :
         {english, portuguese, czech, german, french, hungarian, italian, standard, chinese, spanish}) {
        CLibMgr::SetLanguage(language);
        auto const words = paramdb::FindElements(static_cast<std::uint16_t>(language));
        for (int element = 0; element < 6; ++element) {
            auto const i = static_cast<std::size_t>(element);
            EXPECT_EQ(Clavis::ElementName(element, 0), technical[i]) << element;
            EXPECT_EQ(Clavis::ElementName(element, 1), words[i].singular) << element;
            EXPECT_EQ(Clavis::ElementName(element, 2), words[i].plural) << element;
        }
    }
    CLibMgr::SetLanguage(german);
    EXPECT_EQ(Clavis::ElementName(Clavis::qMode, 1), L"Prüfschritt");
    EXPECT_EQ(Clavis::ElementName(Clavis::qMode, 2), L"Prüfschritte");
    CLibMgr::SetLanguage(french);
    EXPECT_EQ(Clavis::ElementName(Clavis::qSignal, 2), L"Capteurs");
}

TEST_F(ClavisElementName, OutsideIsEmpty) {
    EXPECT_EQ(Clavis::ElementName(-1, 1), L"");
    EXPECT_EQ(Clavis::ElementName(6, 1), L"");
    EXPECT_EQ(Clavis::ElementName(0, -1), L"");
    EXPECT_EQ(Clavis::ElementName(0, 3), L"");
}

TEST(CClavis, Order) {
    EXPECT_EQ(Clavis::qMode, 0);
    EXPECT_EQ(Clavis::qInstrument, 1);
    EXPECT_EQ(Clavis::qChannel, 2);
    EXPECT_EQ(Clavis::qLocation, 3);
    EXPECT_EQ(Clavis::qInstrParam, 4);
    EXPECT_EQ(Clavis::qSignal, 5);
}

TEST(CClavis, ElementsAndComparison) {
    CClavis const unset;
    for (int element = 0; element < Clavis::ElementCount; ++element)
        EXPECT_EQ(unset[element], -1);
    int const numbers[] = {1, 2, 3, 4, 5, 6};
    CClavis key(numbers);
    for (int element = 0; element < Clavis::ElementCount; ++element)
        EXPECT_EQ(key[element], numbers[element]);
    CClavis other = key;
    EXPECT_TRUE(other == key);
    EXPECT_FALSE(other < key);
    other[Clavis::qSignal] = 7;
    EXPECT_TRUE(other != key);
    EXPECT_TRUE(key < other);
    other[Clavis::qMode] = 0;
    EXPECT_TRUE(other < key);
    EXPECT_TRUE(unset < key);
}

TEST(CClavis, MatchesAsAPattern) {
    int const numbers[] = {1, 2, 3, 4, 5, 6};
    CClavis const key(numbers);
    EXPECT_TRUE(key.Matches(key));
    EXPECT_TRUE(CClavis().Matches(key));
    EXPECT_FALSE(key.Matches(CClavis())); // -1 is a value in the concrete key
    for (int element = 0; element < Clavis::ElementCount; ++element) {
        CClavis pattern = key;
        pattern[element] = -1;
        EXPECT_TRUE(pattern.Matches(key)) << element;
        EXPECT_FALSE(key.Matches(pattern)) << element;
        pattern[element] = 99;
        EXPECT_FALSE(pattern.Matches(key)) << element;
    }
}

} // namespace
