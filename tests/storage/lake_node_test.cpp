// Operations of a single node. The tree itself is tested in lake_linker_test.cpp.
#include <paramdb/storage/lake.h>
#include <paramdb/storage/lake_node.h>

#include "lake_support.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

using lake_support::IndexOf;
using lake_support::Lines;
using lake_support::Node;
using lake_support::ReadText;
using lake_support::Rows;
using lake_support::WrittenText;
using Texts = std::vector<std::wstring>;

namespace {

class LakeNodeTest : public testing::Test {
protected:
    void Read(std::string_view text) { ReadText(lake, text); }
    CLake::CNode& At(std::size_t index) { return Node(lake, index); }
    int Place(CLake::CNode::position position) { return IndexOf(lake, position); }

    CLake lake;
};

} // namespace

TEST(LakeNode, ADefaultNodeHasNothing) {
    CLakeNode const node;
    EXPECT_EQ(node.key(), L"");
    EXPECT_EQ(node.value(), L"");
    EXPECT_EQ(node.comment(), L"");
    EXPECT_EQ(node.level(), -1);
    EXPECT_EQ(node.collection(), nullptr);
    EXPECT_FALSE(node.is_named());
    EXPECT_FALSE(node.is_section());
    EXPECT_EQ(node.named_size(), 0U);
    EXPECT_EQ(node.unnamed_size(), 0U);
    EXPECT_EQ(node.begin_named(), node.end_named());
    EXPECT_EQ(node.begin_unnamed(), node.end_unnamed());
    EXPECT_EQ(node.first_child(), CLakeNode::position());
    EXPECT_EQ(node.section_end(), CLakeNode::position());
    EXPECT_EQ(node.find(L""), CLakeNode::position());
    EXPECT_EQ(node.find_value(L""), -1);
    EXPECT_FALSE(node[L"a"].found());
}

TEST_F(LakeNodeTest, ANodeMadeOfTextsIsAPlainLineAtNoLevel) {
    CLakeNode const node(lake.root().collection(), L"k", L"{", L"c");
    EXPECT_EQ(node.key(), L"k");
    EXPECT_EQ(node.value(), L"{");
    EXPECT_EQ(node.comment(), L"c");
    EXPECT_EQ(node.key_text().wide(), L"k");
    EXPECT_EQ(node.level(), -1);
    EXPECT_TRUE(node.is_named());
    EXPECT_FALSE(node.is_section());
    EXPECT_EQ(node.collection(), lake.root().collection());
    EXPECT_EQ(lake.size(), 1U);
}

TEST_F(LakeNodeTest, ACopyHasThePositionsOfItsSource) {
    Read("s: {\na: 1\n2\n}\nz: 3\n");
    CLakeNode const copy(At(1));
    CLakeNode assigned;
    assigned = At(1);
    for (CLakeNode const* const node : {&copy, &std::as_const(assigned)}) {
        EXPECT_EQ(node->key(), L"s");
        EXPECT_EQ(node->value(), L"{");
        EXPECT_EQ(node->level(), 0);
        EXPECT_TRUE(node->is_section());
        EXPECT_EQ(node->collection(), lake.root().collection());
        EXPECT_EQ(Place(node->first_child()), 2);
        EXPECT_EQ(Place(node->section_end()), 5);
        EXPECT_EQ(Place(node->find(L"a")), 2);
        EXPECT_EQ(Rows(*node), Texts{L"2"});
    }
    assigned = CLakeNode();
    EXPECT_EQ(assigned.key(), L"");
    EXPECT_FALSE(assigned.is_section());
    EXPECT_EQ(assigned.unnamed_size(), 0U);
    EXPECT_EQ(assigned.section_end(), CLakeNode::position());
}

TEST(LakeNode, ACopyOutlivesTheLakeOfItsSource) {
    CLakeNode copy;
    {
        CLake lake;
        ReadText(lake, "key: value\n; comment\n");
        copy = Node(lake, 1);
        EXPECT_EQ(copy.value_text().wide(), L"value");
        CLakeNode const comment(Node(lake, 2));
        lake.clear();
        EXPECT_EQ(comment.comment(), L"comment");
    }
    EXPECT_EQ(copy.key(), L"key");
    EXPECT_EQ(copy.value(), L"value");
}

