#include "tools/browser/texts.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace paramdb::browser {
namespace {

TEST(BrowserTexts, ShowsControlCharactersAsReplacement) {
    EXPECT_EQ(Shown(L"a\tb\nc").toStdString(), "a\xEF\xBF\xBD"
                                               "b\xEF\xBF\xBD"
                                               "c");
    EXPECT_EQ(Shown(L"Pr\u00FCfen").toStdString(), "Pr\xC3\xBC"
                                                   "fen");
    EXPECT_EQ(Shown(L"").toStdString(), "");
}

TEST(BrowserTexts, WritesEveryKindOfField) {
    std::int32_t const lowest = std::numeric_limits<std::int32_t>::min();
    std::uint32_t const highest = std::numeric_limits<std::uint32_t>::max();
    std::int64_t const large = 9'007'199'254'740'993;
    float const tenth = 0.1F;
    double const third = 1.0 / 3;
    double const none = std::nan("");
    CFixedText const text(L"Idle <1>");
    EXPECT_EQ(CellText(ConstField(lowest)).toStdString(), "-2147483648");
    EXPECT_EQ(CellText(ConstField(highest)).toStdString(), "4294967295");
    EXPECT_EQ(CellText(ConstField(large)).toStdString(), "9007199254740993");
    EXPECT_EQ(CellText(ConstField(tenth)).toStdString(), "0.1");
    EXPECT_EQ(CellText(ConstField(third)).toStdString(), "0.3333333333333333");
    EXPECT_EQ(CellText(ConstField(none)).toStdString(), "nan");
    EXPECT_EQ(CellText(ConstField(text)).toStdString(), "Idle <1>");
}

TEST(BrowserTexts, KeepsATipFromBeingMarkup) {
    EXPECT_EQ(Tip(QStringLiteral("<TMode> & more")).toStdString(), "<span>&lt;TMode&gt; &amp; more</span>");
    EXPECT_TRUE(Tip(QString()).isEmpty());
}

TEST(BrowserTexts, GroupsTheDigitsOfACount) {
    EXPECT_EQ(Count(0).toStdString(), "0");
    EXPECT_EQ(Count(1'234'567).toStdString(), "1 234 567");
}

} // namespace
} // namespace paramdb::browser
