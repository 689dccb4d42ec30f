// Merging, copying, assigning and clearing whole lakes.
#include <paramdb/storage/lake.h>

#include "lake_support.h"

#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

using namespace std::string_literals;
using lake_support::IndexOf;
using lake_support::Lines;
using lake_support::Node;
using lake_support::ReadText;
using lake_support::Rows;
using lake_support::WrittenText;
using Texts = std::vector<std::wstring>;

namespace {

/// What a lookup shows: "-" on a miss, the value, and the rows if it is a section.
std::wstring Look(CLake const& lake, std::wstring const& key) {
    auto const found = lake[key];
    if (!found.found())
        return L"-";
    std::wstring text = found.text();
    if (found.position->is_section())
        for (std::wstring const& row : Rows(*found.position))
            text += L" " + row;
    return text;
}

} // namespace

TEST(Lake, AnEmptyLakeHoldsTheRootAlone) {
    CLake lake;
    EXPECT_TRUE(lake.empty());
    EXPECT_EQ(lake.size(), 1U);
    EXPECT_TRUE(lake.filename().IsEmpty());
    EXPECT_EQ(&*lake.begin(), &lake.root());
    EXPECT_EQ(std::next(lake.begin()), lake.end());
    CLake::CNode const& root = lake.root();
    EXPECT_TRUE(root.is_section());
    EXPECT_EQ(root.level(), -1);
    EXPECT_EQ(root.key() + root.value() + root.comment(), L"");
    EXPECT_EQ(IndexOf(lake, root.first_child()), lake_model::End);
    EXPECT_EQ(IndexOf(lake, root.section_end()), lake_model::End);
    for (wchar_t const* const key : {L"", L"a", L"<DbDesign.CacheVersion>"}) {
        auto const missed = lake[key];
        EXPECT_EQ(missed.position, lake.end());
        EXPECT_EQ(missed.section_start, lake.begin());
        EXPECT_EQ(missed.key, key);
        EXPECT_FALSE(missed.found());
    }
}

TEST(Lake, ConstAccess) {
    CLake lake;
    ReadText(lake, "a: 1\ns: {\n2\n}\n");
    CLake const& constant = lake;
    EXPECT_EQ(constant[L"a"].text(), L"1");
    EXPECT_EQ(constant[L"b"].text(), L"");
    EXPECT_EQ(constant[L"a"].position, lake[L"a"].position);
    EXPECT_EQ(&constant.root(), &lake.root());
    EXPECT_EQ(std::distance(constant.begin(), constant.end()), 5);
    EXPECT_FALSE(constant.empty());
    EXPECT_EQ(constant.size(), 5U);
}

TEST(Lake, WhatAMergeShows) {
    struct Case {
        char const *mine, *other;
        wchar_t const* seen; // under the key "k"
        std::size_t named;
    };
    Case const cases[] = {
        {"k: a\n", "k: b\n", L"a", 1},
        {"k: a\n", "k: {\n1\n}\n", L"a 1", 1},
        {"k: {\n1\n}\n", "k: b\n", L"{ 1", 1},
        {"k: {\n1\n2\n}\n", "k: {\n3\n}\n", L"{ 3", 1},
        {"k: {\n1\n}\n", "k: {\n}\n", L"{", 1},
        {"", "k: b\n", L"b", 1},
        {"x: 1\n", "k: {\n1\n}\n", L"{ 1", 2},
        {"k: a\n", "", L"a", 1},
        {"k: {\n1\n}\n", "x: 1\n", L"{ 1", 2},
        {"k: \n", "k: b\n", L"", 1},
        {"k: a\n", "K: b\n", L"a", 2},
        {"k: {\n1\n", "k: b\n", L"{ 1 ", 1},
        {"}\n", "k: b\n", L"-", 0},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.mine + " merged with "s + test.other);
        CLake lake;
        CLake other;
        ReadText(lake, test.mine);
        ReadText(other, test.other);
        CString const name = lake.filename();
        std::size_t const size = lake.size() + other.size();
        Texts const others = Lines(other);
        Texts lines = Lines(lake);
        lines.push_back(L"||");
        lines.insert(lines.end(), others.begin(), others.end());
        lake.merge(other);
        EXPECT_EQ(Look(lake, L"k"), test.seen);
        EXPECT_EQ(lake.root().named_size(), test.named);
        EXPECT_EQ(lake.size(), size);
        EXPECT_EQ(Lines(lake), lines);
        EXPECT_EQ(lake.filename(), name);
        EXPECT_EQ(Lines(other), others);
    }
}

