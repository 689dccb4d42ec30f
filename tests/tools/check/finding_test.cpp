#include "tools/check/finding.h"

#include <gtest/gtest.h>
#include <stdexcept>

using namespace paramdb::tools::check;

TEST(Finding, AreSortedAndEachIsThereOnce) {
    FindingList list;
    list.Add("P204", {1, 2, 3, 1}, "c");
    list.Add("P204", {0, 9, 3, 1}, "b").Hint("first").Relate({0, 1, 1, 1}, "there");
    list.Add("P204", {0, 9, 3, 1}, "b").Hint("second");
    list.Add("P204", {0, 9, 3, 1}, "a");
    list.Add("P105", {0, 9, 3, 1}, "z");
    list.Add("P191", {}, "whole file");
    list.Explain(7);
    EXPECT_TRUE(list.IsExplained(7));
    EXPECT_FALSE(list.IsExplained(6));
    auto const findings = list.Take();
    std::string order;
    for (Finding const& finding : findings)
        order += finding.message + ' ';
    EXPECT_EQ(order, "whole file z a b c ");
    EXPECT_EQ(findings[3].hint, "first");
    EXPECT_EQ(findings[3].related.size(), 1U);
    EXPECT_TRUE(list.Take().empty());
    EXPECT_FALSE(list.IsExplained(7));
}

TEST(Finding, ACodeMustBeThere) {
    FindingList list;
    EXPECT_THROW(list.Add("P999", {}, ""), std::logic_error);
}
