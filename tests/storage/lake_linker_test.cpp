// The tree that linking lays over the lines: children, levels and ends of sections.
#include <paramdb/storage/lake.h>

#include "lake_support.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

using lake_support::IndexOf;
using lake_support::Keys;
using lake_support::Node;
using lake_support::ReadText;
using lake_support::Rows;

namespace {

/// "(named children | unnamed children)" of a section, in the order of the records, a plain line as its
/// value.
std::wstring Outline(CLake::CNode const& section) {
    auto const shown = [](CLake::CNode const& line) {
        return line.is_section() ? line.value() + Outline(line) : line.value();
    };
    std::wstring text = L"(";
    for (auto entry = section.begin_named(); entry != section.end_named(); ++entry)
        text += entry->first + L"=" + shown(*entry->second) + L" ";
    text += L"|";
    for (auto row = section.begin_unnamed(); row != section.end_unnamed(); ++row)
        text += L" " + shown(**row);
    return text + L")";
}

struct Nesting {
    char const* text;
    wchar_t const* outline;
    std::vector<int> levels; // of the lines, the root left out
};

} // namespace

TEST(LakeLink, ChildrenAndLevels) {
    Nesting const cases[] = {
        {"", L"(|)", {}},
        {"\n", L"(| )", {0}},
        {"b: 2\na: 1\n7 8\n", L"(a=1 b=2 | 7 8)", {0, 0, 0}},
        {"B: 1\na: 2\n\xE4: 3\nA: 4\n", L"(A=4 B=1 a=2 \xE4=3 |)", {0, 0, 0, 0}},
        {"t: {\n1\n2\n}\n", L"(t={(| 1 2) |)", {0, 1, 1, 0}},
        {"t: {\n; note\n\n1\n}\n", L"(t={(|   1) |)", {0, 1, 1, 1, 0}},
        {"{\na: 1\n}\n", L"(| {(a=1 |))", {0, 1, 0}},
        {"a: {\nb: {\nc: {\n}\n1\n}\n}\n2\n", L"(a={(b={(c={(|) | 1) |) | 2)", {0, 1, 2, 2, 2, 1, 0, 0}},
        // any value that starts with the bracket closes, if there is no key
        {"a: {\n}x\n1\n", L"(a={(|) | 1)", {0, 0, 0}},
        {"a: {\n} ; a\n1\n", L"(a={(|) | 1)", {0, 0, 0}},
        {"a: {\n: }\n1\n", L"(a={(|) | 1)", {0, 0, 0}},
        {"a: {\nb: }\n1\n}\n", L"(a={(b=} | 1) |)", {0, 1, 1, 0}},
        {"a: {\nx }\n}\n", L"(a={(| x }) |)", {0, 1, 0}},
        // no opener
        {"a: { x\n1\n", L"(a={ x | 1)", {0, 0}},
        {"a: {\t; x\n1\n", L"(a={\t; x | 1)", {0, 0}},
        // a missing closing line
        {"a: {\n1\nb: {\n2\n", L"(a={(b={(| 2) | 1) |)", {0, 1, 1, 2}},
        {"{", L"(| {(|))", {0}},
        // repeated keys
        {"x: 1\nx: 2\n", L"(x=1 |)", {0, 0}},
        {"x: {\na: 1\n1\n}\nx: {\nb: 2\n2\n}\n", L"(x={(b=2 | 2) |)", {0, 1, 1, 0, 0, 1, 1, 0}},
        {"x: 1\nx: {\n5\n}\n", L"(x=1(| 5) |)", {0, 0, 1, 0}},
        {"x: {\n5\n}\nx: 1\n", L"(x={(| 5) |)", {0, 1, 0, 0}},
        {"x: {\n5\n}\nx: 1\nx: {\n6\n}\nx: 2\n", L"(x={(| 6) |)", {0, 1, 0, 0, 0, 1, 0, 0}},
        {"a: {\nx: {\n1\n}\nx: {\n}\n}\n", L"(a={(x={(|) |) |)", {0, 1, 2, 1, 1, 1, 0}},
        {"{\n1\n}\n{\n2\n}\n", L"(| {(| 1) {(| 2))", {0, 1, 0, 0, 1, 0}},
        {"x: {\n1\nx: {\n2\n}\n}\n", L"(x={(x={(| 2) | 1) |)", {0, 1, 1, 2, 1, 0}},
        // a closing line at the top level ends it all
        {"a: 1\n}\nb: 2\n", L"(a=1 |)", {0, -1, -1}},
        {"}\nb: {\n1\n}\n", L"(|)", {-1, -1, -1, -1}},
        {"a: {\n}\n}\nx: {\n", L"(a={(|) |)", {0, 0, -1, -1}},
    };
    for (Nesting const& test : cases) {
        SCOPED_TRACE(test.text);
        CLake lake;
        ReadText(lake, test.text);
        EXPECT_EQ(Outline(lake.root()), test.outline);
        std::vector<int> levels;
        for (auto node = std::next(lake.begin()); node != lake.end(); ++node)
            levels.push_back(node->level());
        EXPECT_EQ(levels, test.levels);
        EXPECT_EQ(lake.root().level(), -1);
        EXPECT_EQ(IndexOf(lake, lake.root().section_end()), lake_model::End);
    }
}