TEST(Lake, AMergeReplacesWholeSections) {
    CLake lake;
    CLake other;
    ReadText(lake, "<V>: 1\ns: {\na: 1\nb: 2\nin: {\n1\n}\n}\nt: {\n5\n}\n1\n");
    ReadText(other, "<V>: 2\ns: {\nb: 3\n}\n2\n");
    lake.merge(other);
    CLake::CNode const& section = *lake[L"s"].position;
    EXPECT_EQ(lake_support::Keys(section), Texts{L"b"});
    EXPECT_EQ(section[L"b"].text(), L"3");
    EXPECT_EQ(lake[L"<V>"].number(), 1);
    EXPECT_EQ(Look(lake, L"t"), L"{ 5");
    EXPECT_EQ(Rows(lake.root()), (Texts{L"1", L"", L"2"}));
    EXPECT_EQ(WrittenText(lake), "<V>: 1\ns: {\n\ta: 1\n\tb: 2\n\tin: {\n\t\t1\n\t}\n}\nt: {\n\t5\n}\n1\n"
                                 "\n<V>: 2\ns: {\n\tb: 3\n}\n2\n");
    CLake again;
    ReadText(again, WrittenText(lake));
    EXPECT_EQ(Lines(again), Lines(lake));
    EXPECT_EQ((*again[L"s"].position)[L"b"].text(), L"3");
}

TEST(Lake, MergingTwoEmptyLakesMakesABlankLine) {
    CLake lake;
    CLake other;
    lake.merge(other);
    EXPECT_FALSE(lake.empty());
    EXPECT_EQ(lake.size(), 2U);
    EXPECT_EQ(Rows(lake.root()), Texts{L""});
    EXPECT_FALSE(Node(lake, 1).is_section());
    EXPECT_EQ(Node(lake, 1).level(), 0);
    EXPECT_EQ(WrittenText(lake), "\n");
    EXPECT_TRUE(other.empty());
}

TEST(Lake, MergingTwiceAddsTheLinesTwice) {
    CLake lake;
    CLake other;
    ReadText(lake, "s: {\n1\n}\n");
    ReadText(other, "s: {\n2\n}\nk: 1\n3\n");
    lake.merge(other);
    EXPECT_EQ(Look(lake, L"s"), L"{ 2");
    lake.merge(other);
    EXPECT_EQ(Look(lake, L"s"), L"{ 2");
    EXPECT_EQ(Look(lake, L"k"), L"1");
    EXPECT_EQ(lake.size(), 4U + 6U + 6U);
    EXPECT_EQ(Rows(lake.root()), (Texts{L"", L"3", L"", L"3"}));
}

TEST(Lake, AMergedOpenerThatIsNotReachedShowsItsOwnLines) {
    CLake lake;
    CLake other;
    ReadText(lake, "s: {\n1\n}\n");
    ReadText(other, "s: {\n2\na: 3\n}\nz: 4\n");
    lake.merge(other);
    CLake::CNode const& copied = Node(lake, 5);
    EXPECT_EQ(copied.key(), L"s");
    EXPECT_TRUE(copied.is_section());
    EXPECT_EQ(Rows(copied), Texts{L"2"});
    EXPECT_EQ(IndexOf(lake, copied.find(L"a")), 7);
    EXPECT_EQ(IndexOf(lake, copied.first_child()), 6);
    EXPECT_EQ(IndexOf(lake, copied.section_end()), 9);
    EXPECT_EQ(IndexOf(lake, Node(lake, 1).find(L"a")), 7);
}

