#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/views/qt/combo_view.h>

#include <QtWidgets/QCompleter>
#include <memory>
#include <tests/views/qt/view_test.h>

using paramdb::qt::ComboView;

namespace {

// The window around a combo, which hears of its changes.
class Parent : public CWnd {
public:
    Parent() { Create(); }

    std::vector<std::pair<unsigned int, int>> heard; // code and id

protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
        if (message == WM_COMMAND)
            heard.emplace_back(static_cast<unsigned int>(first >> 16), static_cast<int>(first & 0xFFFF));
        return CWnd::OnMessage(message, first, second);
    }
};

class QtComboView : public ViewTest {
protected:
    QtComboView() {
        combo->Create(&parent, 17);
        for (wchar_t const* name : {L"(not assigned)", L"Ramp up", L"Ramp down", L"Idle"})
            combo->SetItemData(combo->AddString(name), combo->GetCount() * 10);
        combo->SetCurSel(2);
        view.SetCombo(combo.get());
        Show(view);
    }

    std::string Text() { return view.lineEdit()->text().toStdString(); }

    Parent parent;
    std::unique_ptr<CComboBoxX> combo = std::make_unique<CComboBoxX>();
    ComboView view;
};

} // namespace

TEST_F(QtComboView, TheUserChoosesInTheControl) {
    view.lineEdit()->selectAll();
    Type(view, "idl");
    Press(view, Qt::Key_Return);
    EXPECT_EQ(combo->GetCurSel(), 3);
    EXPECT_EQ(Text(), "Idle");
    EXPECT_EQ(parent.heard,
              (std::vector<std::pair<unsigned int, int>>{{1, 17}})); // the selection has changed
    Press(view, Qt::Key_Up);
    EXPECT_EQ(combo->GetCurSel(), 2);
    EXPECT_EQ(parent.heard.size(), 2U);
}

TEST_F(QtComboView, WhatIsNoRowIsNotChosen) {
    view.lineEdit()->selectAll();
    Type(view, "ramp sideways");
    Press(view, Qt::Key_Return);
    EXPECT_EQ(combo->GetCurSel(), 2);
    EXPECT_EQ(Text(), "Ramp down");
    EXPECT_TRUE(parent.heard.empty());
}

TEST_F(QtComboView, TheOpenListIsWideEnough) {
    combo->AddString(std::wstring(25, L'm').c_str());
    Settle();
    view.setFixedWidth(120);
    view.showPopup();
    EXPECT_GE(view.view()->width(), combo->GetDroppedWidth());
    view.hidePopup();
}

TEST_F(QtComboView, ThousandsOfRowsOpenAndNarrowAtOnce) {
    constexpr int count = 20'000;
    combo->ResetContent();
    for (int i = 0; i < count; ++i)
        combo->AddString(std::to_wstring(i).c_str());
    Settle();
    EXPECT_EQ(view.count(), count);
    view.showPopup();
    Settle();
    view.hidePopup();
    view.lineEdit()->selectAll();
    Type(view, "12345");
    Press(view, Qt::Key_Return);
    EXPECT_EQ(combo->GetCurSel(), 12345);
}
