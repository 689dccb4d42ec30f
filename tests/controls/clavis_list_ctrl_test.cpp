#include <paramdb/controls/clavis_list_ctrl.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <algorithm>
#include <tests/controls/control_world.h>
#include <tests/support/view_log.h>
#include <tuple>

namespace {

using CheckRows = std::vector<std::tuple<std::wstring, int, int>>; // text, id, check

CheckRows RowsOf(CXListCtrl const& list) {
    CheckRows rows;
    for (int i = 0; i < list.GetItemCount(); ++i)
        rows.emplace_back(list.GetItemText(i, 0).GetString(), static_cast<int>(list.GetItemData64(i)),
                          list.GetCheckbox(i, 0));
    return rows;
}

class ClavisListCtrl : public ControlTest {
protected:
    ClavisListCtrl() {
        world.names[0] = {{7, L"Ramp"}, {4, L"Coast"}, {5, L"Secret"}, {Virtual, L"Ramp 300"}};
        world.mode_flags = {{7, 1}, {4, 2}, {5, 1024 | 3}};
        world.names[1] = {{1001, L"Value"}, {2500, L"Spectrum"}};
        world.names[2] = {{0, L"Zero"}, {3, L"Mix"}};
        world.parameters = {
            {20, {2500, L"late"}}, {10, {2500, L"early"}}, {15, {1001, L"only"}}, {16, {9, L"lost"}}};
        Load(world);
    }
    std::set<int> Picked(std::uint64_t count) {
        std::set<int> picked{123};
        EXPECT_EQ(list.Retrieve(picked), count);
        return picked;
    }

    inline static int const Virtual = ControlWorld::VirtualMode(7, 3);
    ControlWorld world;
    CClavisListCtrl list;
};

TEST_F(ClavisListCtrl, Init) {
    wchar_t const* const headings[] = {L"all test steps", L"all instruments", L"all channels",
                                       L"all objects",    L"all parameters",  L"all sensors"};
    list.SetExtendedStyle(1);
    for (int element = 0; element < 6; ++element) {
        list.Init(static_cast<Clavis::qOrder>(element));
        ASSERT_EQ(list.GetColumnCount(), 1);
        EXPECT_EQ(list.GetColumn(0).heading, headings[element]);
        EXPECT_EQ(list.GetColumn(0).format, LVCFMT_LEFT);
        EXPECT_EQ(list.GetColumnWidth(0), list.GetColumn(0).heading.GetLength() * 7 + 12); // autosized
        EXPECT_EQ(list.GetExtendedStyle(), 97u);
        list.Fill({}, 0);
    }
    list.Init(Clavis::qChannel); // without items again
    EXPECT_EQ(list.GetItemCount(), 0);
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    list.Init(Clavis::qChannel);
    EXPECT_EQ(list.GetColumn(0).heading, L"alle Kan\u00E4le");
}

TEST_F(ClavisListCtrl, ListsById) {
    list.Init(Clavis::qMode);
    list.Fill({7, 99}, 0);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Coast", 4, 0}, {L"Ramp", 7, 1}, {L"Ramp 300", Virtual, 0}}));
    EXPECT_EQ(list.GetHeaderCheckedState(0), 3);
    EXPECT_FALSE(list.Changes());
    EXPECT_EQ(Picked(1), std::set<int>{7}); // what no table has is dropped
    list.Fill({}, 2);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Coast", 4, 0}}));
    EXPECT_EQ(Picked(0), std::set<int>{});
    list.HideVirtualModes(true);
    list.Fill({-1, 4}, 0);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Coast", 4, 1}, {L"Ramp", 7, 1}}));
    EXPECT_EQ(messages.Take(), std::vector<Message>{});
}

TEST_F(ClavisListCtrl, AllIsMinusOne) {
    list.Init(Clavis::qChannel);
    list.Fill({-1}, 0);
    EXPECT_EQ(Picked(2), std::set<int>{-1});
    list.Fill({0, 3}, 0);
    EXPECT_EQ(Picked(2), std::set<int>{-1});
    list.Fill({0}, 0);
    EXPECT_EQ(Picked(1), std::set<int>{0});
    list.Init(Clavis::qLocation);
    list.Fill({}, 0); // nothing there is everything
    EXPECT_EQ(Picked(0), std::set<int>{-1});
    // A row that has come since is in a set of all.
    world.names[3][5] = L"New";
    Load(world);
    list.Fill({-1}, 0);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"New", 5, 1}}));
}

TEST_F(ClavisListCtrl, Parameters) {
    list.Init(Clavis::qInstrParam);
    list.Fill({15}, 1); // the mask does not matter
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Spectrum early", 10, 0},
                                       {L"Value", 15, 1},
                                       {L"(Instr. 9)", 16, 0},
                                       {L"Spectrum late", 20, 0}}));
    CQtParamInstance::ShowIdsInDialogs(true);
    list.Fill({}, 0);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Spectrum early  [10]", 10, 0},
                                       {L"Value only  [15]", 15, 0},
                                       {L"(Instr. 9) lost  [16]", 16, 0},
                                       {L"Spectrum late  [20]", 20, 0}}));
    list.Init(Clavis::qChannel);
    list.Fill({}, 0);
    EXPECT_EQ(RowsOf(list), (CheckRows{{L"Zero  [0]", 0, 0}, {L"Mix  [3]", 3, 0}}));
}

