#include "tools/terminal.h"

#include <gtest/gtest.h>

#ifndef _WIN32 // there the arguments come from the system, whatever main was given

TEST(Utf8Arguments, AreTheBytesOfMainWithoutTheProgram) {
    char const* const arguments[] = {"paramdb", "load", "pr\u00FCf.lake", "\xFF", "", nullptr};
    EXPECT_EQ(paramdb::tools::Utf8Arguments(5, arguments),
              (std::vector<std::string>{"load", "pr\u00FCf.lake", "\xFF", ""}));
    EXPECT_EQ(paramdb::tools::Utf8Arguments(1, arguments), std::vector<std::string>());
    EXPECT_EQ(paramdb::tools::Utf8Arguments(0, arguments + 5), std::vector<std::string>());
}

#endif
