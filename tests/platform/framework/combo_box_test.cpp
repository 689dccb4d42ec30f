#include <paramdb/platform/framework/combo_box.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <tests/support/view_log.h>

namespace {

std::wstring TextOf(CComboBox const& combo, int index) {
    CString text(L"?");
    combo.GetLBText(index, text);
    return text.GetString();
}

std::vector<std::wstring> TextsOf(CComboBox const& combo) {
    std::vector<std::wstring> texts;
    for (int i = 0; i < combo.GetCount(); ++i)
        texts.push_back(TextOf(combo, i));
    return texts;
}

TEST(ComboBox, RowsInTheOrderOfTheirComing) {
    CComboBox combo;
    EXPECT_EQ(combo.AddString(L"b"), 0);
    EXPECT_EQ(combo.AddString(L"a"), 1);
    EXPECT_EQ(combo.AddString(nullptr), 2);
    EXPECT_EQ(TextsOf(combo), (std::vector<std::wstring>{L"b", L"a", L""}));
    EXPECT_EQ(combo.GetItemData(1), 0);
    EXPECT_EQ(combo.SetItemData(1, -7), 0);
    EXPECT_EQ(combo.GetItemData(1), -7);
    combo.ResetContent();
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST(ComboBox, Misses) {
    CComboBox combo;
    combo.AddString(L"a");
    CString text(L"kept");
    for (int const index : {-1, 1, 99}) {
        EXPECT_EQ(combo.GetLBText(index, text), CB_ERR);
        EXPECT_EQ(text, L"kept");
        EXPECT_EQ(combo.GetItemData(index), CB_ERR);
        EXPECT_EQ(combo.SetItemData(index, 4), CB_ERR);
    }
    EXPECT_EQ(combo.GetLBText(0, text), 1);
    EXPECT_EQ(text, L"a");
}

TEST(ComboBox, Selection) {
    CComboBox combo;
    ViewLog view(combo);
    combo.AddString(L"a");
    combo.AddString(L"b");
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(combo.SetCurSel(1), 1);
    EXPECT_EQ(combo.SetCurSel(1), 1);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.SetCurSel(2), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(view.Take(), (Events{"inserted 0 1", "inserted 1 1", "selection", "selection"}));
    combo.SetCurSel(0);
    EXPECT_EQ(combo.SetCurSel(-1), CB_ERR);
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    combo.SetCurSel(0);
    combo.ResetContent();
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
    EXPECT_EQ(view.Take(), (Events{"selection", "selection", "selection", "content"}));
}

TEST(ComboBox, FindsWholeTextsButForCase) {
    CComboBox combo;
    for (wchar_t const* const text : {L"Ramp", L"ramp up", L"RAMP", L"", L"\u00C4pfel"})
        combo.AddString(text);
    EXPECT_EQ(combo.FindStringExact(-1, L"ramp"), 0);
    EXPECT_EQ(combo.FindStringExact(0, L"ramp"), 2);
    EXPECT_EQ(combo.FindStringExact(2, L"ramp"), 0); // on from the top
    EXPECT_EQ(combo.FindStringExact(4, L"ramp"), 0);
    EXPECT_EQ(combo.FindStringExact(99, L"ramp"), 0);
    EXPECT_EQ(combo.FindStringExact(1, L"ramp up"), 1); // itself, last of all
    EXPECT_EQ(combo.FindStringExact(-1, L"ramp u"), CB_ERR);
    EXPECT_EQ(combo.FindStringExact(-1, L""), 3);
    EXPECT_EQ(combo.FindStringExact(-1, L"\u00E4PFEL"), 4);
    combo.AddString(L"ramp");
    EXPECT_EQ(combo.FindStringExact(4, L"ramp"), 5);
    EXPECT_EQ(CComboBox().FindStringExact(-1, L"ramp"), CB_ERR);
}

TEST(ComboBox, ASortedOneKeepsOrderDataAndSelection) {
    CComboBox combo(true);
    combo.SetItemData(combo.AddString(L"mid"), 1);
    combo.SetCurSel(0);
    EXPECT_EQ(combo.AddString(L"Alpha"), 0);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.AddString(L"zeta"), 2);
    EXPECT_EQ(combo.GetCurSel(), 1);
    EXPECT_EQ(combo.AddString(L"MID"), 2); // behind the equal one
    EXPECT_EQ(combo.GetItemData(1), 1);
    EXPECT_EQ(TextsOf(combo), (std::vector<std::wstring>{L"Alpha", L"mid", L"MID", L"zeta"}));
}

TEST(ComboBox, TheSameByMessages) {
    CComboBox combo;
    auto const text = [](wchar_t const* of) { return reinterpret_cast<LPARAM>(of); };
    EXPECT_EQ(combo.SendMessageW(CB_ADDSTRING, 0, text(L"one")), 0);
    EXPECT_EQ(combo.SendMessageW(CB_ADDSTRING, 0, text(L"two")), 1);
    EXPECT_EQ(combo.SendMessageW(CB_GETCOUNT), 2);
    EXPECT_EQ(combo.SendMessageW(CB_SETITEMDATA, 1, -5), 0);
    EXPECT_EQ(combo.SendMessageW(CB_GETITEMDATA, 1), -5);
    EXPECT_EQ(combo.SendMessageW(CB_GETITEMDATA, 2), CB_ERR);
    EXPECT_EQ(combo.SendMessageW(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(combo.SendMessageW(CB_SETCURSEL, 1), 1);
    EXPECT_EQ(combo.SendMessageW(CB_GETCURSEL), 1);
    EXPECT_EQ(combo.SendMessageW(CB_SETCURSEL, static_cast<WPARAM>(-1)), CB_ERR);
    EXPECT_EQ(combo.SendMessageW(CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), text(L"TWO")), 1);
    EXPECT_EQ(combo.SendMessageW(CB_GETLBTEXTLEN, 0), 3);
    EXPECT_EQ(combo.SendMessageW(CB_GETLBTEXTLEN, 9), CB_ERR);
    wchar_t buffer[4] = L"???";
    EXPECT_EQ(combo.SendMessageW(CB_GETLBTEXT, 7, reinterpret_cast<LPARAM>(buffer)), CB_ERR);
    EXPECT_EQ(combo.SendMessageW(CB_GETLBTEXT, 0, reinterpret_cast<LPARAM>(buffer)), 3);
    EXPECT_EQ(std::wstring(buffer), L"one");
    EXPECT_EQ(combo.SendMessageW(CB_RESETCONTENT), 0);
    EXPECT_EQ(combo.SendMessageW(CB_GETCOUNT), 0);
    EXPECT_EQ(combo.SendMessageW(WM_USER), 0);
}

TEST(ComboBox, ChoosingTellsTheParent) {
    struct Parent : CWnd {
        std::vector<std::pair<WPARAM, LPARAM>> commands;
        LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override {
            if (message == WM_COMMAND)
                commands.emplace_back(first, second);
            return 0;
        }
    } parent;
    CComboBox combo;
    combo.AddString(L"a");
    combo.Choose(0); // nobody to tell
    EXPECT_EQ(combo.GetCurSel(), 0);
    parent.Create();
    combo.Create(&parent, 17);
    combo.Choose(1);
    EXPECT_TRUE(parent.commands.empty());
    combo.Choose(0);
    ASSERT_EQ(parent.commands.size(), 1u);
    EXPECT_EQ(parent.commands[0].first, WPARAM{0x10000 | 17});
    EXPECT_EQ(parent.commands[0].second, reinterpret_cast<LPARAM>(combo.GetSafeHwnd()));
    combo.DestroyWindow();
    EXPECT_EQ(combo.GetCount(), 0);
}

TEST(ComboBox, AViewMayDestroyItInTheMiddle) {
    struct Parent : CWnd {
        int commands = 0;
        LRESULT OnMessage(UINT, WPARAM, LPARAM) override { return ++commands; }
    } parent;
    struct Destroyer : CWndView {
        std::unique_ptr<CComboBox> doomed = std::make_unique<CComboBox>();
        void OnSelectionChanged() override { doomed.reset(); }
    } view;
    parent.Create();
    CComboBox& doomed = *view.doomed;
    doomed.Create(&parent, 17);
    doomed.AddString(L"a");
    view.Attach(doomed);
    doomed.Choose(0);
    EXPECT_EQ(view.doomed, nullptr);
    EXPECT_EQ(parent.commands, 0);
}

TEST(ComboBox, RandomSortedAgainstAModel) {
    unsigned const seed = 20260117;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    struct Row {
        std::wstring text;
        std::intptr_t data;
        int serial;
    };
    auto const lower = [](std::wstring text) {
        for (wchar_t& unit : text)
            unit = unit >= L'A' && unit <= L'Z' ? static_cast<wchar_t>(unit + 32) : unit;
        return text;
    };
    CComboBox combo(true);
    std::vector<Row> model;
    int selected = -1; // serial
    for (int step = 0; step < 4000; ++step) {
        int const place = static_cast<int>(random() % 40);
        switch (random() % 5) {
        case 0:
        case 1: {
            std::wstring text;
            for (auto i = random() % 3; i > 0; --i)
                text += L"aAbB"[random() % 4];
            int const index = combo.AddString(text.c_str());
            combo.SetItemData(index, step);
            model.push_back({text, step, step});
            std::stable_sort(model.begin(), model.end(),
                             [&](Row const& a, Row const& b) { return lower(a.text) < lower(b.text); });
            ASSERT_EQ(model[static_cast<std::size_t>(index)].serial, step);
            break;
        }
        case 2:
            combo.SetCurSel(place);
            selected =
                place < static_cast<int>(model.size()) ? model[static_cast<std::size_t>(place)].serial : -1;
            break;
        case 3: {
            std::wstring const text(1, L"aAbBc"[random() % 5]);
            int expected = -1;
            for (int i = 1; i <= static_cast<int>(model.size()) && expected < 0; ++i) {
                int const start = place - 1 < static_cast<int>(model.size()) ? place - 1 : -1;
                int const index = (start + i) % static_cast<int>(model.size());
                if (lower(model[static_cast<std::size_t>(index)].text) == lower(text))
                    expected = index;
            }
            ASSERT_EQ(combo.FindStringExact(place - 1, text.c_str()), expected) << step;
            break;
        }
        default:
            if (random() % 50 == 0) {
                combo.ResetContent();
                model.clear();
                selected = -1;
            }
        }
        ASSERT_EQ(combo.GetCount(), static_cast<int>(model.size()));
        int const current = combo.GetCurSel();
        ASSERT_EQ(current < 0 ? -1 : model[static_cast<std::size_t>(current)].serial, selected) << step;
        if (!model.empty()) {
            auto const i = static_cast<std::size_t>(place) % model.size();
            ASSERT_EQ(TextOf(combo, static_cast<int>(i)), model[i].text);
            ASSERT_EQ(combo.GetItemData(static_cast<int>(i)), model[i].data);
        }
    }
}

} // namespace
