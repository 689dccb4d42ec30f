#include <paramdb/platform/sea/pr_win.h>
#include <paramdb/platform/sea/resource_sea.h>

#include "tests/platform/temporary_folder.h"

#include <gtest/gtest.h>
#include <tuple>
#include <vector>

namespace {

using Message = std::tuple<int, int, std::wstring>;

class ResourceSeaTest : public testing::Test {
protected:
    void SetUp() override {
        m_before = PrWin::SetSink([this](int category, int style, std::wstring const& text) {
            m_messages.emplace_back(category, style, text);
        });
    }
    void TearDown() override { PrWin::SetSink(m_before); }

    TemporaryFolder m_folder;
    std::wstring m_name = m_folder.Name(L"messages.sea");
    std::vector<Message> m_messages;

private:
    PrWin::Sink m_before;
};

TEST_F(ResourceSeaTest, Lists) {
    CResourceSea sea;
    EXPECT_FALSE(sea.IsListEntry(L"<TMode>"));
    EXPECT_FALSE(sea.IsListEntry(nullptr));
    EXPECT_EQ(sea.FindList(L"<TMode>"), nullptr);
    sea.MakeList(L"<TMode>").push_back(L"1 idle");
    EXPECT_TRUE(sea.IsListEntry(L"<TMode>"));
    EXPECT_FALSE(sea.IsListEntry(L"<tmode>"));
    EXPECT_EQ(sea.MakeList(L"<TMode>").size(), 1u);
    EXPECT_EQ(std::as_const(sea).FindList(L"<TMode>")->front(), L"1 idle");
    EXPECT_EQ(sea.Lists().size(), 1u);
    sea.LookupBool(2, L"ShowIds", true, 0);
    sea.Clear();
    EXPECT_FALSE(sea.IsListEntry(L"<TMode>"));
    EXPECT_FALSE(sea.LookupGetBool(L"ShowIds", 0, false));
}

TEST_F(ResourceSeaTest, Booleans) {
    CResourceSea sea;
    EXPECT_FALSE(sea.LookupGetBool(L"ShowIds", 0, false));
    EXPECT_TRUE(sea.LookupGetBool(L"ShowIds", 0, true));
    EXPECT_TRUE(sea.LookupBool(2, L"ShowIds", true, 0));
    EXPECT_TRUE(sea.LookupGetBool(L"ShowIds", 0, false));
    EXPECT_FALSE(sea.LookupGetBool(L"ShowIds", 1, false));
    EXPECT_FALSE(sea.LookupBool(2, L"ShowIds", false, 0));
    EXPECT_FALSE(sea.LookupGetBool(L"ShowIds", 0, true));
    EXPECT_EQ(sea.Values(), (CResourceSea::ValueMap{{{L"ShowIds", 0}, L"0"}}));
}

TEST_F(ResourceSeaTest, OtherModesOnlyRead) {
    CResourceSea sea;
    for (int const mode : {-1, 0, 1, 3}) {
        EXPECT_TRUE(sea.LookupBool(mode, L"key", true, 0)) << mode;
        EXPECT_FALSE(sea.LookupBool(mode, L"key", false, 0)) << mode;
    }
    EXPECT_TRUE(sea.Values().empty());
    sea.LookupBool(2, L"key", true, 0);
    EXPECT_TRUE(sea.LookupBool(0, L"key", false, 0));
    EXPECT_TRUE(sea.LookupGetBool(L"key", 0, false));
}

TEST_F(ResourceSeaTest, SavesAndOpens) {
    CResourceSea sea;
    EXPECT_TRUE(sea.Open(m_name)); // a missing file
    EXPECT_EQ(sea.FileName(), m_name);
    sea.MakeList(L"<TMode>") = {L"1 idle", L"", L"H\u00F6lder\n"};
    sea.MakeList(L"<TEmpty>");
    sea.LookupBool(2, L"ShowIds", true, 0);
    EXPECT_TRUE(sea.Save());
    CResourceSea other;
    other.MakeList(L"gone");
    EXPECT_TRUE(other.Open(m_name));
    EXPECT_EQ(other.Lists(), sea.Lists());
    EXPECT_EQ(other.Values(), sea.Values());
    EXPECT_TRUE(m_messages.empty());
    EXPECT_EQ(m_folder.Count(), 1u);
}

TEST_F(ResourceSeaTest, AMissingFileGivesAnEmptySea) {
    CResourceSea sea;
    sea.MakeList(L"old");
    sea.LookupBool(2, L"old", true, 0);
    EXPECT_TRUE(sea.Open(m_name));
    EXPECT_TRUE(sea.Lists().empty());
    EXPECT_TRUE(sea.Values().empty());
    EXPECT_EQ(m_folder.Count(), 0u);
}

TEST_F(ResourceSeaTest, AFailedOpenChangesNothing) {
    CResourceSea sea;
    EXPECT_TRUE(sea.Open(m_name));
    sea.MakeList(L"kept");
    std::wstring reason;
    EXPECT_FALSE(sea.Open(m_folder.Name(), &reason));
    EXPECT_FALSE(reason.empty());
    EXPECT_FALSE(sea.Open(m_folder.Name()));
    reason.clear();
    EXPECT_FALSE(sea.Open(L"", &reason));
    EXPECT_FALSE(reason.empty());
    EXPECT_TRUE(sea.IsListEntry(L"kept"));
    EXPECT_EQ(sea.FileName(), m_name);
}

TEST_F(ResourceSeaTest, AFailedSaveHasAReason) {
    CResourceSea sea;
    std::wstring reason;
    EXPECT_FALSE(sea.Save());
    EXPECT_FALSE(sea.Save(&reason));
    EXPECT_EQ(reason, L"The sea is bound to no file");
    EXPECT_TRUE(sea.Open(m_folder.Name(L"no/such/folder.sea")));
    reason.clear();
    EXPECT_FALSE(sea.Save(&reason));
    EXPECT_FALSE(reason.empty());
}

TEST_F(ResourceSeaTest, BadLinesAreReported) {
    TemporaryFolder::Write(m_name, "list\ta\n\tgood\nbad\n\tlost\n");
    CResourceSea sea;
    EXPECT_TRUE(sea.Open(m_name));
    EXPECT_EQ(sea.Lists(), (CResourceSea::ListMap{{L"a", {L"good"}}}));
    std::wstring const end = L" of file '" + m_name + L"' makes no sense and is left out\n";
    EXPECT_EQ(m_messages, (std::vector<Message>{{8, 3, L"CResourceSea::Open(): Line 3" + end},
                                                {8, 3, L"CResourceSea::Open(): Line 4" + end}}));
}

TEST_F(ResourceSeaTest, LargeFiles) {
    CResourceSea sea;
    EXPECT_TRUE(sea.Open(m_name));
    for (int i = 0; i < 20000; ++i)
        sea.MakeList(L"<TList>").push_back(std::to_wstring(i) + L" some text of a line");
    EXPECT_TRUE(sea.Save());
    CResourceSea other;
    EXPECT_TRUE(other.Open(m_name));
    EXPECT_EQ(other.Lists(), sea.Lists());
}

} // namespace
