#include "tools/browser/file_watch.h"

#include <filesystem>
#include <tests/browser/browser_test.h>

namespace paramdb::browser {
namespace {

using std::chrono::milliseconds;

class BrowserFileWatch : public testing::Test {
protected:
    BrowserFileWatch() {
        test_support::WriteBytes(folder / u8"one.lake", "1");
        test_support::WriteBytes(folder / u8"two.lake", "2");
        watch.SetFiles({Name(u8"one.lake"), Name(u8"two.lake")});
    }
    QString Name(char8_t const* name) const { return QString::fromStdU16String((folder / name).u16string()); }
    // Overwrites a file where it stands.
    void Overwrite(char8_t const* name, std::string_view bytes) const {
        std::ofstream(folder / name, std::ios::binary | std::ios::trunc) << bytes;
    }
    bool Waits(int count) const {
        return QTest::qWaitFor([&] { return changes >= count; }, 5000);
    }
    // Long enough for a change to be told that should not be.
    void ExpectNoMore(int count) const {
        QTest::qWait(300);
        EXPECT_EQ(changes, count);
    }

    test_support::TempDir folder;
    int changes = 0;
    FileWatch watch{[this] { ++changes; }, milliseconds(60)};
};

TEST_F(BrowserFileWatch, TellsOfAChangeInPlaceOnce) {
    Overwrite(u8"one.lake", "longer");
    Overwrite(u8"two.lake", "longer too");
    EXPECT_TRUE(Waits(1));
    ExpectNoMore(1);
    Overwrite(u8"one.lake", "and longer again");
    EXPECT_TRUE(Waits(2));
}

TEST_F(BrowserFileWatch, SurvivesThatEditorsReplaceTheFile) {
    for (int round = 1; round <= 3; ++round) {
        SCOPED_TRACE(round);
        Overwrite(u8"new", std::string(static_cast<std::size_t>(round) + 10, 'x'));
        std::filesystem::rename(folder / u8"new", folder / u8"two.lake");
        EXPECT_TRUE(Waits(round));
    }
}

TEST_F(BrowserFileWatch, WaitsForAFileThatIsAwayForAWhile) {
    std::filesystem::remove(folder / u8"one.lake");
    ExpectNoMore(0);
    Overwrite(u8"one.lake", "back again");
    EXPECT_TRUE(Waits(1));
}

TEST_F(BrowserFileWatch, IsQuietAboutOtherFilesAndThoseOfBefore) {
    Overwrite(u8"three.lake", "3");
    ExpectNoMore(0);
    watch.SetFiles({Name(u8"three.lake")});
    Overwrite(u8"one.lake", "changed");
    ExpectNoMore(0);
    Overwrite(u8"three.lake", "changed");
    EXPECT_TRUE(Waits(1));
}

TEST_F(BrowserFileWatch, TakesFilesThatAreNotThere) {
    watch.SetFiles({Name(u8"later.lake"), QStringLiteral("/no/such/folder/x.lake"), QString()});
    watch.SetFiles({Name(u8"later.lake")});
    Overwrite(u8"later.lake", "now");
    EXPECT_TRUE(Waits(1));
}

} // namespace
} // namespace paramdb::browser
