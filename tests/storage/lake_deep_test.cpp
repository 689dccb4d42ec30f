// A million sections, one inside the other: nothing may use the stack for them.
#include <paramdb/storage/lake.h>

#include "lake_support.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

constexpr std::size_t Depth = 1'000'000;

std::string Nested(char const* opener, bool closed) {
    std::string text;
    for (std::size_t level = 0; level < Depth; ++level)
        text += opener;
    text += "innermost\n";
    if (closed)
        for (std::size_t level = 0; level < Depth; ++level)
            text += "}\n";
    return text;
}

/// Walks down from the first child of the root and gives the number of sections on the way.
std::size_t DepthOf(CLake const& lake, std::size_t first) {
    auto node = lake.root().begin_unnamed()[static_cast<std::ptrdiff_t>(first)];
    std::size_t depth = 0;
    for (; node->is_section(); ++depth)
        node = node->named_size() > 0 ? node->begin_named()->second : *node->begin_unnamed();
    EXPECT_EQ(node->value(), L"innermost");
    EXPECT_EQ(node->level(), static_cast<std::int32_t>(depth));
    return depth;
}

} // namespace

TEST(LakeDeep, ReadingCopyingMergingAndDestroying) {
    auto lake = std::make_unique<CLake>();
    lake_support::ReadText(*lake, Nested("{\n", true));
    EXPECT_EQ(lake->size(), 2 * Depth + 2);
    EXPECT_EQ(DepthOf(*lake, 0), Depth);
    auto copy = std::make_unique<CLake>(*lake);
    EXPECT_EQ(copy->size(), 2 * Depth + 3);
    EXPECT_EQ(DepthOf(*copy, 1), Depth);
    lake->merge(*copy);
    copy.reset();
    EXPECT_EQ(lake->size(), 4 * Depth + 5);
    EXPECT_EQ(DepthOf(*lake, 0), Depth);
    EXPECT_EQ(DepthOf(*lake, 3), Depth);
    lake->clear();
    EXPECT_TRUE(lake->empty());
}

TEST(LakeDeep, KeyedSectionsWithoutClosingLines) {
    CLake lake;
    lake_support::ReadText(lake, "{\n" + Nested("k: {\n", false));
    EXPECT_EQ(lake.size(), Depth + 3);
    EXPECT_EQ(DepthOf(lake, 0), Depth + 1);
    EXPECT_EQ(lake.root().section_end(), lake.end());
    CLake other;
    other = lake;
    EXPECT_EQ(DepthOf(other, 0), Depth + 1);
    lake_support::ReadText(other, "a: 1\n");
    EXPECT_EQ(other.size(), 2U);
}
