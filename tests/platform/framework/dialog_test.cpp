#include <paramdb/platform/control/combo_box_x.h>
#include <paramdb/platform/control/dialog3d.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <gtest/gtest.h>
#include <tests/support/view_log.h>

namespace {

class Dialog : public CDialog3d {
public:
    explicit Dialog(CWnd* parent = nullptr) : CDialog3d(3002, parent) {}
    CWnd control;
    CWnd taken;
    std::vector<int> commands;
    using CDialog::OnCancel;

protected:
    void DoDataExchange(CDataExchange* exchange) override {
        EXPECT_EQ(exchange->m_pDlgWnd, this);
        EXPECT_FALSE(exchange->m_bSaveAndValidate);
        DDX_Control(exchange, 3000, control);
        DDX_Control(exchange, 3000, control); // once is enough
        DDX_Control(exchange, 1, taken);
    }
    void OnCommand(int id) override {
        commands.push_back(id);
        CDialog3d::OnCommand(id);
    }
};

class DialogTest : public testing::Test {
protected:
    DialogTest() { CLibMgr::SetLanguage(CLibMgr::Language::english); }
    ~DialogTest() override {
        CDialog3d::SetPresenter({});
        CLibMgr::ResetLanguage();
    }
};

TEST_F(DialogTest, TiesItsControls) {
    CWnd frame;
    frame.Create();
    Dialog dialog(&frame);
    EXPECT_EQ(dialog.GetResource(), 3002u);
    EXPECT_TRUE(dialog.Create());
    EXPECT_FALSE(dialog.Create());
    EXPECT_EQ(dialog.GetParent(), &frame);
    EXPECT_EQ(dialog.GetTitle(), L"Key Specification");
    EXPECT_EQ(dialog.control.GetParent(), &dialog);
    EXPECT_EQ(dialog.GetDlgItem(3000), &dialog.control);
    EXPECT_EQ(dialog.GetDlgItem(1), &dialog.taken);
    frame.DestroyWindow();
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    EXPECT_EQ(dialog.control.GetSafeHwnd(), nullptr);
    EXPECT_TRUE(dialog.Create()); // the frame has no window any more
    EXPECT_EQ(dialog.GetParent(), nullptr);
}

TEST_F(DialogTest, AFrameThatIsGone) {
    auto frame = std::make_unique<CWnd>();
    Dialog dialog(frame.get());
    frame.reset();
    EXPECT_TRUE(dialog.Create());
    EXPECT_EQ(dialog.GetParent(), nullptr);
}

TEST_F(DialogTest, ButtonsEndIt) {
    struct Case {
        UINT message;
        WPARAM first;
        int result; // 0 if it stays
    };
    Case const cases[] = {
        {WM_COMMAND, 1, 1}, {WM_COMMAND, 2, 2},           {WM_CLOSE, 0, 2},
        {WM_COMMAND, 3, 0}, {WM_COMMAND, 0x10000 | 1, 0}, {WM_USER, 1, 0},
    };
    for (auto const& [message, first, result] : cases) {
        Dialog dialog;
        dialog.Create();
        dialog.SendMessageW(message, first);
        EXPECT_EQ(CWnd::IsWindow(dialog.GetSafeHwnd()), result == 0) << message << " " << first;
        EXPECT_EQ(dialog.GetResult(), result);
    }
    Dialog dialog;
    dialog.EndDialog(5);
    EXPECT_EQ(dialog.GetResult(), 0); // was not open
    dialog.Create();
    dialog.Command(7);
    dialog.Command(IDCANCEL);
    EXPECT_EQ(dialog.commands, (std::vector<int>{7, 2}));
    EXPECT_EQ(dialog.GetResult(), 2);
}

TEST_F(DialogTest, IsDisplayedThroughThePresenter) {
    Dialog dialog;
    ViewLog view(dialog);
    dialog.DisplayDialog(); // without a view
    EXPECT_NE(dialog.GetSafeHwnd(), nullptr);
    std::vector<CDialog3d*> presented;
    CDialog3d::SetPresenter([&](CDialog3d& shown) {
        EXPECT_NE(shown.GetDlgItem(3000), nullptr);
        EXPECT_TRUE(shown.IsWindowVisible());
        presented.push_back(&shown);
    });
    dialog.ShowWindow(false);
    dialog.DisplayDialog();
    dialog.OnCancel();
    EXPECT_EQ(presented, std::vector<CDialog3d*>{&dialog});
    EXPECT_EQ(view.Take(), (Events{"title", "created", "visibility", "visibility", "destroyed"}));
}

TEST_F(DialogTest, TheTemplateOfTheKeyDialog) {
    CDialogTemplate const key = paramdb::FindDialogTemplate(3002);
    EXPECT_EQ(key.id, 3002u);
    EXPECT_EQ(key.title, L"Key Specification");
    EXPECT_EQ(key.font, L"MS Shell Dlg");
    EXPECT_EQ(key.font_size, 8);
    EXPECT_EQ(key.width, 169);
    EXPECT_EQ(key.height, 115);
    struct Item {
        CDialogItem::Kind kind;
        int id;
        wchar_t const* text;
        int x, y, width, height;
    };
    Item const items[] = {
        {CDialogItem::Kind::list, 3000, L"", 7, 7, 155, 80},
        {CDialogItem::Kind::default_button, 1, L"OK", 58, 94, 50, 14},
        {CDialogItem::Kind::button, 2, L"Cancel", 112, 94, 50, 14},
    };
    ASSERT_EQ(key.items.size(), std::size(items));
    for (std::size_t i = 0; i < std::size(items); ++i) {
        EXPECT_EQ(key.items[i].kind, items[i].kind);
        EXPECT_EQ(key.items[i].id, items[i].id);
        EXPECT_EQ(key.items[i].text, items[i].text);
        EXPECT_EQ(key.items[i].x, items[i].x);
        EXPECT_EQ(key.items[i].y, items[i].y);
        EXPECT_EQ(key.items[i].width, items[i].width);
        EXPECT_EQ(key.items[i].height, items[i].height);
    }
    EXPECT_EQ(paramdb::FindDialogTemplate(3001).id, 0u);
}

TEST_F(DialogTest, SpeaksTenLanguages) {
    using Language = CLibMgr::Language;
    struct Case {
        Language language;
        wchar_t const* title;
        wchar_t const* cancel;
    };
    Case const cases[] = {
        {Language::english, L"Key Specification", L"Cancel"},
        {Language::standard, L"Key Specification", L"Cancel"},
        {Language::german, L"Schl\u00FCssel festlegen", L"Abbrechen"},
        {Language::french, L"Sp\u00E9cification de la cl\u00E9", L"Annuler"},
        {Language::spanish, L"Especificaci\u00F3n de la clave", L"Cancelar"},
        {Language::portuguese, L"Especifica\u00E7\u00E3o da chave", L"Cancelar"},
        {Language::italian, L"Specifica della chiave", L"Annulla"},
        {Language::czech, L"Zad\u00E1n\u00ED kl\u00ED\u010De", L"Storno"},
        {Language::hungarian, L"Kulcs megad\u00E1sa", L"M\u00E9gse"},
        {Language::chinese, L"\u6307\u5B9A\u952E", L"\u53D6\u6D88"},
        {static_cast<Language>(0x415), L"Key Specification", L"Cancel"}, // one that is not known
    };
    for (auto const& [language, title, cancel] : cases) {
        CLibMgr::SetLanguage(language);
        Dialog dialog;
        dialog.Create();
        EXPECT_EQ(dialog.GetTitle(), title);
        EXPECT_EQ(dialog.GetTemplate().items[1].text, L"OK");
        EXPECT_EQ(dialog.GetTemplate().items[2].text, cancel);
    }
}

TEST(ComboBoxX, AsWideAsItsTexts) {
    CComboBoxX combo;
    EXPECT_EQ(combo.GetDroppedWidth(), 24);
    combo.AddString(L"abc");
    combo.AddString(L"ab");
    EXPECT_EQ(combo.GetDroppedWidth(), 3 * 7 + 24);
}

} // namespace