TEST(Lake, AMergedLakeDoesNotNeedTheOther) {
    CLake lake;
    {
        CLake other;
        ReadText(other, "a: 1\ns: {\n2\n}\n");
        lake.merge(other);
    }
    EXPECT_EQ(Look(lake, L"a"), L"1");
    EXPECT_EQ(Look(lake, L"s"), L"{ 2");
    EXPECT_EQ(WrittenText(lake), "\na: 1\ns: {\n\t2\n}\n");
}

TEST(Lake, MergingALakeWithItself) {
    CLake lake;
    ReadText(lake, "a: 1\ns: {\n2\n}\n3\n");
    CString const name = lake.filename();
    lake.merge(lake);
    EXPECT_EQ(Lines(lake), (Texts{L"a|1|", L"s|{|", L"|2|", L"|}|", L"|3|", L"||", L"a|1|", L"s|{|", L"|2|",
                                  L"|}|", L"|3|"}));
    EXPECT_EQ(Rows(lake.root()), (Texts{L"3", L"", L"3"}));
    EXPECT_EQ(IndexOf(lake, lake[L"s"].position), 2);
    EXPECT_EQ(IndexOf(lake, lake[L"s"].position->first_child()), 9);
    EXPECT_EQ(lake.filename(), name);
}

TEST(Lake, MergingALakeWithItselfIsMergingAnEqualOne) {
    CLake lakes[3];
    for (CLake& lake : lakes) {
        ReadText(lake, "s: {\n1\n}\nz: 2\n");
        lake[L"s"].position->push_back(L"3");
    }
    lakes[0].merge(lakes[0]);
    lakes[1].merge(lakes[2]);
    EXPECT_EQ(Lines(lakes[0]), Lines(lakes[1]));
    for (std::size_t index = 0; index < lakes[1].size(); ++index) {
        CLake::CNode const& own = Node(lakes[0], index);
        CLake::CNode const& equal = Node(lakes[1], index);
        EXPECT_EQ(Rows(own), Rows(equal)) << index;
        EXPECT_EQ(IndexOf(lakes[0], own.section_end()), IndexOf(lakes[1], equal.section_end())) << index;
    }
}

TEST(Lake, ACopyHoldsOneLineMore) {
    CLake lake;
    ReadText(lake, "a: 1\ns: {\n2\n}\n3\n");
    CLake const copy(lake);
    EXPECT_TRUE(copy.filename().IsEmpty());
    EXPECT_EQ(copy.size(), lake.size() + 1);
    EXPECT_EQ(copy.root().unnamed_size(), lake.root().unnamed_size() + 1);
    EXPECT_EQ(Rows(copy.root()), (Texts{L"", L"3"}));
    EXPECT_EQ(Look(copy, L"a"), L"1");
    EXPECT_EQ(Look(copy, L"s"), L"{ 2");
    EXPECT_EQ(WrittenText(copy), "\na: 1\ns: {\n\t2\n}\n3\n");
    EXPECT_EQ(Lines(lake), (Texts{L"a|1|", L"s|{|", L"|2|", L"|}|", L"|3|"}));
    CLake const empty;
    CLake const copy_of_empty(empty);
    EXPECT_FALSE(copy_of_empty.empty());
    EXPECT_EQ(copy_of_empty.size(), 2U);
}

