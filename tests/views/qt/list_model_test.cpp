#include <paramdb/views/qt/list_model.h>

#include <QtTest/QSignalSpy>
#include <gtest/gtest.h>
#include <random>
#include <string>

using paramdb::qt::ListModel;

namespace {

class QtListModel : public testing::Test {
protected:
    QtListModel() {
        list.InsertColumn(0, L"Name", LVCFMT_LEFT, 90);
        list.InsertColumn(1, L"Unit", LVCFMT_RIGHT, 40);
        for (wchar_t const* name : {L"Ramp up", L"ramp down", L"Idle", L"\u00C4nderung"})
            list.InsertItem(list.GetItemCount(), name);
        list.SetItemText(2, 1, L"1/min", 0x112233, 0x445566);
        list.SetCheckbox(0, 0, 1);
        list.SetCheckbox(1, 0, 0);
        list.SetComboBox(3, 1, choices, 2);
        list.SetEnabled(1, false);
        model.SetList(&list);
    }

    QVariant Data(int row, int column, int role) { return model.data(model.index(row, column), role); }

    std::map<int, CString> choices{{1, L"one"}, {2, L"two"}};
    CXListCtrl list;
    ListModel model;
};

} // namespace

TEST_F(QtListModel, ShowsWhatTheListHolds) {
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_EQ(model.columnCount(), 2);
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 0);
    EXPECT_EQ(Data(0, 0, Qt::DisplayRole), QStringLiteral("Ramp up"));
    EXPECT_EQ(Data(0, 0, Qt::AccessibleTextRole), QStringLiteral("Ramp up"));
    EXPECT_EQ(Data(2, 1, ListModel::TextColorRole).toUInt(), 0x112233U);
    EXPECT_EQ(Data(2, 1, ListModel::BackgroundColorRole).toUInt(), 0x445566U);
    EXPECT_EQ(Data(0, 1, ListModel::BackgroundColorRole).toUInt(), XDefaultColor);
    EXPECT_EQ(Data(0, 0, Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_EQ(Data(1, 0, Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_FALSE(Data(2, 0, Qt::CheckStateRole).isValid());
    EXPECT_EQ(Data(3, 1, Qt::DisplayRole), QStringLiteral("two"));
    EXPECT_EQ(Data(3, 1, Qt::EditRole), 2);
    EXPECT_TRUE(Data(3, 1, ListModel::ComboRole).toBool());
    EXPECT_FALSE(Data(3, 0, ListModel::ComboRole).toBool());
}

TEST_F(QtListModel, ShowsHeadings) {
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QStringLiteral("Unit"));
    EXPECT_EQ(model.headerData(1, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
              static_cast<int>(Qt::AlignRight | Qt::AlignVCenter));
    EXPECT_FALSE(model.headerData(0, Qt::Horizontal, Qt::CheckStateRole).isValid());
    list.SetHeaderCheckedState(0, CXListCtrl::header_follows);
    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::CheckStateRole).toInt(), Qt::PartiallyChecked);
    EXPECT_FALSE(model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    EXPECT_FALSE(model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

TEST_F(QtListModel, FlagsFollowTheList) {
    auto const flags = [&](int row, int column) { return model.flags(model.index(row, column)); };
    EXPECT_TRUE(flags(0, 0) & Qt::ItemIsUserCheckable);
    EXPECT_EQ(flags(1, 0), Qt::NoItemFlags);
    EXPECT_FALSE(flags(2, 0) & Qt::ItemIsUserCheckable);
    EXPECT_TRUE(flags(3, 1) & Qt::ItemIsEditable);
    EXPECT_FALSE(flags(3, 0) & Qt::ItemIsEditable);
}

TEST_F(QtListModel, TheListDecidesWhatMayBeSet) {
    EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(list.GetCheckbox(0, 0), 0);
    EXPECT_TRUE(model.setData(model.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ(list.GetCheckbox(0, 0), 0);
    EXPECT_FALSE(model.setData(model.index(1, 0), Qt::Checked, Qt::CheckStateRole)); // disabled
    EXPECT_EQ(list.GetCheckbox(1, 0), 0);
    EXPECT_TRUE(model.setData(model.index(3, 1), 1, Qt::EditRole));
    EXPECT_EQ(list.GetComboCurSel(3, 1), 1);
    EXPECT_FALSE(model.setData(model.index(3, 1), 5, Qt::EditRole));
    EXPECT_EQ(list.GetComboCurSel(3, 1), 1);
}

TEST_F(QtListModel, RefreshKeepsThePlaceWhereTheShapeIsTheSame) {
    QSignalSpy const reset(&model, &ListModel::modelReset);
    QSignalSpy const changed(&model, &ListModel::dataChanged);
    list.SetItemText(0, 0, L"Other");
    model.Refresh();
    EXPECT_EQ(reset.count(), 0);
    EXPECT_EQ(changed.count(), 1);
    list.InsertItem(4, L"New");
    EXPECT_EQ(model.rowCount(), 4); // until it is told
    model.Refresh();
    EXPECT_EQ(reset.count(), 1);
    EXPECT_EQ(model.rowCount(), 5);
}

TEST_F(QtListModel, IsHarmlessWhileTheListIsAhead) {
    list.DeleteAllItems();
    EXPECT_FALSE(Data(3, 0, Qt::DisplayRole).isValid());
    EXPECT_EQ(model.flags(model.index(3, 0)), Qt::NoItemFlags);
    EXPECT_FALSE(model.setData(model.index(0, 0), Qt::Checked, Qt::CheckStateRole));
    model.SetList(nullptr);
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(model.columnCount(), 0);
}

TEST_F(QtListModel, NarrowsWithoutRegardToCase) {
    model.SetFilter(QStringLiteral("RAMP"));
    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.ItemOf(1), 1);
    EXPECT_EQ(model.ItemOf(2), -1);
    EXPECT_EQ(model.RowOf(2), -1);
    model.SetFilter(QString::fromUtf16(u"\u00E4nd"));
    EXPECT_EQ(model.rowCount(), 1);
    EXPECT_EQ(model.ItemOf(0), 3);
    model.SetFilter(QStringLiteral("MIN")); // another column
    EXPECT_EQ(model.ItemOf(0), 2);
    model.SetFilter(QStringLiteral("nothing"));
    EXPECT_EQ(model.rowCount(), 0);
    model.SetFilter(QString());
    EXPECT_EQ(model.rowCount(), 4);
    EXPECT_FALSE(model.IsFiltered());
}

// Any filter over any texts, beside a plain search.
TEST_F(QtListModel, NarrowsAsAPlainSearchDoes) {
    constexpr unsigned int seed = 11;
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    auto const word = [&](std::size_t longest) {
        std::string text;
        for (std::size_t i = random() % (longest + 1); i > 0; --i)
            text.push_back("abAB "[random() % 5]);
        return text;
    };
    auto const lower = [](std::string text) {
        for (char& letter : text)
            letter = letter == 'A' ? 'a' : letter == 'B' ? 'b' : letter;
        return text;
    };
    for (int round = 0; round < 300; ++round) {
        list.DeleteAllItems();
        std::vector<std::string> names;
        for (std::size_t i = random() % 30; i > 0; --i) {
            names.push_back(word(5));
            list.InsertItem(list.GetItemCount(),
                            std::wstring(names.back().begin(), names.back().end()).c_str());
        }
        std::string const part = word(3);
        model.SetFilter(QString::fromStdString(part));
        model.Refresh();
        std::vector<int> expected;
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (lower(names[i]).find(lower(part)) != std::string::npos)
                expected.push_back(static_cast<int>(i));
        }
        ASSERT_EQ(model.rowCount(), static_cast<int>(expected.size())) << part;
        for (int row = 0; row < model.rowCount(); ++row) {
            ASSERT_EQ(model.ItemOf(row), expected[static_cast<std::size_t>(row)]);
            ASSERT_EQ(model.RowOf(model.ItemOf(row)), row);
        }
    }
}
