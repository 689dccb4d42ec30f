// What operator[] of a lake and of a node answers.
#include <paramdb/storage/lake.h>
#include <paramdb/storage/lake_node.h>

#include "lake_support.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

using lake_support::IndexOf;
using lake_support::Keys;
using lake_support::Lines;
using lake_support::Node;
using lake_support::ReadText;
using Texts = std::vector<std::wstring>;

namespace {

class LakeNodeProxyTest : public testing::Test {
protected:
    void Read(std::string_view text) { ReadText(lake, text); }
    CLake::CNode& At(std::size_t index) { return Node(lake, index); }
    int Place(CLake::CNode::position position) { return IndexOf(lake, position); }

    CLake lake;
};

} // namespace

TEST_F(LakeNodeProxyTest, AProxyTellsWhereItLooked) {
    Read("k: 1\ns: {\na: 2\n}\nlast: {\n");
    auto* const list = lake.root().collection();
    struct Case {
        std::size_t section;
        wchar_t const* key;
        int start, position;
    };
    Case const cases[] = {
        {0, L"k", 1, 1}, {0, L"x", 1, lake_model::End}, {2, L"a", 3, 3},
        {2, L"x", 3, 5}, {5, L"x", 0, lake_model::End}, {1, L"x", lake_model::Nowhere, lake_model::Nowhere}};
    for (Case const& test : cases) {
        CLake::CNodeProxy const proxy = At(test.section)[test.key];
        CLake::CNodeProxy const constant = std::as_const(At(test.section))[test.key];
        for (CLake::CNodeProxy const& found : {proxy, constant}) {
            EXPECT_EQ(found.collection, list);
            EXPECT_EQ(Place(found.section_start), test.start);
            EXPECT_EQ(Place(found.position), test.position);
            EXPECT_EQ(found.key, test.key);
            EXPECT_EQ(found.reserved, 0U);
        }
    }
    EXPECT_EQ(lake.size(), 6U);
}

TEST_F(LakeNodeProxyTest, AProxyReadsTextAndNumber) {
    struct Case {
        char const* value;
        std::int32_t number;
    };
    Case const cases[] = {{"216", 216},
                          {"216.7", 216},
                          {"-5 6", -5},
                          {"+7", 7},
                          {"007", 7},
                          {"0x10", 0},
                          {"1,000", 1},
                          {"", 0},
                          {"abc", 0},
                          {"\"1\"", 0},
                          {"-", 0},
                          {"2147483647", 2147483647},
                          {"2147483648", 2147483647},
                          {"-2147483648", -2147483647 - 1},
                          {"-99999999999999999999", -2147483647 - 1}};
    for (Case const& test : cases) {
        Read(std::string("v: ") + test.value + "\n");
        EXPECT_EQ(lake[L"v"].number(), test.number) << test.value;
        std::string const value = test.value;
        EXPECT_EQ(lake[L"v"].text(), std::wstring(value.begin(), value.end()));
        EXPECT_EQ(lake[L"w"].number(), 0);
        EXPECT_EQ(lake[L"w"].text(), L"");
    }
}

TEST_F(LakeNodeProxyTest, AssigningToAProxySetsTheValueFound) {
    Read("k: 1\nk: 2\ns: {\na: 3\n}\n");
    lake[L"k"] = L"7";
    At(3)[L"a"] = L"8";
    EXPECT_EQ(Lines(lake), (Texts{L"k|7|", L"k|2|", L"s|{|", L"a|8|", L"|}|"}));
}

TEST_F(LakeNodeProxyTest, AssigningToAProxyOfAMissingKeyAddsALine) {
    Read("k: 1\ns: {\na: 2\n}\nz: 3\n");
    lake[L"new"] = L"4";
    EXPECT_EQ(Place(lake[L"new"].position), 6);
    EXPECT_EQ(At(6).level(), -1);
    EXPECT_EQ(Place(At(6).section_end()), lake_model::End);
    At(2)[L"b"] = L"5";
    EXPECT_EQ(Keys(At(2)), (Texts{L"a", L"b"}));
    EXPECT_EQ(Place(At(2).find(L"b")), 5);
    EXPECT_EQ(Lines(lake), (Texts{L"k|1|", L"s|{|", L"a|2|", L"|}|", L"b|5|", L"z|3|", L"new|4|"}));
    EXPECT_EQ(Place(At(5).section_end()), 6);
}

TEST_F(LakeNodeProxyTest, AMissingKeyNeverLeadsToALineBehindTheSection) {
    // The line that a miss in a nested section shows may happen to have the key.
    Read("s: {\n}\nk: 1\n");
    At(1)[L"k"] = L"2";
    EXPECT_EQ(lake[L"k"].text(), L"1");
    EXPECT_EQ(At(1)[L"k"].text(), L"2");
    EXPECT_EQ(Lines(lake), (Texts{L"s|{|", L"|}|", L"k|2|", L"k|1|"}));
}