TEST_F(LakeNodeTest, SelfAssignmentAndMoves) {
    Read("s: {\n1\n}\n");
    CLakeNode& node = At(1);
    CLakeNode const& same = node;
    node = same;
    EXPECT_EQ(node.key(), L"s");
    EXPECT_EQ(Rows(node), Texts{L"1"});
    CLakeNode moved(std::move(node));
    EXPECT_EQ(moved.key(), L"s");
    EXPECT_EQ(Rows(moved), Texts{L"1"});
    CLakeNode target;
    target = std::move(moved);
    EXPECT_EQ(target.key(), L"s");
    EXPECT_EQ(Rows(target), Texts{L"1"});
}

TEST_F(LakeNodeTest, AssigningTextsChangesNothingElse) {
    Read("k: 1\ns: {\n}\n; c\n");
    At(1) = L"2";
    At(1).comment(L"note");
    EXPECT_EQ(At(1).key(), L"k");
    EXPECT_EQ(At(1).value(), L"2");
    EXPECT_EQ(At(1).comment(), L"note");
    At(1).value(L"{");
    EXPECT_FALSE(At(1).is_section());
    At(2).value(L"x");
    EXPECT_TRUE(At(2).is_section());
    EXPECT_EQ(At(2).value_text().wide(), L"x");
    At(4).value(L"5");
    EXPECT_EQ(Lines(lake), (Texts{L"k|{|note", L"s|x|", L"|}|", L"|5|c"}));
    At(2) = std::wstring();
    EXPECT_EQ(At(2).value(), L"");
    EXPECT_EQ(At(2).key(), L"s");
}

TEST_F(LakeNodeTest, FindGivesTheChildOrTheSectionsEnd) {
    Read("k: 1\ns: {\na: 2\na: 3\nin: {\n}\n}\nz: 4\n");
    EXPECT_EQ(Place(lake.root().find(L"k")), 1);
    EXPECT_EQ(Place(lake.root().find(L"s")), 2);
    EXPECT_EQ(Place(lake.root().find(L"K")), lake_model::End);
    EXPECT_EQ(Place(lake.root().find(L"a")), lake_model::End);
    EXPECT_EQ(Place(lake.root().find(L"")), lake_model::End);
    EXPECT_EQ(Place(lake.root().find(L"k ")), lake_model::End);
    EXPECT_EQ(Place(At(2).find(L"a")), 3);
    EXPECT_EQ(Place(At(2).find(L"in")), 5);
    EXPECT_EQ(Place(At(2).find(L"z")), 8);
    EXPECT_EQ(Place(At(1).find(L"k")), lake_model::Nowhere);
    lake[L"new"] = L"5";
    EXPECT_EQ(Place(At(9).find(L"new")), lake_model::End);
}

TEST_F(LakeNodeTest, FindValueCountsTheUnnamedChildren) {
    Read("s: {\n1 2\na: 3\n 1  2\n; note\n\n\"x\"\n{\n}\n1 2\n}\nk: 1\n");
    CLakeNode const& section = At(1);
    struct Case {
        wchar_t const* text;
        int index;
    };
    for (Case const& test : {Case{L"1 2", 0},
                             {L"1  2", 1},
                             {L"", 2},
                             {L"\"x\"", 4},
                             {L"{", 5},
                             {L"3", -1},
                             {L"1 2 ", -1},
                             {L"}", -1},
                             {L"note", -1}})
        EXPECT_EQ(section.find_value(test.text), test.index) << test.text;
    EXPECT_EQ(At(12).find_value(L""), -1);
    EXPECT_EQ(At(12).find_value(L"1"), -1);
    At(2) = L"9";
    EXPECT_EQ(section.find_value(L"9"), 0);
    EXPECT_EQ(section.find_value(L"1 2"), 6);
}