TEST(LakeLink, ASectionReadFromAFileEndsBehindItsClosingLine) {
    CLake lake;
    ReadText(lake, "a: {\n1\nb: {\n}\n}\n2\nc: {\n3\n");
    struct Expected {
        std::size_t index;
        int first_child, section_end;
    };
    Expected const cases[] = {{0, 1, lake_model::End}, {1, 2, 6}, {3, 4, 5}, {7, 8, lake_model::End}};
    for (Expected const& test : cases) {
        EXPECT_EQ(IndexOf(lake, Node(lake, test.index).first_child()), test.first_child);
        EXPECT_EQ(IndexOf(lake, Node(lake, test.index).section_end()), test.section_end);
    }
    for (std::size_t const plain : {2U, 4U, 5U, 6U, 8U}) {
        EXPECT_EQ(IndexOf(lake, Node(lake, plain).first_child()), lake_model::Nowhere);
        EXPECT_EQ(IndexOf(lake, Node(lake, plain).section_end()), lake_model::Nowhere);
        EXPECT_FALSE(Node(lake, plain).is_section());
    }
}

TEST(LakeLink, TheRootEndsWithTheListAlsoBehindAStrayClosingLine) {
    CLake lake;
    ReadText(lake, "a: 1\n}\nb: 2\n");
    EXPECT_EQ(IndexOf(lake, lake.root().section_end()), lake_model::End);
    EXPECT_FALSE(lake[L"b"].found());
    EXPECT_TRUE(lake[L"a"].found());
    EXPECT_EQ(lake.size(), 4U);
}

TEST(LakeLink, ASectionSupersededInTheFileKeepsItsOwnRecordsBelow) {
    CLake lake;
    ReadText(lake, "x: {\nb: {\n1\n}\n}\nx: {\n2\n}\n");
    EXPECT_EQ(Rows(Node(lake, 2)), std::vector<std::wstring>{L"1"});
    CLake::CNode const& second = Node(lake, 6);
    EXPECT_EQ(second.key(), L"x");
    EXPECT_TRUE(second.is_section());
    EXPECT_EQ(second.unnamed_size(), 0U);
    EXPECT_EQ(IndexOf(lake, Node(lake, 1).first_child()), 7);
    EXPECT_EQ(IndexOf(lake, Node(lake, 1).section_end()), lake_model::End);
}

TEST(LakeLink, LinkingOneNodeGivesThePositionBehindItsClosingLine) {
    CLake lake;
    ReadText(lake, "a: 1\n5\n6\n} ; x\nb: 2\n");
    CLake::CNode& node = Node(lake, 1);
    CLake::CNode::position const behind = node.link(std::next(lake.begin(), 2));
    EXPECT_EQ(IndexOf(lake, behind), 5);
    EXPECT_EQ(node.section_end(), behind);
    EXPECT_TRUE(node.is_section());
    EXPECT_EQ(node.value(), L"1");
    EXPECT_EQ(Rows(node), (std::vector<std::wstring>{L"5", L"6"}));
    EXPECT_EQ(Node(lake, 2).level(), 1);
    EXPECT_EQ(Node(lake, 4).level(), 0);
    EXPECT_EQ(node.link(lake.end()), lake.end());
    EXPECT_EQ(node.unnamed_size(), 0U);
    EXPECT_EQ(node.first_child(), lake.end());
}

TEST(LakeLink, LinkedLinesKnowTheirList) {
    CLake lake;
    ReadText(lake, "a: {\n1\n}\n2\n");
    auto* const list = lake.root().collection();
    ASSERT_NE(list, nullptr);
    for (auto const& node : std::as_const(lake))
        EXPECT_EQ(node.collection(), list);
}

TEST(LakeLink, NamedChildrenStandInTheOrderOfTheirCodeUnits) {
    CLake lake;
    ReadText(lake, "b: \nab: \n\xFC: \nB: \n1: \n<T>: \na: \na b: \n");
    EXPECT_EQ(Keys(lake.root()),
              (std::vector<std::wstring>{L"1", L"<T>", L"B", L"a", L"a b", L"ab", L"b", L"\xFC"}));
}