TEST_F(ClavisListCtrl, Changes) {
    list.Init(Clavis::qChannel);
    EXPECT_FALSE(list.Changes());
    list.Fill({0}, 0);
    EXPECT_FALSE(list.Changes());
    list.SetCheckbox(0, 0, 1); // as it is
    EXPECT_FALSE(list.Changes());
    list.ToggleCheckbox(1, 0);
    EXPECT_TRUE(list.Changes());
    EXPECT_EQ(Picked(2), std::set<int>{-1});
    EXPECT_FALSE(list.Changes());
    list.ClickColumn(0); // all of them off
    EXPECT_TRUE(list.Changes());
    list.Fill({}, 0);
    EXPECT_FALSE(list.Changes());
    EXPECT_EQ(Picked(0), std::set<int>{});
}

TEST_F(ClavisListCtrl, AClickAnywhereInARowChecksIt) {
    list.Init(Clavis::qChannel);
    list.Fill({}, 0);
    CRect rect;
    ASSERT_TRUE(list.GetSubItemRect(1, 0, rect));
    list.Click(MK_LBUTTON, CPoint(static_cast<int>(rect.right) - 1, static_cast<int>(rect.top)));
    EXPECT_EQ(Picked(1), std::set<int>{3});
}

TEST_F(ClavisListCtrl, ViewsHearOnceOfAFilling) {
    list.Init(Clavis::qChannel);
    list.Fill({}, 0);
    ViewLog view(list);
    list.Fill({-1}, 0);
    EXPECT_EQ(view.Take(), (Events{"content", "header 0", "content"}));
}

TEST_F(ClavisListCtrl, RandomWorldsAgainstAModel) {
    unsigned const seed = 1984;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    for (int world_number = 0; world_number < 40; ++world_number) {
        ControlWorld const random_world = ControlWorld::Random(random);
        ASSERT_NO_FATAL_FAILURE(Load(random_world));
        for (int round = 0; round < 12; ++round) {
            int const element = below(6);
            bool const ids = below(2) == 0;
            bool const hide = below(2) == 0;
            auto const mask = static_cast<unsigned>(below(2) * below(16));
            std::set<int> selection;
            for (int i = below(8); i > 0; --i)
                selection.insert(below(20) - (below(10) == 0 ? 20 : 0));
            if (below(6) == 0)
                selection.insert(-1);
            bool const all = selection.contains(-1);
            CheckRows rows;
            auto const add = [&](int id, std::wstring const& text) {
                rows.emplace_back(text + (ids ? L"  [" + std::to_wstring(id) + L"]" : L""), id,
                                  all || selection.contains(id));
            };
            if (element == 4) {
                for (auto const& [id, row] : random_world.parameters)
                    add(id, ids ? random_world.InstrumentName(row.instrument) + L" " + row.name
                                : random_world.ParameterText(id));
            } else {
                for (auto const& [id, name] : random_world.names[element]) {
                    bool const skipped =
                        element == 0 && (random_world.IsHidden(id) || (hide && ControlWorld::IsVirtual(id)));
                    if (!skipped && random_world.Passes(element, id, mask))
                        add(id, name);
                }
            }
            CQtParamInstance::ShowIdsInDialogs(ids);
            list.HideVirtualModes(hide);
            list.Init(static_cast<Clavis::qOrder>(element));
            list.Fill(selection, mask);
            bool changes = false;
            for (int step = 0; step < 25; ++step) {
                SCOPED_TRACE(std::to_string(world_number) + " " + std::to_string(round) + " " +
                             std::to_string(step));
                ASSERT_EQ(RowsOf(list), rows);
                ASSERT_EQ(list.Changes(), changes);
                auto const checked = static_cast<std::size_t>(
                    std::ranges::count_if(rows, [](auto const& row) { return std::get<2>(row) == 1; }));
                int const what = below(4);
                if (what == 0) {
                    std::set<int> expected;
                    for (auto const& [text, id, check] : rows) {
                        if (check == 1)
                            expected.insert(id);
                    }
                    if (checked == rows.size())
                        expected = {-1};
                    std::set<int> picked;
                    ASSERT_EQ(list.Retrieve(picked), checked);
                    ASSERT_EQ(picked, expected);
                    changes = false;
                } else if (what == 1 && below(5) == 0) {
                    bool const to = checked != rows.size() || rows.empty();
                    list.ClickColumn(0);
                    changes = changes || !rows.empty();
                    for (auto& row : rows)
                        std::get<2>(row) = to;
                } else if (!rows.empty()) {
                    auto& row = rows[static_cast<std::size_t>(below(static_cast<int>(rows.size())))];
                    list.ToggleCheckbox(static_cast<int>(&row - rows.data()), 0);
                    std::get<2>(row) = 1 - std::get<2>(row);
                    changes = true;
                }
            }
        }
    }
}

} // namespace
