#include <paramdb/platform/core/line_end.h>
#include <paramdb/platform/sea/sea_text.h>

#include <gtest/gtest.h>
#include <random>

namespace {

using paramdb::ReadSeaText;
using paramdb::SeaContent;
using paramdb::WriteSeaText;
using namespace std::string_literals;

std::string Native(std::string_view text) {
    std::string result;
    for (char const c : text)
        result += c == '\n' ? std::string(paramdb::LineEnd) : std::string(1, c);
    return result;
}

TEST(SeaText, Writes) {
    CResourceSea::ListMap const lists{
        {L"<TMode>", {L"1 \"idle\"", L"", L"a\tb\\c\nd\re"s + L'\0' + L"f"}},
        {L"<TA>", {}},
        {L"t\tab", {L"\u20AC", L"\xD83D\xDE00", L"\xD83D|\xDC80"}},
    };
    CResourceSea::ValueMap const values{{{L"Show", 0}, L"1"}, {{L"Show", -3}, L"x\ty"}};
    EXPECT_EQ(WriteSeaText(lists, values), Native("list\t<TA>\n"
                                                  "list\t<TMode>\n"
                                                  "\t1 \"idle\"\n"
                                                  "\t\n"
                                                  "\ta\\tb\\\\c\\nd\\re\\0f\n"
                                                  "list\tt\\tab\n"
                                                  "\t\xE2\x82\xAC\n"
                                                  "\t\xF0\x9F\x98\x80\n"
                                                  "\t\\uD83D|\\uDC80\n"
                                                  "value\tShow\t-3\tx\\ty\n"
                                                  "value\tShow\t0\t1\n"));
    EXPECT_EQ(WriteSeaText({}, {}), "");
}

TEST(SeaText, Reads) {
    SeaContent const content = ReadSeaText("\xEF\xBB\xBF# comment\r\n"
                                           "\n"
                                           "list\ta\r\n"
                                           "\tone\n"
                                           "# between\n"
                                           "\ttwo\r\n"
                                           "list\tb\n"
                                           "list\ta\n"
                                           "\tthree \n"
                                           "value\tk\t2\tv\n"
                                           "value\tk\t2\tlast\n"
                                           "value\t\t-1\t");
    EXPECT_EQ(content.lists, (CResourceSea::ListMap{{L"a", {L"one", L"two", L"three "}}, {L"b", {}}}));
    EXPECT_EQ(content.values, (CResourceSea::ValueMap{{{L"k", 2}, L"last"}, {{L"", -1}, L""}}));
    EXPECT_TRUE(content.bad_lines.empty());
}

TEST(SeaText, BadLinesAreLeftOut) {
    char const* const bad[] = {
        "\ttext without a list",
        "something",
        "list",
        "list a",
        "listen\ta",
        "list\tbad \\x escape",
        "value\tkey",
        "value\tkey\t1",
        "value\tkey\tone\ttext",
        "value\tkey\t\ttext",
        "value\tkey\t1x\ttext",
        "value\tkey\t 1\ttext",
        "value\tkey\t99999999999\ttext",
        "value\tk\\ey\t1\ttext",
        "value\tkey\t1\ttext\\",
        "value\tkey\t1\t\\u12",
        "value\tkey\t1\t\\u12G4",
        "value\tkey\t1\t\\u-123",
        " list\ta",
    };
    for (char const* const line : bad) {
        SeaContent const content = ReadSeaText("list\tb\n\t1\nvalue\ta\t0\tx\n"s + line + "\nlist\tb\n\t2\n");
        EXPECT_EQ(content.bad_lines, std::vector<int>{4}) << line;
        EXPECT_EQ(content.lists, (CResourceSea::ListMap{{L"b", {L"1", L"2"}}})) << line;
        EXPECT_EQ(content.values, (CResourceSea::ValueMap{{{L"a", 0}, L"x"}})) << line;
    }
}

TEST(SeaText, ABadTextLineDoesNotEndItsList) {
    SeaContent const content = ReadSeaText("list\ta\n\t1\n\t\\q\n\t3\n");
    EXPECT_EQ(content.bad_lines, std::vector<int>{3});
    EXPECT_EQ(content.lists, (CResourceSea::ListMap{{L"a", {L"1", L"3"}}}));
}

TEST(SeaText, EveryTextSurvives) {
    std::mt19937 random(3);
    // Units that are something special in the format or in UTF-8, and some that are not.
    unsigned const units[] = {'\\',   '\n',   '\r',   '\t',   0,      'n',    'u',
                              '#',    ' ',    0x85,   0xE4,   0x20AC, 0xD83D, 0xDE00,
                              0xDCE2, 0xDC82, 0xDCAC, 0xDBFF, 0xDC00, 0xFEFF, 0xFFFF};
    auto const any_text = [&] {
        std::wstring text(random() % 8, L' ');
        for (wchar_t& unit : text)
            unit = static_cast<wchar_t>(units[random() % std::size(units)]);
        return text;
    };
    for (int round = 0; round < 5000; ++round) {
        CResourceSea::ListMap lists;
        CResourceSea::ValueMap values;
        for (auto i = random() % 4; i > 0; --i) {
            std::vector<std::wstring>& lines = lists[any_text()];
            for (auto j = random() % 4; j > 0; --j)
                lines.push_back(any_text());
            values[{any_text(), static_cast<int>(random())}] = any_text();
        }
        std::string const bytes = WriteSeaText(lists, values);
        SeaContent const content = ReadSeaText(bytes);
        ASSERT_EQ(content.lists, lists) << bytes;
        ASSERT_EQ(content.values, values) << bytes;
        ASSERT_TRUE(content.bad_lines.empty()) << bytes;
    }
}

TEST(SeaText, AnyBytesCanBeReadAndWhatWasReadSurvives) {
    std::mt19937 random(4);
    std::string const pieces[] = {"list\t", "value\t", "\t", "\n",   "\r\n",     "\\", "u00",
                                  "0",      "1",       "a",  "\xFF", "\xE2\x82", "#"};
    for (int round = 0; round < 5000; ++round) {
        std::string bytes;
        for (auto i = random() % 20; i > 0; --i)
            bytes += pieces[random() % std::size(pieces)];
        SeaContent const first = ReadSeaText(bytes);
        SeaContent const second = ReadSeaText(WriteSeaText(first.lists, first.values));
        ASSERT_EQ(first.lists, second.lists) << bytes;
        ASSERT_EQ(first.values, second.values) << bytes;
    }
}

} // namespace
