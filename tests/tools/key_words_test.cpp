#include "tools/key_words.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

KeyWords Key(std::vector<KeyWord> first) {
    KeyWords words;
    words.fill(-1);
    std::copy(first.begin(), first.end(), words.begin());
    return words;
}

} // namespace

TEST(KeyWords, Reads) {
    struct Case {
        std::wstring text;
        KeyWords words;
    };
    Case const cases[] = {
        {L"", Key({})},
        {L"*", Key({})},
        {L"-1", Key({})},
        {L"/////", Key({})},
        {L"11/1001/1/2/3/4", Key({11, 1001, 1, 2, 3, 4})},
        {L"11", Key({11})},
        {L"11/", Key({11})},
        {L" 11 / * //\t-7\t", Key({11, -1, -1, -7})},
        {L"+11/-2147483648/2147483647", Key({11, -2147483647 - 1, 2147483647})},
        {L"Idle/Spectral value", Key({L"Idle", L"Spectral value"})},
        {L"1. gear drive", Key({L"1. gear drive"})},
        {L"11a/0x10/1e3", Key({L"11a", L"0x10", L"1e3"})},
        {L"**/+/-", Key({L"**", L"+", L"-"})},
        {L"\"a/b\"/\"11\"", Key({L"a/b", L"11"})},
        {L" \"a\" /\"\"", Key({L"a", L""})},
        {L"\"say \"\"a\"\"\"", Key({L"say \"a\""})},
        {L"\" a \"", Key({L" a "})},
        {L"3.5\"", Key({L"3.5\""})},
        {L"99999999999x", Key({L"99999999999x"})},
    };
    for (Case const& test : cases) {
        auto const words = ReadKeyWords(test.text);
        ASSERT_TRUE(std::holds_alternative<KeyWords>(words)) << testing::PrintToString(test.text);
        EXPECT_EQ(std::get<KeyWords>(words), test.words) << testing::PrintToString(test.text);
    }
}

TEST(KeyWords, Faults) {
    struct Case {
        std::wstring text;
        std::size_t place;
        std::string reason;
    };
    Case const cases[] = {
        {L"1/2/3/4/5/6/", 11, "the key has no more elements"},
        {L"1/2/3/4/5/6/7", 11, "the key has no more elements"},
        {L"1/2147483648", 2, "the number is too large"},
        {L" -99999999999 ", 1, "the number is too large"},
        {L"1/\"a", 2, "the quotes are not closed"},
        {L"\"", 0, "the quotes are not closed"},
        {L"\"a\"\"", 0, "the quotes are not closed"},
        {L"\"a\" b/1", 4, "not expected behind a name in quotes"},
    };
    for (Case const& test : cases) {
        auto const words = ReadKeyWords(test.text);
        auto const* const fault = std::get_if<KeyFault>(&words);
        ASSERT_NE(fault, nullptr) << testing::PrintToString(test.text);
        EXPECT_EQ(fault->place, test.place) << testing::PrintToString(test.text);
        EXPECT_EQ(fault->reason, test.reason) << testing::PrintToString(test.text);
    }
}

TEST(KeyWords, FaultText) {
    std::wstring const text = L"\u00C4/\"a\" b";
    EXPECT_EQ(KeyWordsFaultText(text, std::get<KeyFault>(ReadKeyWords(text))),
              "key: not expected behind a name in quotes\n"
              "  \xC3\x84/\"a\" b\n"
              "        ^\n"
              "The key is mode/instrument/channel/location/parameter/signal\n");
}
