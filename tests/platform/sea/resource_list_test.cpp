#include <paramdb/platform/sea/resource_list.h>

#include <gtest/gtest.h>

namespace {

std::vector<std::wstring> LinesOf(CResourceSea& sea, wchar_t const* tag) {
    std::vector<std::wstring> lines;
    CResourceList list(sea, tag);
    for (list.GotoHead(); list.IsValid(); list.GotoNext())
        lines.push_back(list.GetCurrentLine());
    return lines;
}

TEST(ResourceList, AnAbsentListIsNotMadeByReading) {
    CResourceSea sea;
    CResourceList list(sea, L"<TMode>");
    list.GotoHead();
    EXPECT_FALSE(list.IsValid());
    EXPECT_EQ(list.GetCurrentLine(), L"");
    list.GotoNext();
    EXPECT_FALSE(sea.IsListEntry(L"<TMode>"));
}

TEST(ResourceList, BehindTheLastLineThereIsNone) {
    CResourceSea sea;
    CResourceList list(sea, L"tag");
    list.AddLineTail().SetSeaLine(L"only");
    EXPECT_EQ(list.GetCurrentLine(), L"only");
    list.GotoNext();
    EXPECT_FALSE(list.IsValid());
    EXPECT_EQ(list.GetCurrentLine(), L"");
    list.GotoHead();
    EXPECT_EQ(list.GetCurrentLine(), L"only");
}

TEST(ResourceList, WritesAndReads) {
    CResourceSea sea;
    CResourceList list(sea, L"<TMode>");
    list.AddLineTail().SetSeaLine(L"1 idle");
    list.AddLineTail();
    list.AddLineTail().SetSeaLine(std::wstring(L"3 run"));
    EXPECT_TRUE(sea.IsListEntry(L"<TMode>"));
    EXPECT_EQ(LinesOf(sea, L"<TMode>"), (std::vector<std::wstring>{L"1 idle", L"", L"3 run"}));
    EXPECT_EQ(list.GetCurrentLine(), L"1 idle"); // adding does not move the cursor
    list.RemoveAll();
    EXPECT_TRUE(sea.IsListEntry(L"<TMode>"));
    EXPECT_TRUE(LinesOf(sea, L"<TMode>").empty());
}

TEST(ResourceList, RemoveAllMakesTheListAndResetsTheCursor) {
    CResourceSea sea;
    CResourceList list(sea, L"tag");
    list.GotoNext();
    list.RemoveAll();
    EXPECT_TRUE(sea.IsListEntry(L"tag"));
    list.AddLineTail().SetSeaLine(L"first");
    EXPECT_TRUE(list.IsValid());
    EXPECT_EQ(list.GetCurrentLine(), L"first");
}

TEST(ResourceList, AnEntryOfALineThatIsGoneDoesNothing) {
    CResourceSea sea;
    CResourceList list(sea, L"tag");
    CResourceEntry entry = list.AddLineTail();
    CResourceEntry copy = entry;
    copy.SetSeaLine(L"a");
    entry.SetSeaLine(L"b");
    EXPECT_EQ(LinesOf(sea, L"tag"), (std::vector<std::wstring>{L"b"}));
    list.RemoveAll();
    entry.SetSeaLine(L"c");
    EXPECT_TRUE(LinesOf(sea, L"tag").empty());
    sea.Clear();
    entry.SetSeaLine(L"d");
    EXPECT_FALSE(sea.IsListEntry(L"tag"));
}

TEST(ResourceList, ListsAreApart) {
    CResourceSea sea;
    CResourceList(sea, L"a").AddLineTail().SetSeaLine(L"1");
    CResourceList(sea, L"b").AddLineTail().SetSeaLine(L"2");
    CResourceList(sea, nullptr).AddLineTail().SetSeaLine(L"3");
    CResourceList(sea, L"b").RemoveAll();
    EXPECT_EQ(LinesOf(sea, L"a"), (std::vector<std::wstring>{L"1"}));
    EXPECT_TRUE(LinesOf(sea, L"b").empty());
    EXPECT_EQ(LinesOf(sea, L""), (std::vector<std::wstring>{L"3"}));
}

} // namespace
