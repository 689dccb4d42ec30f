#include "tools/colour.h"

#include <gtest/gtest.h>
#include <sstream>

using namespace paramdb::tools;

TEST(Colour, StandsRoundTheTextOnAStreamThatShowsIt) {
    struct Case {
        Tone tone;
        char const* text;
        char const* coloured;
    };
    Case const cases[] = {
        {Tone::Error, "error", "\x1B[1;31merror\x1B[0m"},
        {Tone::Warning, "warning", "\x1B[1;35mwarning\x1B[0m"},
        {Tone::Note, "note", "\x1B[1;36mnote\x1B[0m"},
        {Tone::Mark, "^~~", "\x1B[1;32m^~~\x1B[0m"},
        {Tone::Added, "+ row", "\x1B[32m+ row\x1B[0m"},
        {Tone::Removed, "- row", "\x1B[31m- row\x1B[0m"},
        {Tone::Changed, "~ row", "\x1B[33m~ row\x1B[0m"},
        {Tone::Error, "a\nb\n\n", "\x1B[1;31ma\nb\x1B[0m\n\n"},
        {Tone::Error, "\n", "\n"},
        {Tone::Error, "", ""},
    };
    for (Case const& test : cases) {
        std::ostringstream plain;
        plain << Painted(test.tone, test.text) << '.';
        EXPECT_EQ(plain.str(), test.text + std::string("."));
        std::ostringstream coloured;
        SetColoured(coloured, true);
        coloured << Painted(test.tone, test.text) << '.';
        EXPECT_EQ(coloured.str(), test.coloured + std::string("."));
        SetColoured(coloured, false);
        coloured << Painted(test.tone, test.text);
        EXPECT_EQ(coloured.str(), test.coloured + std::string(".") + test.text);
    }
}

TEST(Colour, IsOfEachStreamByItself) {
    std::ostringstream one;
    std::ostringstream other;
    EXPECT_FALSE(IsColoured(one));
    SetColoured(one, true);
    EXPECT_TRUE(IsColoured(one));
    EXPECT_FALSE(IsColoured(other));
}

TEST(Colour, IsWantedOnATerminalThatShowsIt) {
    struct Case {
        ColourChoice choice;
        bool is_terminal;
        char const* no_color;
        char const* terminal_name;
        bool is_wanted;
    };
    Case const cases[] = {
        {ColourChoice::Auto, true, nullptr, nullptr, true},
        {ColourChoice::Auto, true, nullptr, "xterm", true},
        {ColourChoice::Auto, true, "", "xterm", true},
        {ColourChoice::Auto, true, "1", "xterm", false},
        {ColourChoice::Auto, true, "0", "xterm", false},
        {ColourChoice::Auto, true, nullptr, "dumb", false},
        {ColourChoice::Auto, true, nullptr, "dumber", true},
        {ColourChoice::Auto, false, nullptr, "xterm", false},
        {ColourChoice::Always, false, nullptr, nullptr, true},
        {ColourChoice::Always, false, "1", "dumb", true},
        {ColourChoice::Never, true, nullptr, "xterm", false},
    };
    for (Case const& test : cases) {
        EXPECT_EQ(WantsColour(test.choice, test.is_terminal, test.no_color, test.terminal_name),
                  test.is_wanted)
            << (&test - cases);
    }
}
