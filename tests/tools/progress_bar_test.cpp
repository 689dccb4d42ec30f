#include "tools/progress_bar.h"
#include "tools/quiet.h"

#include <gtest/gtest.h>
#include <ostream>
#include <sstream>

using namespace paramdb::tools;
using namespace std::chrono_literals;

namespace {

std::string const Quarter = "derive [##########..............................]  25 %";
std::string const Removal = "\r" + std::string(Quarter.size(), ' ') + "\r";

} // namespace

TEST(ProgressBarTest, IsDrawnAndRemoved) {
    std::stringbuf screen;
    std::ostream stream(&screen);
    {
        ProgressBar bar(stream, 0ms);
        bar.Show(L"derive", 250, 1000);
        EXPECT_EQ(screen.str(), Quarter);
        bar.Show(L"derive", 252, 1000);
        EXPECT_EQ(screen.str(), Quarter);
        bar.Show(L"read", 1001, 1000);
        EXPECT_EQ(screen.str(),
                  Quarter + Removal + "read   [########################################] 100 %");
    }
    EXPECT_EQ(screen.str(),
              Quarter + Removal + "read   [########################################] 100 %" + Removal);
    EXPECT_EQ(stream.rdbuf(), &screen);
}

TEST(ProgressBarTest, MessagesTakeItsPlace) {
    std::stringbuf screen;
    std::ostream stream(&screen);
    ProgressBar bar(stream, 0ms);
    bar.Show(L"derive", 1, 4);
    stream << "a message\n";
    EXPECT_EQ(screen.str(), Quarter + Removal + "a message\n");
    bar.Show(L"derive", 1, 4);
    EXPECT_EQ(screen.str(), Quarter + Removal + "a message\n" + Quarter);
    stream << "half";
    std::string const before = screen.str();
    bar.Show(L"derive", 2, 4);
    EXPECT_EQ(screen.str(), before); // not into a line that has begun
    stream << " a line" << '\n';
    bar.Show(L"derive", 1, 4);
    EXPECT_EQ(screen.str(), before + " a line\n" + Quarter);
}

TEST(ProgressBarTest, WaitsForItsDelay) {
    std::stringbuf screen;
    std::ostream stream(&screen);
    {
        ProgressBar bar(stream, 1h);
        bar.Show(L"read", 1, 2);
        stream << "text";
    }
    EXPECT_EQ(screen.str(), "text");
}

TEST(ProgressBarTest, NothingToDoIsNoShare) {
    std::stringbuf screen;
    std::ostream stream(&screen);
    ProgressBar bar(stream, 0ms);
    bar.Show(L"read", 0, 0);
    EXPECT_EQ(screen.str(), "read   [........................................]   0 %");
}

TEST(ProgressBarTest, ALoadIsShownOnTheTerminalAlone) {
    std::stringbuf screen;
    std::ostream stream(&screen);
    LoadProgressBar const bar(stream);
    EXPECT_EQ(stream.rdbuf(), &screen);
}

TEST(ProgressBarTest, IsNotDrawnOnAQuietStream) {
    std::ostringstream stream;
    SetQuiet(stream, true);
    {
        ProgressBar bar(stream, 0ms);
        bar.Show(L"derive", 250, 1000);
        stream << "a message\n";
    }
    EXPECT_EQ(stream.str(), "a message\n");
}
