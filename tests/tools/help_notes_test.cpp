#include "tools/help_notes.h"

#include <gtest/gtest.h>

using namespace paramdb::tools;

using Texts = std::vector<std::string>;

TEST(HelpNotes, AreTakenApart) {
    HelpNotes const notes = ReadHelpNotes("First line\n"
                                          "  indented\n"
                                          "\n"
                                          "\n"
                                          "Examples are told below.\n"
                                          "\n"
                                          "Examples:\n"
                                          "  paramdb load a.lake\n"
                                          "  paramdb load 'b c.lake' > out\n"
                                          "\n"
                                          "Exit codes:\n"
                                          "  0  good\n"
                                          "That is all.");
    EXPECT_EQ(notes.paragraphs,
              (std::vector<Texts>{{"First line", "  indented"}, {"Examples are told below."}}));
    EXPECT_EQ(notes.examples, (Texts{"paramdb load a.lake", "paramdb load 'b c.lake' > out"}));
    EXPECT_EQ(notes.exit_codes, (Texts{"  0  good", "That is all."}));
}

TEST(HelpNotes, MayBeMissing) {
    HelpNotes const none = ReadHelpNotes("");
    EXPECT_TRUE(none.paragraphs.empty() && none.examples.empty() && none.exit_codes.empty());
    EXPECT_EQ(ReadHelpNotes("Example:\n  paramdb man").examples, Texts{"paramdb man"});
    EXPECT_EQ(ReadHelpNotes("\n\ntext\n\n").paragraphs, std::vector<Texts>{{"text"}});
}