TEST(Lake, AnAssignedLakeHasTheLinesAndItsOwnName) {
    CLake lake;
    CLake target;
    ReadText(lake, "a: 1\ns: {\n2\n}\n3\n");
    ReadText(target, "b: 1\nc: 1\n");
    CString const name = target.filename();
    CLake& result = target = lake;
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(target.filename(), name);
    EXPECT_EQ(target.size(), lake.size());
    EXPECT_EQ(Lines(target), Lines(lake));
    EXPECT_FALSE(target[L"b"].found());
    EXPECT_EQ(Look(target, L"s"), L"{ 2");
    EXPECT_EQ(target.root().level(), -1);
    target = CLake();
    EXPECT_TRUE(target.empty());
    EXPECT_EQ(target.filename(), name);
}

TEST(Lake, AnAssignedLakeHasABlankRoot) {
    CLake lake;
    ReadText(lake, "a: 1\n");
    lake.root().value(L"text");
    CLake target;
    target = lake;
    EXPECT_EQ(target.root().value(), L"");
    EXPECT_EQ(lake.root().value(), L"text");
}

TEST(Lake, CopiesAreIndependent) {
    CLake copy;
    {
        CLake lake;
        ReadText(lake, "a: 1\ns: {\n2\n}\n");
        copy = lake;
        lake[L"a"] = L"7";
        lake[L"s"].position->push_back(L"8");
    }
    EXPECT_EQ(Look(copy, L"a"), L"1");
    EXPECT_EQ(Look(copy, L"s"), L"{ 2");
    CLake second(copy);
    second[L"a"] = L"9";
    EXPECT_EQ(Look(copy, L"a"), L"1");
    EXPECT_EQ(Look(second, L"a"), L"9");
}

TEST(Lake, AssignedTextsAreCopied) {
    CLake lake;
    ReadText(lake, "a: 1\n; note\n3\n");
    lake[L"a"] = L"\x20AC";
    Node(lake, 3).comment(L"c");
    static_cast<void>(Node(lake, 2).comment());
    CLake target;
    target = lake;
    CLake merged;
    merged.merge(lake);
    EXPECT_EQ(Lines(target), (Texts{L"a|\x20AC|", L"||note", L"|3|c"}));
    EXPECT_EQ(Lines(merged), (Texts{L"||", L"a|\x20AC|", L"||note", L"|3|c"}));
}

TEST(Lake, SelfAssignmentChangesNothing) {
    CLake lake;
    ReadText(lake, "a: 1\ns: {\n2\n}\n");
    lake[L"s"].position->push_back(L"3");
    auto const position = lake[L"s"].position;
    CLake const& same = lake;
    lake = same;
    EXPECT_EQ(lake[L"s"].position, position);
    EXPECT_EQ(Look(lake, L"s"), L"{ 2 3");
    EXPECT_EQ(lake.size(), 6U);
}

TEST(Lake, ClearKeepsTheName) {
    CLake lake;
    ReadText(lake, "a: 1\ns: {\n2\n}\n");
    CString const name = lake.filename();
    lake.clear();
    EXPECT_TRUE(lake.empty());
    EXPECT_EQ(lake.size(), 1U);
    EXPECT_EQ(lake.filename(), name);
    EXPECT_FALSE(lake[L"a"].found());
    EXPECT_EQ(IndexOf(lake, lake.root().section_end()), lake_model::End);
    lake.root().push_back(L"1");
    EXPECT_EQ(Lines(lake), Texts{L"|1|"});
}

TEST(Lake, LinesOutsideTheTreeComeBackWhenTheLakeIsLinkedAgain) {
    CLake lake;
    ReadText(lake, "s: {\n1\n}\nz: 2\n");
    lake[L"s"].position->push_back(L"3");
    lake[L"new"] = L"4";
    CLake linked;
    linked = lake;
    EXPECT_EQ(Look(linked, L"s"), L"{ 1");
    EXPECT_EQ(Rows(linked.root()), Texts{L"3"});
    EXPECT_EQ(Look(linked, L"new"), L"4");
    EXPECT_EQ(WrittenText(linked), "s: {\n\t1\n}\n3\nz: 2\nnew: 4\n");
}
