// The range selection grid against a plain model that holds its selection as data.
#include <paramdb/controls/range_select_ctrl.h>

#include <algorithm>
#include <tests/controls/control_world.h>
#include <tests/controls/range_grid.h>

namespace {

struct Entry {
    int id = -1;
    std::wstring text;
    bool selected = false;
};

struct Model {
    std::vector<std::vector<Entry>> columns; // each with an entry for every row
    std::vector<int> anchors;
    std::size_t rows = 0;

    template <unsigned int N>
    void Fill(Grid<N> const& grid) {
        columns.clear();
        rows = 0;
        for (unsigned int list = 0; list < N; ++list) {
            if (!grid.mask()[list])
                continue;
            std::vector<Entry> column;
            for (auto const& [id, text] : grid.lists[list])
                column.push_back({id, text.GetString()});
            rows = std::max(rows, column.size());
            columns.push_back(std::move(column));
        }
        for (auto& column : columns)
            column.resize(rows);
    }
    void Clear(std::size_t column) {
        for (Entry& entry : columns[column])
            entry.selected = false;
    }
    void Click(std::size_t row, std::size_t column, bool control, bool shift) {
        Entry& entry = columns[column][row];
        if (entry.text.empty())
            return;
        int const anchor = anchors[column];
        if (control) {
            entry.selected = !entry.selected;
        } else if (shift && anchor >= 0) {
            Clear(column);
            auto const from = std::min(static_cast<std::size_t>(anchor), row);
            auto const to = std::max(static_cast<std::size_t>(anchor), row);
            for (std::size_t i = from; i <= to && i < rows; ++i)
                columns[column][i].selected = columns[column][i].id != -1;
            return;
        } else {
            Clear(column);
            entry.selected = true;
        }
        anchors[column] = static_cast<int>(row);
    }
    void Column(std::size_t column) {
        for (Entry& entry : columns[column])
            entry.selected = entry.selected || !entry.text.empty();
        anchors[column] = -1;
    }
    void Invert() {
        for (auto& column : columns) {
            for (Entry& entry : column)
                entry.selected = entry.selected != !entry.text.empty();
        }
    }
    std::map<int, bool> Retrieve(std::size_t column) const {
        std::map<int, bool> out;
        for (Entry const& entry : columns[column])
            out.try_emplace(entry.id, entry.selected);
        return out;
    }
};

class RangeSelectRandom : public ControlTest {
protected:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }

    template <unsigned int N>
    void Lists(Grid<N>& grid) {
        for (auto& list : grid.lists) {
            list.clear();
            for (int i = Below(8); i > 0; --i)
                list.emplace(Below(10),
                             Below(12) == 0 ? L"" : std::wstring(1, static_cast<wchar_t>(L'a' + Below(4))));
        }
    }

    template <unsigned int N>
    void Run(unsigned int seed, int steps) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        m_random.seed(seed);
        Grid<N> grid;
        CWnd other;
        other.Create();
        Model model;
        auto const mask = [&] {
            return std::bitset<N>(static_cast<unsigned>(Below(3) == 0 ? 127 : Below(128)));
        };
        grid.set_mask(mask());
        Lists(grid);
        ASSERT_TRUE(grid.Create());
        model.Fill(grid);
        model.anchors.assign(N, -1);
        for (int step = 0; step < steps; ++step) {
            SCOPED_TRACE(step);
            int const what = Below(40);
            if (what == 0) {
                if (Below(2) == 0)
                    grid.set_mask(mask());
                Lists(grid);
                grid.fill();
                model.Fill(grid); // the anchors stay
            } else if (what == 1) {
                grid.full_selection();
                for (std::size_t column = 0; column < model.columns.size(); ++column)
                    model.Column(column);
            } else if (what == 2) {
                grid.invert_selection();
                model.Invert();
            } else if (what < 6) {
                int const column = Below(N);
                grid.ClickColumn(column);
                if (static_cast<std::size_t>(column) < model.columns.size())
                    model.Column(static_cast<std::size_t>(column));
                else
                    model.anchors[static_cast<std::size_t>(column)] = -1;
            } else if (what < 9) {
                (Below(2) == 0 ? static_cast<CWnd&>(grid) : other).SetFocus();
            } else if (what < 11) {
                grid.SetScrollPos(CPoint(Below(60), Below(60)));
            } else if (model.rows > 0 && !model.columns.empty()) {
                int const row = Below(static_cast<int>(model.rows));
                int const column = Below(static_cast<int>(model.columns.size()));
                bool const control = Below(3) == 0;
                bool const shift = Below(2) == 0;
                CRect rect;
                ASSERT_TRUE(grid.GetSubItemRect(row, column, rect));
                CPoint const point(static_cast<int>(rect.left), static_cast<int>(rect.top));
                grid.Click((control ? MK_CONTROL : 0) | (shift ? MK_SHIFT : 0) | MK_LBUTTON, point);
                if (point.x >= 0 && point.y >= grid.GetMetrics().header_height)
                    model.Click(static_cast<std::size_t>(row), static_cast<std::size_t>(column), control,
                                shift);
            }
            std::map<int, bool> out[N];
            grid.retrieve(out);
            Cells cells;
            for (std::size_t column = 0; column < N; ++column) {
                ASSERT_EQ(grid.m_last_click[column], model.anchors[column]);
                if (column >= model.columns.size()) {
                    ASSERT_TRUE(out[column].empty());
                    continue;
                }
                if (model.rows > 0) {
                    ASSERT_EQ(out[column], model.Retrieve(column));
                }
                for (std::size_t row = 0; row < model.rows; ++row) {
                    if (model.columns[column][row].selected)
                        cells.emplace(static_cast<int>(row), static_cast<int>(column));
                }
            }
            ASSERT_EQ(SelectionOf(grid), cells);
        }
    }

private:
    std::mt19937 m_random;
};

TEST_F(RangeSelectRandom, SixColumns) {
    for (unsigned int seed = 1; seed <= 4; ++seed)
        Run<6>(seed, 1500);
}

TEST_F(RangeSelectRandom, SevenColumns) {
    for (unsigned int seed = 11; seed <= 14; ++seed)
        Run<7>(seed, 1500);
}

} // namespace
