#include "tools/browser/row_view.h"
#include "tools/browser/text_model.h"

#include <QtGui/QClipboard>
#include <tests/browser/browser_test.h>

namespace paramdb::browser {
namespace {

class BrowserRowView : public testing::Test {
protected:
    BrowserRowView() {
        model.SetRows({{QStringLiteral("1"), QStringLiteral("Idle"), QStringLiteral("a")},
                       {QStringLiteral("2"), QStringLiteral("Warm up")},
                       {QStringLiteral("3"), QStringLiteral("Shifting"), QStringLiteral("c")}});
        view.setModel(&model);
        view.show();
    }

    TextModel model{{{QStringLiteral("mode"), true}, {QStringLiteral("name")}, {QStringLiteral("flag")}}};
    RowView view{QStringLiteral("Modes")};
};

TEST_F(BrowserRowView, CopiesSelectedRowsInTheirOrder) {
    EXPECT_EQ(view.SelectedText(true), QString());
    ClickRow(view, 2);
    ClickRow(view, 0, Qt::ControlModifier);
    EXPECT_EQ(view.SelectedText(false), QStringLiteral("1\tIdle\ta\n3\tShifting\tc\n"));
    ClickRow(view, 1);
    EXPECT_EQ(view.SelectedText(true), QStringLiteral("mode\tname\tflag\n2\tWarm up\t\n"));
    view.Copy(false);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("2\tWarm up\t\n"));
}

TEST_F(BrowserRowView, LeavesHiddenColumnsOut) {
    view.setColumnHidden(0, true);
    view.selectAll();
    EXPECT_EQ(view.SelectedText(true), QStringLiteral("name\tflag\nIdle\ta\nWarm up\t\nShifting\tc\n"));
}

TEST_F(BrowserRowView, LeavesTheClipboardAloneWithoutASelection) {
    QApplication::clipboard()->setText(QStringLiteral("before"));
    view.clearSelection();
    view.Copy(true);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("before"));
}

TEST_F(BrowserRowView, KeepsTheSelectionWhileAsManyRowsAreShown) {
    ClickRow(view, 1);
    model.SetRows({{QStringLiteral("4")}, {QStringLiteral("5")}, {QStringLiteral("6")}});
    EXPECT_EQ(view.SelectedText(false), QStringLiteral("5\t\t\n"));
    model.SetRows({{QStringLiteral("7")}});
    EXPECT_EQ(view.SelectedText(false), QString());
    EXPECT_EQ(Cells(view, 0), (std::vector<std::string>{"7", "", ""}));
}

TEST_F(BrowserRowView, PutsNumbersAtTheRight) {
    auto const alignment = [](QVariant const& value) { return value.toInt() & Qt::AlignHorizontal_Mask; };
    EXPECT_EQ(alignment(model.index(0, 0).data(Qt::TextAlignmentRole)), Qt::AlignRight);
    EXPECT_EQ(alignment(model.index(0, 1).data(Qt::TextAlignmentRole)), Qt::AlignLeft);
    EXPECT_EQ(alignment(model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole)), Qt::AlignRight);
}

TEST_F(BrowserRowView, HasAnAccessibleNameAndLetsTheTabKeyGo) {
    EXPECT_EQ(view.accessibleName(), QStringLiteral("Modes"));
    EXPECT_FALSE(view.tabKeyNavigation());
}

} // namespace
} // namespace paramdb::browser
