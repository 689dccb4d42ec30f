#include <paramdb/controls/clavis_combo_box.h>
#include <paramdb/platform/core/lib_mgr.h>

#include <tests/controls/control_world.h>

namespace {

using Rows = std::vector<std::pair<std::wstring, int>>;

Rows RowsOf(CComboBox const& combo) {
    Rows rows;
    CString text;
    for (int i = 0; i < combo.GetCount(); ++i) {
        combo.GetLBText(i, text);
        rows.emplace_back(text.GetString(), static_cast<int>(combo.GetItemData(i)));
    }
    return rows;
}

class ClavisComboBox : public ControlTest {
protected:
    ClavisComboBox() {
        ControlWorld world;
        world.names[0] = {{7, L"Ramp"}, {4, L"Coast"}, {5, L"Secret"}, {Virtual, L"Ramp 300"}};
        world.mode_flags = {{7, 1}, {4, 2}, {5, 1024 | 3}};
        world.names[1] = {{1001, L"Value"}, {2500, L"Spectrum"}, {4711, L"Odd"}};
        world.names[2] = {{3, L"Mix"}};
        world.parameters = {{20, {2500, L"late"}}, {10, {1001, L"early"}}, {15, {0, L"zero"}}};
        Load(world);
    }

    inline static int const Virtual = ControlWorld::VirtualMode(7, 3);
    std::pair<std::wstring, int> const none{L"(not assigned)", -1};
    CClavisComboBox combo;
};

TEST_F(ClavisComboBox, OffersById) {
    combo.Fill(Clavis::qMode, -1, 0);
    EXPECT_EQ(RowsOf(combo), (Rows{none, {L"Coast", 4}, {L"Ramp", 7}, {L"Ramp 300", Virtual}}));
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_EQ(combo.Retrieve(), -1);
    combo.Fill(Clavis::qChannel, 3, 0);
    EXPECT_EQ(RowsOf(combo), (Rows{none, {L"Mix", 3}}));
    EXPECT_EQ(combo.Retrieve(), 3);
    combo.Fill(Clavis::qLocation, -1, 0);
    EXPECT_EQ(RowsOf(combo), Rows{none});
    EXPECT_EQ(messages.Take(), std::vector<Message>{});
}

TEST_F(ClavisComboBox, NothingSelected) {
    EXPECT_EQ(combo.Retrieve(), -1); // before any filling
    combo.Fill(Clavis::qMode, -2, 0);
    EXPECT_EQ(combo.GetCurSel(), -1);
    EXPECT_EQ(combo.Retrieve(), -1);
    EXPECT_EQ(combo.GetCount(), 4);
}

TEST_F(ClavisComboBox, VirtualModesFromTheNextFillingOn) {
    combo.Fill(Clavis::qMode, Virtual, 0);
    EXPECT_EQ(combo.Retrieve(), Virtual);
    combo.HideVirtualModes(true);
    EXPECT_EQ(combo.GetCount(), 4);
    combo.Fill(Clavis::qMode, Virtual, 0);
    EXPECT_EQ(RowsOf(combo), (Rows{none, {L"Coast", 4}, {L"Ramp", 7}}));
    EXPECT_EQ(combo.GetCurSel(), 0);
    combo.HideVirtualModes(false);
    combo.Fill(Clavis::qMode, Virtual, 0);
    EXPECT_EQ(combo.Retrieve(), Virtual);
}

TEST_F(ClavisComboBox, AValueThatIsLeftOutGivesTheFirstRow) {
    combo.Fill(Clavis::qMode, 5, 0); // hidden
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_EQ(combo.GetCount(), 4);
    combo.Fill(Clavis::qMode, 4, 1); // filtered
    EXPECT_EQ(RowsOf(combo), (Rows{none, {L"Ramp", 7}}));
    EXPECT_EQ(combo.GetCurSel(), 0);
    EXPECT_EQ(combo.Retrieve(), -1);
}

TEST_F(ClavisComboBox, AValueThatNoTableHasStaysInView) {
    combo.Fill(Clavis::qMode, 99, 0);
    EXPECT_EQ(RowsOf(combo),
              (Rows{none, {L"Coast", 4}, {L"Ramp", 7}, {L"Ramp 300", Virtual}, {L"(Test step 99)", 99}}));
    EXPECT_EQ(combo.GetCurSel(), 4);
    EXPECT_EQ(combo.Retrieve(), 99);
    CLibMgr::SetLanguage(CLibMgr::Language::german);
    combo.Fill(Clavis::qChannel, 99, 0);
    EXPECT_EQ(RowsOf(combo), (Rows{{L"(nicht zugewiesen)", -1}, {L"Mix", 3}, {L"(Kanal 99)", 99}}));
    combo.Fill(Clavis::qLocation, 0, 0);
    EXPECT_EQ(combo.Retrieve(), 0);
}

TEST_F(ClavisComboBox, IdsAreShownWhereDialogsShowThem) {
    CQtParamInstance::ShowIdsInDialogs(true);
    combo.Fill(Clavis::qInstrument, 99, 0);
    EXPECT_EQ(RowsOf(combo), (Rows{none,
                                   {L"Value [1001]", 1001},
                                   {L"Spectrum [2500]", 2500},
                                   {L"Odd [4711]", 4711},
                                   {L"(Instrument 99)", 99}}));
    combo.Fill(Clavis::qInstrParam, -1, 2500);
    EXPECT_EQ(RowsOf(combo), (Rows{none, {L"late [20]", 20}}));
}

TEST_F(ClavisComboBox, ParametersOfAnInstrument) {
    struct Case {
        int select, filter;
        Rows rows;
        int selected;
    };
    Case const cases[] = {
        {-1, -1, {none, {L"early", 10}, {L"zero", 15}, {L"late", 20}}, 0},
        {15, -1, {none, {L"early", 10}, {L"zero", 15}, {L"late", 20}}, 2},
        {20, 2500, {none, {L"late", 20}}, 1},
        {-1, 0, {none, {L"zero", 15}}, 0}, // the instrument 0, not all
        {-1, 7, {none}, 0},
        {20, 1001, {none, {L"early", 10}, {L"(Parameter 20)", 20}}, 2}, // of another instrument
        {99, -1, {none, {L"early", 10}, {L"zero", 15}, {L"late", 20}, {L"(Parameter 99)", 99}}, 4},
        {-3, 1001, {none, {L"early", 10}}, -1},
    };
    for (auto const& [select, filter, rows, selected] : cases) {
        combo.Fill(Clavis::qInstrParam, select, filter);
        EXPECT_EQ(RowsOf(combo), rows) << select << " " << filter;
        EXPECT_EQ(combo.GetCurSel(), selected) << select << " " << filter;
    }
}

TEST_F(ClavisComboBox, AnyOtherNumberMeansModesWithoutTheirRules) {
    combo.Fill(static_cast<Clavis::qOrder>(6), -1, 1);
    EXPECT_EQ(RowsOf(combo),
              (Rows{none, {L"Coast", 4}, {L"Secret", 5}, {L"Ramp", 7}, {L"Ramp 300", Virtual}}));
}

TEST_F(ClavisComboBox, RandomWorldsAgainstAModel) {
    unsigned const seed = 5150;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    wchar_t const* const words[] = {L"Test step", L"Instrument", L"Channel",
                                    L"Object",    L"Parameter",  L"Sensor"};
    for (int world_number = 0; world_number < 40; ++world_number) {
        ControlWorld const world = ControlWorld::Random(random);
        ASSERT_NO_FATAL_FAILURE(Load(world));
        for (int step = 0; step < 100; ++step) {
            SCOPED_TRACE(std::to_string(world_number) + " " + std::to_string(step));
            int const element = below(6);
            bool const ids = below(2) == 0;
            bool const hide = below(2) == 0;
            int const instruments[] = {-1, 0, 77, 1001, 2500};
            int const filter = element == 4 ? instruments[below(5)] : below(3) * below(16);
            int select = below(22) - 2;
            if (element == 0 && below(3) == 0)
                select = ControlWorld::VirtualMode(below(20), below(10));
            else if (element == 1)
                select = instruments[below(5)];

            // Everything in the order of ids, with whether it is offered.
            std::vector<std::tuple<int, std::wstring, bool>> values;
            if (element == 4) {
                for (auto const& [id, row] : world.parameters) {
                    if (filter == -1 || row.instrument == filter)
                        values.emplace_back(id, row.name, true);
                }
            } else {
                for (auto const& [id, name] : world.names[element]) {
                    bool const skipped =
                        element == 0 && (world.IsHidden(id) || (hide && ControlWorld::IsVirtual(id)));
                    values.emplace_back(id, name,
                                        !skipped && world.Passes(element, id, static_cast<unsigned>(filter)));
                }
            }
            Rows rows{none};
            int selected = select == -1 ? 0 : -1;
            for (auto const& [id, name, offered] : values) {
                if (id == select)
                    selected = offered ? static_cast<int>(rows.size()) : 0;
                if (offered)
                    rows.emplace_back(name + (ids ? L" [" + std::to_wstring(id) + L"]" : L""), id);
            }
            if (selected == -1 && select >= 0) {
                selected = static_cast<int>(rows.size());
                rows.emplace_back(L"(" + std::wstring(words[element]) + L" " + std::to_wstring(select) + L")",
                                  select);
            }

            CQtParamInstance::ShowIdsInDialogs(ids);
            combo.HideVirtualModes(hide);
            combo.Fill(static_cast<Clavis::qOrder>(element), select, filter);
            ASSERT_EQ(RowsOf(combo), rows);
            ASSERT_EQ(combo.GetCurSel(), selected);
            ASSERT_EQ(combo.Retrieve(), selected < 0 ? -1 : rows[static_cast<std::size_t>(selected)].second);
        }
    }
}

} // namespace
