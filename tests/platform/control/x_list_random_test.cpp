// A list against a plain table of what its cells hold, over thousands of random operations.
#include <paramdb/platform/control/x_list_ctrl.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

struct Cell {
    std::wstring text;
    COLORREF text_color = XDefaultColor;
    COLORREF background = XDefaultColor;
    int check = -1;
};
struct Row {
    std::vector<Cell> cells;
    std::uint64_t data = 0;
    bool enabled = true;
};

class Model {
public:
    std::vector<Row> rows;
    std::size_t columns = 0;

    int Checked(std::size_t column) const {
        return static_cast<int>(
            std::ranges::count_if(rows, [&](Row const& row) { return row.cells[column].check == 1; }));
    }
    int Mark(std::size_t column) const {
        auto const boxes =
            std::ranges::count_if(rows, [&](Row const& row) { return row.cells[column].check >= 0; });
        int const checked = Checked(column);
        return checked == 0 ? 0 : checked == boxes ? 1 : 2;
    }
};

void ExpectSame(CXListCtrl const& list, Model const& model) {
    ASSERT_EQ(list.GetItemCount(), static_cast<int>(model.rows.size()));
    ASSERT_EQ(list.GetColumnCount(), static_cast<int>(model.columns));
    for (std::size_t r = 0; r < model.rows.size(); ++r) {
        int const item = static_cast<int>(r);
        ASSERT_EQ(list.GetItemData64(item), model.rows[r].data);
        ASSERT_EQ(list.GetEnabled(item), model.rows[r].enabled);
        for (std::size_t c = 0; c < model.columns; ++c) {
            int const column = static_cast<int>(c);
            Cell const& cell = model.rows[r].cells[c];
            COLORREF text = 0;
            COLORREF background = 0;
            ASSERT_EQ(list.GetItemText(item, column), cell.text);
            ASSERT_TRUE(list.GetItemColors(item, column, text, background));
            ASSERT_EQ(text, cell.text_color);
            ASSERT_EQ(background, cell.background);
            ASSERT_EQ(list.GetCheckbox(item, column), cell.check);
        }
    }
    for (std::size_t c = 0; c < model.columns; ++c) {
        ASSERT_EQ(list.CountCheckedItems(static_cast<int>(c)), model.Checked(c));
        ASSERT_EQ(list.GetHeaderMark(static_cast<int>(c)), model.Mark(c));
    }
}

TEST(XListRandom, AgainstATable) {
    unsigned const seed = 90125;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&](std::size_t limit) { return limit == 0 ? 0 : random() % limit; };
    CXListCtrl list;
    Model model;
    for (int step = 0; step < 3000; ++step) {
        SCOPED_TRACE(step);
        std::size_t const r = below(model.rows.size());
        std::size_t const c = below(model.columns);
        int const item = static_cast<int>(r);
        int const column = static_cast<int>(c);
        bool const cell_there = !model.rows.empty() && model.columns > 0;
        std::wstring const text(below(6), static_cast<wchar_t>(L'a' + below(3)));
        auto const color = static_cast<COLORREF>(below(5));
        switch (below(14)) {
        case 0:
            if (model.columns < 4) {
                list.InsertColumn(column, text.c_str());
                list.SetHeaderCheckedState(column, 3);
                ++model.columns;
                for (Row& row : model.rows)
                    row.cells.emplace(row.cells.begin() + column);
            }
            break;
        case 1:
            if (model.columns > 1 && below(4) == 0) {
                ASSERT_TRUE(list.DeleteColumn(column));
                --model.columns;
                for (Row& row : model.rows)
                    row.cells.erase(row.cells.begin() + column);
            }
            break;
        case 2:
        case 3:
        case 4: {
            std::size_t const place = below(model.rows.size() + 3);
            std::size_t const at = std::min(place, model.rows.size());
            ASSERT_EQ(list.InsertItem(static_cast<int>(place), text.c_str(), color), static_cast<int>(at));
            Row row;
            row.cells.resize(model.columns);
            if (model.columns > 0) {
                row.cells[0].text = text;
                row.cells[0].text_color = color;
            }
            model.rows.insert(model.rows.begin() + static_cast<int>(at), row);
            break;
        }
        case 5:
            ASSERT_EQ(list.DeleteItem(item), !model.rows.empty());
            if (!model.rows.empty())
                model.rows.erase(model.rows.begin() + item);
            break;
        case 6:
            if (below(100) == 0) {
                list.DeleteAllItems();
                model.rows.clear();
            }
            break;
        case 7:
            ASSERT_EQ(list.SetItemText(item, column, text.c_str(), color, color + 1), cell_there);
            if (cell_there) {
                Cell& cell = model.rows[r].cells[c];
                cell = {text, color, color + 1, cell.check};
            }
            break;
        case 8:
            ASSERT_EQ(list.SetRowColors(item, color, color), !model.rows.empty());
            if (!model.rows.empty()) {
                for (Cell& cell : model.rows[r].cells)
                    cell.text_color = cell.background = color;
            }
            break;
        case 9:
        case 10: {
            int const state = static_cast<int>(below(3)) - 1;
            ASSERT_EQ(list.SetCheckbox(item, column, state), cell_there);
            if (cell_there)
                model.rows[r].cells[c].check = state;
            break;
        }
        case 11:
            list.SetItemData(item, static_cast<std::uint64_t>(step));
            if (!model.rows.empty())
                model.rows[r].data = static_cast<std::uint64_t>(step);
            break;
        case 12: {
            bool const enable = below(2) == 0;
            list.SetEnabled(item, enable);
            if (!model.rows.empty())
                model.rows[r].enabled = enable;
            break;
        }
        default:
            if (model.columns > 0) {
                int const wanted = model.Mark(c) == 1 ? 0 : 1;
                list.ClickColumn(column);
                for (Row& row : model.rows) {
                    if (row.enabled && row.cells[c].check >= 0)
                        row.cells[c].check = wanted;
                }
            }
        }
        if (step % 7 == 0 || step > 2900) {
            ASSERT_NO_FATAL_FAILURE(ExpectSame(list, model));
        }
    }
}

// Far from quadratic: with a cost for each row already there this would take minutes.
TEST(XListRandom, ManyItems) {
    constexpr int count = 100000;
    CXListCtrl list;
    list.InsertColumn(0, L"a", 0, 100);
    list.SetHeaderCheckedState(0, 3);
    list.SetBatchInsertMode(true);
    for (int i = 0; i < count; ++i) {
        int const item = list.InsertItem(i % 2 == 0 ? 0 : list.GetItemCount(), L"row");
        list.SetItemData(item, static_cast<std::uint64_t>(i));
        list.SetCheckbox(item, 0, i % 2);
    }
    list.SetBatchInsertMode(false);
    EXPECT_EQ(list.CountCheckedItems(), count / 2);
    EXPECT_EQ(list.GetHeaderMark(0), 2);
    EXPECT_EQ(list.GetItemData64(0), std::uint64_t{count - 2});
    EXPECT_EQ(list.GetItemData64(count - 1), std::uint64_t{count - 1});
    list.ClickColumn(0);
    EXPECT_EQ(list.CountCheckedItems(), count);
    list.EnsureVisible(count - 1);
    LVHITTESTINFO hit{};
    hit.pt = CPoint(50, 239);
    EXPECT_EQ(list.HitTest(&hit), count - 1);
}

} // namespace
