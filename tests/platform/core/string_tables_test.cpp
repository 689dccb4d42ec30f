#include <paramdb/platform/core/string_tables.h>

#include <gtest/gtest.h>
#include <set>
#include <string>

namespace {

using paramdb::EnglishStrings;
using paramdb::FindString;
using paramdb::StringEntry;
using paramdb::StringTable;
using paramdb::StringTables;

constexpr std::uint16_t English = 0x9;

TEST(StringTables, EnglishHasAllIds) {
    std::set<unsigned> expected;
    auto const add = [&expected](unsigned first, unsigned last) {
        for (unsigned id = first; id <= last; ++id)
            expected.insert(id);
    };
    add(7, 23), add(30, 31), add(99, 151), add(200, 208), add(220, 223), add(250, 257), add(290, 294);
    add(300, 308), add(400, 407), add(490, 491), add(500, 515), add(550, 551);
    std::set<unsigned> ids;
    for (StringEntry const& entry : EnglishStrings())
        ids.insert(entry.id);
    EXPECT_EQ(ids, expected);
    EXPECT_EQ(EnglishStrings().size(), 135u);
}

TEST(StringTables, IdsAscendAndTextsAreNotEmpty) {
    EXPECT_EQ(StringTables().front().language, English);
    for (StringTable const& table : StringTables()) {
        for (std::size_t i = 0; i < table.strings.size(); ++i) {
            EXPECT_NE(std::wstring(table.strings[i].text), L"") << table.strings[i].id;
            if (i > 0) {
                EXPECT_LT(table.strings[i - 1].id, table.strings[i].id);
            }
        }
    }
}

TEST(StringTables, SomeTextsAtTheEdges) {
    struct Case {
        unsigned id;
        wchar_t const* text;
    };
    Case const cases[] = {
        {7, L"Section"},
        {18, L"not definined"},
        {23, L"Slope"},
        {30, L"not definined"},
        {99, L"Calculation parameter"},
        {148, L"H\u00F6lder power"},
        {150, L"Spectral deviaton std.deviation weight"},
        {200, L"not defined"},
        {223, L"H\u00F6lder mean p6"},
        {257, L"Quantile Diff. 90%-10%"},
        {294, L"Shifting time"},
        {405, L"Deviation, percent"},
        {491, L"2 point definition"},
        {515, L"Mean value overall"},
        {551, L"Difference"},
    };
    for (Case const& c : cases) {
        wchar_t const* const text = FindString(English, c.id);
        ASSERT_NE(text, nullptr) << c.id;
        EXPECT_EQ(std::wstring(text), c.text) << c.id;
    }
}

TEST(StringTables, AnUnknownLanguageFallsBackToEnglish) {
    wchar_t const* const text = FindString(0x411, 101);
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(std::wstring(text), L"Trigger");
    EXPECT_EQ(FindString(0x411, 98), nullptr);
}

} // namespace
