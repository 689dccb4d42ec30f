#include "tests/tools/command_run.h"
#include "tools/outer_word.h"

using namespace paramdb::tools;

namespace {

using OuterWordTest = CommandTest;
using Words = std::vector<std::string>;

} // namespace

TEST_F(OuterWordTest, TakesTheLastWordOrTheFirst) {
    std::string const one = File(u8"a.lake", "x");
    std::string const two = File(u8"b.lake", "x");
    struct Case {
        Words words;
        Words files;
        std::string word;
    };
    for (Case const& sample : std::vector<Case>{
             {{one, "7"}, {one}, "7"},
             {{"7", one}, {one}, "7"},
             {{one, two, "7"}, {one, two}, "7"},
             {{"7", one, two}, {one, two}, "7"},
             {{one, two}, {one}, two},             // the name of a file, too
             {{"no.lake", "7"}, {"no.lake"}, "7"}, // whatever else, the last
             {{"7", "no.lake", two}, {"no.lake", two}, "7"},
             {{"7", one, "no.lake"}, {"7", one}, "no.lake"},
         }) {
        SCOPED_TRACE(testing::PrintToString(sample.words));
        auto const split = SplitOuterWord(sample.words);
        ASSERT_TRUE(split);
        EXPECT_EQ(split->files, sample.files);
        EXPECT_EQ(split->words, Words{sample.word});
    }
    EXPECT_FALSE(SplitOuterWord({one}));
    EXPECT_FALSE(SplitOuterWord({}));
}
