#include "tools/rewrite/row_fields.h"
#include "tools/rewrite/text_token.h"

#include <gtest/gtest.h>
#include <limits>

using namespace paramdb::tools;
using ParamDb::row_t;

namespace {

paramdb::TableDescription const& Table(wchar_t const* tag) {
    return *TableOfTag(tag);
}

row_t Read(RowFields& fields, std::wstring_view line) {
    EXPECT_TRUE(fields.Read(line));
    return fields.Cells();
}

} // namespace

TEST(RowFieldsTest, HasTheColumnsOfEveryTable) {
    for (paramdb::TableDescription const& table : paramdb::Catalogue()) {
        RowFields const fields(table);
        auto const columns = ColumnsOf(table);
        ASSERT_EQ(fields.size(), columns.size()) << table.accessor;
        for (std::size_t column = 0; column < columns.size(); ++column)
            EXPECT_EQ(fields.All()[column].type(), columns[column].type) << columns[column].name;
        EXPECT_EQ(TableOfTag(table.tag), &table);
    }
    EXPECT_EQ(TableOfTag(L"TMode"), nullptr);
    EXPECT_EQ(TableOfTag(L""), nullptr);
}

TEST(RowFieldsTest, BeginsAsATableDoesAndKeepsWhatALineDoesNotReach) {
    RowFields fields(Table(L"<TRotorSpeed>"));
    EXPECT_EQ(fields.Cells(), (row_t{-1, -1, 0.0, 0, 0}));
    EXPECT_EQ(Read(fields, L"1 2 0.5 3 4"), (row_t{1, 2, 0.5, 3, 4}));
    EXPECT_EQ(Read(fields, L"7"), (row_t{7, 2, 0.5, 3, 4}));
    RowFields names(Table(L"<TMode>"));
    EXPECT_EQ(Read(names, L"1 idle"), (row_t{1, std::wstring(L"idle")}));
    EXPECT_EQ(Read(names, L"2"), (row_t{2, std::wstring()}));
}

TEST(RowFieldsTest, AssignsAndComparesToTheBit) {
    RowFields left(Table(L"<TRotorSpeed>"));
    RowFields right(Table(L"<TRotorSpeed>"));
    EXPECT_TRUE(left == right);
    left.Assign(row_t{1, 2, 0.0, 3, 4});
    right.Assign(row_t{1, 2, -0.0, 3, 4});
    EXPECT_FALSE(left == right);
    right.Assign(left);
    EXPECT_TRUE(left == right);
    EXPECT_EQ(Read(right, L"5"), (row_t{5, 2, 0.0, 3, 4}));
    EXPECT_EQ(left.Cells(), (row_t{1, 2, 0.0, 3, 4}));
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(IsSameCell(nan, nan));
    EXPECT_FALSE(IsSameCell(nan, -nan));
    EXPECT_FALSE(IsSameCell(0.0F, -0.0F));
    EXPECT_FALSE(IsSameCell(1, 1U));
    EXPECT_TRUE(IsSameCell(std::wstring(L"a"), std::wstring(L"a")));
}

TEST(TextTokenTest, TellsWhichTextsNeedQuotes) {
    for (char const* const bare : {"a", "idle", "-1", "a\"b", "\xE4", "a,b", "<T>"})
        EXPECT_EQ(NeedsQuotes(std::string_view(bare)),
                  std::string_view(bare).find('"') != std::string_view::npos)
            << bare;
    for (char const* const quoted : {"", " ", "a b", "a:b", "a;b", "{", "}", "a\x85", "a\xA0", "a\tb", "\""})
        EXPECT_TRUE(NeedsQuotes(std::string_view(quoted))) << quoted;
    EXPECT_TRUE(NeedsQuotes(std::wstring_view(L"a\x2003"
                                              L"b")));
    EXPECT_FALSE(NeedsQuotes(std::wstring_view(L"\x20AC")));
}
