#include <paramdb/tables/catalogue.h>

#include "tests/support/messages.h"
#include "tests/support/temp_dir.h"
#include "tests/tools/rewrite/random_lake.h"
#include "tools/rewrite/lake_proof.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

namespace {

CLake& Filled(CLake& lake, std::string const& bytes) {
    FillLake(lake, bytes);
    return lake;
}

bool SameTree(std::string const& left, std::string const& right) {
    CLake a;
    CLake b;
    return IsSameTree(Filled(a, left), Filled(b, right));
}

TableContents Contents(std::string const& bytes) {
    CLake lake;
    return ReadTables(Filled(lake, bytes));
}

} // namespace

TEST(LakeProofTest, FillsALakeAsReadingAFileDoes) {
    test_support::TempDir const folder;
    auto const path = folder / u8"a.lake";
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(seed);
        std::string const bytes = RandomLake(seed).Lines(40);
        test_support::WriteBytes(path, bytes);
        CLake const read((CString(test_support::WideName(path))));
        CLake filled;
        Filled(filled, "x: {\n1\n}\n");
        Filled(filled, bytes);
        ASSERT_EQ(filled.size(), read.size());
        auto other = read.begin();
        for (auto node = filled.begin(); node != filled.end(); ++node, ++other) {
            ASSERT_EQ(node->key(), other->key());
            ASSERT_EQ(node->value(), other->value());
            ASSERT_EQ(node->comment(), other->comment());
            ASSERT_EQ(node->level(), other->level());
            ASSERT_EQ(node->named_size(), other->named_size());
            ASSERT_EQ(node->unnamed_size(), other->unnamed_size());
        }
        ASSERT_TRUE(IsSameTree(read, filled));
    }
}

TEST(LakeProofTest, ComparesWhatLookupsFind) {
    std::string const text = "k: 1\n<T>: {\n1 2\n; c\nj: {\n3\n}\n}\n";
    EXPECT_TRUE(SameTree(text, text));
    EXPECT_TRUE(SameTree("", ""));
    EXPECT_TRUE(SameTree(text, text + "k: 2\n"));
    EXPECT_TRUE(SameTree(text, "<T>: {\n5\n}\n" + text));
    EXPECT_TRUE(SameTree(text, "<T>: {\n1 2\n; c\nj: {\n3\n}\n}\nk: 1\n"));
    for (std::string const other :
         {"k: 2\n<T>: {\n1 2\n; c\nj: {\n3\n}\n}\n", "k: 1\n<T>: {\n1 3\n; c\nj: {\n3\n}\n}\n",
          "k: 1\n<T>: {\n1 2\n; d\nj: {\n3\n}\n}\n", "k: 1\n<T>: {\n1 2\n; c\nj: {\n4\n}\n}\n",
          "k: 1\n<T>: {\n; c\n1 2\nj: {\n3\n}\n}\n", "k: 1\n<T>: {\n1 2\n; c\ni: {\n3\n}\n}\n",
          "k: 1\n<T>: {\n1 2\n; c\nj: 3\n}\n", "k: 1\n<T>: {\n1 2\n; c\nj: {\n3\n}\n}\n\n", ""})
        EXPECT_FALSE(SameTree(text, other)) << other;
}

TEST(LakeProofTest, ComparesTablesToTheBit) {
    std::string const text = "<TMode>: {\n1 idle\n2 up\n}\n<TRotorSpeed>: {\n1 1 0.1 1 10\n}\n";
    TableContents const contents = Contents(text);
    ASSERT_EQ(contents.rows.size(), paramdb::Catalogue().size());
    EXPECT_EQ(contents, Contents("<TMode>: {\n2 \"up\"\n1 idle\n1 again\n}\n" + text.substr(24)));
    for (std::string const other :
         {"<TMode>: {\n1 idle\n2 up\n}\n<TRotorSpeed>: {\n1 1 0.10000000000000002 1 10\n}\n",
          "<TMode>: {\n1 idle\n2 u\n}\n<TRotorSpeed>: {\n1 1 0.1 1 10\n}\n",
          "<TMode>: {\n1 idle\n3 up\n}\n<TRotorSpeed>: {\n1 1 0.1 1 10\n}\n",
          "<TMode>: {\n1 idle\n}\n<TRotorSpeed>: {\n1 1 0.1 1 10\n}\n",
          "<TMode>: {\n1 idle\n2 up\nx y\n}\n<TRotorSpeed>: {\n1 1 0.1 1 10\n}\n",
          "<TMode>: {\n1 idle\n2 up\n}\n"})
        EXPECT_FALSE(contents == Contents(other)) << other;
    EXPECT_FALSE(Contents("<TRotorSpeed>: {\n1 1 0\n}\n") == Contents("<TRotorSpeed>: {\n1 1 -0.0\n}\n"));
    EXPECT_EQ(Contents("<TRotorSpeed>: {\n1 1 nan\n}\n"), Contents("<TRotorSpeed>: {\n1 1 nan\n}\n"));
}

TEST(LakeProofTest, ReadsEverySource) {
    TableContents const contents = Contents("<TMode>: {\n1 idle\n2 up\n}\n");
    ParamDb::CDbTableSet set;
    set[L"<TMode>"].push_back({1, std::wstring(L"idle")});
    set[L"<TMode>"].push_back({2, std::wstring(L"up")});
    EXPECT_EQ(ReadTables(set), contents);
    CResourceSea sea;
    sea.MakeList(L"<TMode>") = {L"1 idle", L"2 up"};
    EXPECT_EQ(ReadTables(sea), contents);
}

TEST(LakeProofTest, MessagesAreKeptAndTheSinkGivenBack) {
    MessageLog log;
    auto const messages = Contents("<TMode>: {\nx idle\n}\n").messages;
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[1],
              L"CQParamSeaTypedTable< T >::ReadTable(): Error reading line 'x idle' of table '<TMode>'\n");
    EXPECT_TRUE(log.Take().empty());
    PrWin::Output(8, 1, L"later\n");
    EXPECT_EQ(log.Take().size(), 1U);
}