TEST_F(LakeNodeTest, PushBackMakesASectionOfAPlainLine) {
    Read("k: 1\nz: 2\n");
    EXPECT_EQ(At(1).push_back(L"a b"), 0U);
    EXPECT_EQ(At(1).push_back(L"c"), 1U);
    EXPECT_TRUE(At(1).is_section());
    EXPECT_EQ(Rows(At(1)), (Texts{L"a b", L"c"}));
    EXPECT_EQ(Lines(lake), (Texts{L"k|{|", L"|a b|", L"|c|", L"|}|k", L"z|2|"}));
    EXPECT_EQ(Place(At(1).section_end()), 4);
    EXPECT_EQ(At(2).level(), 1);
    EXPECT_EQ(At(4).level(), 0);
    EXPECT_EQ(At(1).find_value(L"c"), 1);
    EXPECT_EQ(Place(At(1).find(L"x")), 4);
    EXPECT_EQ(WrittenText(lake), "k: {\n\ta b\n\tc\n}\t; k\nz: 2\n");
}

TEST_F(LakeNodeTest, PushBackMakesASectionOfAnUnnamedLine) {
    Read("s: {\n1\n; note\n}\n");
    EXPECT_EQ(At(2).push_back(L"x"), 0U);
    EXPECT_EQ(At(5).comment(), L"note");
    EXPECT_EQ(At(5).push_back(L"y"), 0U);
    EXPECT_EQ(Lines(lake), (Texts{L"s|{|", L"|{|", L"|x|", L"|}|", L"|{|note", L"|y|", L"|}|", L"|}|"}));
    EXPECT_EQ(WrittenText(lake), "s: {\n\t{\n\t\tx\n\t}\n\t{\t; note\n\t\ty\n\t}\n}\n");
}

TEST_F(LakeNodeTest, PushBackOnASectionOfAFileAddsTheLineBehindItsClosingLine) {
    Read("s: {\n1\n}\nz: 2\n");
    EXPECT_EQ(At(1).push_back(L"new"), 1U);
    EXPECT_EQ(Rows(At(1)), (Texts{L"1", L"new"}));
    EXPECT_EQ(Lines(lake), (Texts{L"s|{|", L"|1|", L"|}|", L"|new|", L"z|2|"}));
    EXPECT_EQ(WrittenText(lake), "s: {\n\t1\n}\n\tnew\nz: 2\n");
}

TEST_F(LakeNodeTest, PushBackOnTheRootAddsALineAtTheEnd) {
    EXPECT_EQ(lake.root().push_back(L"1"), 0U);
    EXPECT_EQ(lake.root().push_back(L"{"), 1U);
    EXPECT_EQ(Lines(lake), (Texts{L"|1|", L"|{|"}));
    EXPECT_EQ(At(1).level(), 0);
    EXPECT_FALSE(At(2).is_section());
    EXPECT_EQ(At(2).push_back(L"2"), 0U);
    EXPECT_EQ(WrittenText(lake), "1\n{\n\t2\n}\n");
}

TEST_F(LakeNodeTest, PushBackOnASupersededLineStaysAtThatLine) {
    Read("k: 1\nk: 2\nz: 3\n");
    At(2).push_back(L"x");
    EXPECT_EQ(Lines(lake), (Texts{L"k|1|", L"k|{|", L"|x|", L"|}|k", L"z|3|"}));
    EXPECT_EQ(lake[L"k"].text(), L"1");
}

TEST(LakeNode, PushBackNeedsALake) {
    CLakeNode node;
    EXPECT_THROW(node.push_back(L"x"), std::logic_error);
    EXPECT_FALSE(node.is_section());
}

TEST_F(LakeNodeTest, LinkingWithoutAListRecordsNothing) {
    Read("1\n");
    CLakeNode node;
    EXPECT_EQ(Place(node.link(std::next(lake.begin()))), 1);
    EXPECT_TRUE(node.is_section());
    EXPECT_EQ(node.unnamed_size(), 0U);
    EXPECT_EQ(At(1).level(), 0);
}

