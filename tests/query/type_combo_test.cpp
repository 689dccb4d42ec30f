#include <paramdb/platform/framework/combo_box.h>
#include <paramdb/query/param_instance.h>

#include <gtest/gtest.h>
#include <tests/distillery/own_distillery.h>

namespace {

using Rows = std::vector<std::pair<std::wstring, int>>;

class TypeCombo : public testing::Test {
protected:
    TypeCombo() {
        own.tables().TypeNames.Add(9, L"gamma");
        own.tables().TypeNames.Add(2, L"beta");
        own.tables().TypeNames.Add(5, L"Alpha");
    }
    static Rows RowsOf(CComboBox const& combo) {
        Rows rows;
        CString text;
        for (int i = 0; i < combo.GetCount(); ++i) {
            combo.GetLBText(i, text);
            rows.emplace_back(text.GetString(), static_cast<int>(combo.GetItemData(i)));
        }
        return rows;
    }

    OwnDistillery own;
    CComboBox combo;
};

TEST_F(TypeCombo, OffersById) {
    combo.AddString(L"old");
    EXPECT_EQ(own.instance().FillTypeNameCombo(combo, nullptr), 3);
    EXPECT_EQ(RowsOf(combo), (Rows{{L"beta", 2}, {L"Alpha", 5}, {L"gamma", 9}}));
    EXPECT_EQ(combo.GetCurSel(), CB_ERR);
}

TEST_F(TypeCombo, Selects) {
    struct Case {
        wchar_t const* select;
        int index;
    };
    Case const cases[] = {
        {L"Alpha", 1}, {L"ALPHA", 1}, {L"gamma", 2}, {L"gamm", CB_ERR}, {L"missing", CB_ERR}, {L"", CB_ERR},
    };
    for (auto const& [select, index] : cases) {
        CComboBox fresh;
        EXPECT_EQ(own.instance().FillTypeNameCombo(fresh, select), 3);
        EXPECT_EQ(fresh.GetCurSel(), index);
        EXPECT_EQ(fresh.GetCount(), 3);
    }
}

TEST_F(TypeCombo, KeepsTheSelection) {
    for (wchar_t const* const select : {static_cast<wchar_t const*>(nullptr), L""}) {
        combo.ResetContent();
        combo.AddString(L"x");
        combo.AddString(L"beta");
        combo.SetCurSel(1);
        EXPECT_EQ(own.instance().FillTypeNameCombo(combo, select), 3);
        EXPECT_EQ(combo.GetCurSel(), 0);
    }
    EXPECT_EQ(own.instance().FillTypeNameCombo(combo, L"gamma"), 3); // what is wanted goes first
    EXPECT_EQ(combo.GetCurSel(), 2);
}

TEST_F(TypeCombo, ASortedComboKeepsItsPairs) {
    CComboBox sorted(true);
    EXPECT_EQ(own.instance().FillTypeNameCombo(sorted, L"gamma"), 3);
    EXPECT_EQ(RowsOf(sorted), (Rows{{L"Alpha", 5}, {L"beta", 2}, {L"gamma", 9}}));
    EXPECT_EQ(sorted.GetCurSel(), 2);
}

TEST_F(TypeCombo, WithoutTypesTheTextStays) {
    OwnDistillery empty;
    EXPECT_EQ(empty.instance().FillTypeNameCombo(combo, nullptr), 0);
    EXPECT_EQ(combo.GetCount(), 0);
    combo.AddString(L"old");
    combo.SetCurSel(0);
    EXPECT_EQ(empty.instance().FillTypeNameCombo(combo, nullptr), 0);
    EXPECT_EQ(RowsOf(combo), (Rows{{L"old", 0}}));
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_EQ(empty.instance().FillTypeNameCombo(combo, L"new"), 0);
    EXPECT_EQ(RowsOf(combo), (Rows{{L"new", 0}}));
    EXPECT_EQ(combo.GetCurSel(), 0);
}

} // namespace
