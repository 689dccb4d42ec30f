#include "tools/last_words.h"

#include <CLI/CLI.hpp>
#include <gtest/gtest.h>

using namespace paramdb::tools;

using Words = std::vector<std::string>;

TEST(LastWords, Split) {
    auto const split = SplitLastWords({"a.lake", "b.lake", "mode", "11"}, 2);
    ASSERT_TRUE(split);
    EXPECT_EQ(split->files, (Words{"a.lake", "b.lake"}));
    EXPECT_EQ(split->words, (Words{"mode", "11"}));
    EXPECT_EQ(SplitLastWords({"a", "b"}, 1)->words, Words{"b"});
    EXPECT_FALSE(SplitLastWords({"mode", "11"}, 2));
    EXPECT_FALSE(SplitLastWords({"11"}, 2));
    EXPECT_FALSE(SplitLastWords({}, 1));
}

TEST(LastWords, Argument) {
    CLI::App app("What it does", "verb");
    Words words;
    AddLastWordsArgument(app, words, "KIND ID");
    app.parse(Words{"11", "mode", "a.lake"}); // they stand from the last to the first
    EXPECT_EQ(words, (Words{"a.lake", "mode", "11"}));
    EXPECT_THROW(app.parse(Words{}), CLI::RequiredError);
    std::string help = app.help();
    help.erase(help.find_last_not_of('\n') + 1); // hidden options leave a blank line more
    EXPECT_EQ(help, "What it does\n"
                    "Usage: verb [OPTIONS] FILE... KIND ID\n"
                    "\n"
                    "Positionals:\n"
                    "  FILE ... REQUIRED           Parameter files as for load, then KIND ID\n"
                    "\n"
                    "Options:\n"
                    "  -h,--help                   Print this help message and exit");
}