TEST_F(LakeNodeTest, ClearLeavesCommentAndPositions) {
    Read("s: {\na: 1\n2\n}\n} ; stray\n; note\n");
    CLakeNode& section = At(1);
    section.comment(L"kept");
    section.clear();
    EXPECT_EQ(section.key(), L"");
    EXPECT_EQ(section.value(), L"");
    EXPECT_EQ(section.comment(), L"kept");
    EXPECT_EQ(section.collection(), nullptr);
    EXPECT_EQ(section.level(), -1);
    EXPECT_FALSE(section.is_section());
    EXPECT_FALSE(section.is_named());
    EXPECT_EQ(section.named_size(), 0U);
    EXPECT_EQ(section.unnamed_size(), 0U);
    EXPECT_EQ(Place(section.first_child()), 2);
    EXPECT_EQ(Place(section.section_end()), 5);
    EXPECT_EQ(Place(section.find(L"a")), 5);
    At(5).clear();
    EXPECT_EQ(At(5).value_text().wide(), L"");
    EXPECT_EQ(At(5).comment_text().wide(), L"stray");
    At(6).clear();
    EXPECT_EQ(At(6).comment(), L"note");
    EXPECT_EQ(lake.size(), 7U);
}

TEST_F(LakeNodeTest, ClearOfANamedLineEmptiesItsTexts) {
    Read("key: value\n");
    At(1).clear();
    EXPECT_TRUE(At(1).key_text().empty());
    EXPECT_TRUE(At(1).value_text().empty());
    EXPECT_TRUE(At(1).comment_text().empty());
    EXPECT_EQ(Lines(lake), Texts{L"||"});
}

TEST_F(LakeNodeTest, ClearSectionRemovesTheRecordedLines) {
    Read("s: {\na: 1\na: 2\n3\nin: {\n4\n}\n; note\n}\nz: 5\n");
    At(1).clear_section();
    EXPECT_EQ(Lines(lake), (Texts{L"s|{|", L"a|2|", L"|4|", L"|}|", L"|}|", L"z|5|"}));
    EXPECT_EQ(lake.size(), 7U);
    EXPECT_TRUE(At(1).is_section());
    EXPECT_EQ(At(1).named_size(), 0U);
    EXPECT_EQ(At(1).unnamed_size(), 0U);
    EXPECT_EQ(Place(At(1).find(L"a")), 6);
    EXPECT_EQ(WrittenText(lake), "s: {\n\ta: 2\n\t\t4\n\t}\n}\nz: 5\n");
    At(1).push_back(L"6");
    EXPECT_EQ(Rows(At(1)), Texts{L"6"});
}

TEST_F(LakeNodeTest, ClearSectionOfTheRootLeavesWhatIsNoTopLevelLine) {
    Read("s: {\n1\n}\n2\n");
    lake.root().clear_section();
    EXPECT_EQ(Lines(lake), (Texts{L"|1|", L"|}|"}));
    EXPECT_FALSE(lake[L"s"].found());
    lake.root().clear_section();
    EXPECT_EQ(lake.size(), 3U);
}

TEST_F(LakeNodeTest, ClearSectionWithoutAListEmptiesTheRecordsOnly) {
    Read("s: {\na: 1\n2\n}\n");
    At(1).set_collection(nullptr);
    At(1).clear_section();
    EXPECT_EQ(At(1).named_size(), 0U);
    EXPECT_EQ(At(1).unnamed_size(), 0U);
    EXPECT_TRUE(At(1).is_section());
    EXPECT_EQ(lake.size(), 5U);
}

TEST_F(LakeNodeTest, ClearSectionOfAPlainLineDoesNothing) {
    Read("k: 1\n2\n");
    At(1).clear_section();
    EXPECT_EQ(Lines(lake), (Texts{L"k|1|", L"|2|"}));
    EXPECT_FALSE(At(1).is_section());
}
