// Lines whose texts, blanks and levels are about as long as a node holds without further memory, and longer.
#include <paramdb/storage/lake.h>

#include "lake_support.h"

#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

constexpr std::size_t Lengths[] = {1, 2, 254, 255, 256, 257, 65534, 65535, 65536, 65537, 200000};

std::wstring Wide(std::string const& text) {
    return {text.begin(), text.end()};
}

// In bytes, then wide, then in a copy of the lake and in one that was merged.
void ExpectLine(std::string const& line, std::string const& key, std::string const& value,
                std::string const& comment) {
    SCOPED_TRACE(line.size());
    CLake lake;
    lake_support::ReadText(lake, line + "\nnext: 1\n");
    ASSERT_EQ(lake.size(), 3U);
    CLake copy(lake);
    CLake merged;
    merged.merge(lake);
    for (CLake::CNode* const node :
         {&lake_support::Node(lake, 1), &lake_support::Node(copy, 2), &lake_support::Node(merged, 2)}) {
        EXPECT_TRUE(node->key_text() == Wide(key));
        EXPECT_TRUE(node->value_text() == Wide(value));
        EXPECT_TRUE(node->comment_text() == Wide(comment));
        EXPECT_EQ(node->is_named(), !key.empty());
        EXPECT_EQ(node->level(), 0);
        EXPECT_TRUE(node->key() == Wide(key));
        EXPECT_TRUE(node->value() == Wide(value));
        EXPECT_TRUE(node->comment() == Wide(comment));
    }
    lake_support::Node(lake, 1).clear();
    EXPECT_TRUE(lake_support::Node(lake, 1).key_text().empty());
    EXPECT_TRUE(lake_support::Node(lake, 1).value_text().empty());
    EXPECT_TRUE(lake_support::Node(lake, 1).comment_text() == Wide(comment));
}

// The same when the line is cleared before anybody has asked for its texts.
void ExpectCleared(std::string const& line, std::string const& comment) {
    SCOPED_TRACE(line.size());
    CLake lake;
    lake_support::ReadText(lake, line + "\n");
    CLake::CNode& node = lake_support::Node(lake, 1);
    node.clear();
    EXPECT_TRUE(node.key_text().empty());
    EXPECT_TRUE(node.value_text().empty());
    EXPECT_TRUE(node.comment_text() == Wide(comment));
    EXPECT_EQ(node.collection(), nullptr);
    EXPECT_TRUE(node.comment() == Wide(comment));
}

TEST(LakeLineSizes, NamedLines) {
    for (std::size_t const key : Lengths)
        for (std::size_t const value : Lengths) {
            std::string const key_text(key, 'k');
            std::string const value_text(value, 'v');
            ExpectLine(key_text + ": " + value_text, key_text, value_text, "");
        }
    ExpectCleared(std::string(65536, 'k') + ": v", "");
}

TEST(LakeLineSizes, ClosingLinesWithComments) {
    for (std::size_t const value : Lengths)
        for (std::size_t const comment : Lengths) {
            std::string const value_text = "}" + std::string(value - 1, '"') + (value % 2 == 0 ? "\"" : "");
            std::string const comment_text(comment, 'c');
            CLake lake;
            lake_support::ReadText(lake, value_text + "; " + comment_text);
            EXPECT_TRUE(lake_support::Node(lake, 1).comment_text() == Wide(comment_text));
            EXPECT_TRUE(lake_support::Node(lake, 1).value_text() == Wide(value_text));
            ExpectCleared(value_text + "; " + comment_text, comment_text);
        }
}

TEST(LakeLineSizes, BlanksBetweenTheTexts) {
    for (std::size_t const blanks : Lengths) {
        std::string const gap(blanks, ' ');
        ExpectLine("key:" + gap + "value", "key", "value", "");
        ExpectLine("key" + gap + ":value", "key", "value", "");
        ExpectLine(gap + "1 2 3" + gap, "", "1 2 3", "");
        ExpectLine(gap + ";" + gap + "note" + gap, "", "", "note");
        ExpectCleared("}" + gap + ";" + gap + "note", "note");
    }
}

TEST(LakeLineSizes, LevelsOfManyNestedSections) {
    constexpr int depth = 65600;
    std::string text;
    for (int level = 0; level < depth; ++level)
        text += "{\n";
    CLake lake;
    lake_support::ReadText(lake, text + "row\n");
    int level = -1;
    for (CLake::CNode const& node : lake)
        ASSERT_EQ(node.level(), level++);
    CLake copy;
    copy = lake;
    level = -1;
    for (CLake::CNode const& node : copy) {
        ASSERT_EQ(node.level(), level++);
        ASSERT_EQ(node.collection()->size(), copy.size());
    }
}

} // namespace
