#include "tools/browser/settings.h"

#include <gtest/gtest.h>
#include <tests/browser/browser_test.h>

namespace paramdb::browser {
namespace {

class BrowserSettings : public testing::Test {
protected:
    test_support::TempDir folder;
    QSettings store{QString::fromStdU16String((folder / u8"settings.ini").u16string()), QSettings::IniFormat};
    Settings settings{store};
};

TEST_F(BrowserSettings, HasValuesForTheFirstTime) {
    EXPECT_TRUE(settings.Geometry().isEmpty());
    EXPECT_TRUE(settings.Layout().isEmpty());
    EXPECT_EQ(settings.Folder(), QString());
    EXPECT_EQ(settings.Table(), QString());
    EXPECT_FALSE(settings.HideEmptyTables());
    EXPECT_FALSE(settings.ShowIds());
    EXPECT_EQ(settings.Key(), CClavis());
    EXPECT_EQ(settings.Parameter(), -1);
    EXPECT_EQ(settings.Speed(), 3000.0);
    EXPECT_EQ(settings.LineDistance(), 0.0);
}

TEST_F(BrowserSettings, RemembersEverything) {
    settings.SetGeometry("g\0h");
    settings.SetLayout("layout");
    settings.SetFolder(QStringLiteral("/data/bench"));
    settings.SetTable(QStringLiteral("<TMode>"));
    settings.SetHideEmptyTables(true);
    settings.SetShowIds(true);
    settings.SetKey(CClavis(11, 1001, 1, 2, 1015, -1));
    settings.SetParameter(1025);
    settings.SetSpeed(1234.5);
    settings.SetLineDistance(0.125);
    store.sync();
    QSettings again_store(store.fileName(), QSettings::IniFormat);
    Settings const again(again_store);
    EXPECT_EQ(again.Geometry(), settings.Geometry());
    EXPECT_EQ(again.Layout(), QByteArray("layout"));
    EXPECT_EQ(again.Folder(), QStringLiteral("/data/bench"));
    EXPECT_EQ(again.Table(), QStringLiteral("<TMode>"));
    EXPECT_TRUE(again.HideEmptyTables());
    EXPECT_TRUE(again.ShowIds());
    EXPECT_EQ(again.Key(), CClavis(11, 1001, 1, 2, 1015, -1));
    EXPECT_EQ(again.Parameter(), 1025);
    EXPECT_EQ(again.Speed(), 1234.5);
    EXPECT_EQ(again.LineDistance(), 0.125);
}

TEST_F(BrowserSettings, TakesAKeyThatSomebodyHasEdited) {
    struct Case {
        char const* text;
        CClavis key;
    };
    for (auto const& [text, key] :
         {Case{"", CClavis()}, Case{"7", CClavis(7, -1, -1, -1, -1, -1)},
          Case{"7/x/3", CClavis(7, -1, 3, -1, -1, -1)}, Case{"1/2/3/4/5/6/7", CClavis(1, 2, 3, 4, 5, 6)},
          Case{"99999999999/2", CClavis(-1, 2, -1, -1, -1, -1)}}) {
        SCOPED_TRACE(text);
        store.setValue("key", QString::fromUtf8(text));
        EXPECT_EQ(settings.Key(), key);
    }
}

} // namespace
} // namespace paramdb::browser
