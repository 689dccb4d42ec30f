#include <paramdb/storage/lake_text.h>

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <type_traits>

using namespace std::string_literals;
using namespace std::string_view_literals;
using paramdb::LakeText;

TEST(LakeText, BytesAreTheCharactersOfTheirNumbers) {
    std::string bytes;
    std::wstring wide;
    for (unsigned code = 0; code <= 0xFF; ++code) {
        bytes += static_cast<char>(static_cast<unsigned char>(code));
        wide += static_cast<wchar_t>(code);
    }
    LakeText const text = std::string_view(bytes);
    ASSERT_EQ(text.size(), 256U);
    EXPECT_FALSE(text.empty());
    for (std::size_t index = 0; index < 256; ++index)
        EXPECT_EQ(text[index], wide[index]);
    EXPECT_EQ(text.wide(), wide);
    EXPECT_TRUE(text == wide);
}

TEST(LakeText, WideTextsStayAsTheyAre) {
    std::wstring const wide = L"a\0\xFF\x20AC"s;
    LakeText const text = std::wstring_view(wide);
    EXPECT_EQ(text.size(), 4U);
    EXPECT_EQ(text[1], L'\0');
    EXPECT_EQ(text[3], L'\x20AC');
    EXPECT_EQ(text.wide(), wide);
    EXPECT_TRUE(text == wide);
}

TEST(LakeText, EmptyTexts) {
    for (LakeText const text : {LakeText(), LakeText(""sv), LakeText(L""sv), LakeText(std::wstring_view())}) {
        EXPECT_TRUE(text.empty());
        EXPECT_EQ(text.size(), 0U);
        EXPECT_EQ(text.wide(), L"");
        EXPECT_TRUE(text == L"");
        EXPECT_FALSE(text == L"a");
    }
}

TEST(LakeText, EqualityGoesByCodeUnit) {
    struct Case {
        std::wstring_view other;
        bool equal;
    };
    constexpr Case cases[] = {{L"ab\xE4", true},   {L"ab\xC4", false}, {L"ab", false},
                              {L"ab\xE4 ", false}, {L"Ab\xE4", false}, {L"ab\xE4\0"sv, false},
                              {L"ab\x1E4", false}, {L"", false}};
    for (Case const& test : cases) {
        EXPECT_EQ(LakeText("ab\xE4"sv) == test.other, test.equal);
        EXPECT_EQ(LakeText(L"ab\xE4"sv) == test.other, test.equal);
    }
}

TEST(LakeText, VisitGivesWhatTheLakeHolds) {
    auto const width = [](auto text) {
        return sizeof(typename decltype(text)::value_type) * 100 + text.size();
    };
    EXPECT_EQ(LakeText("abc"sv).Visit(width), 103U);
    EXPECT_EQ(LakeText(L"abcd"sv).Visit(width), sizeof(wchar_t) * 100 + 4);
    EXPECT_EQ(LakeText().Visit(width), 100U);
}

static_assert(LakeText("x"sv).size() == 1 && LakeText("\xFF"sv)[0] == L'\xFF');
static_assert(paramdb::Widen('\x80') == L'\x80' && paramdb::Widen(L'\x20AC') == L'\x20AC');
