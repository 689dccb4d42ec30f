// The key editor against a plain model of its rows.
#include <paramdb/controls/pentad_ctrl.h>

#include <tests/controls/control_world.h>
#include <tests/controls/pentad_support.h>

namespace {

class PentadRandom : public ControlTest {
protected:
    Posts posts() {
        CMessageQueue::Dispatch();
        return std::exchange(frame.posts, {});
    }

    Frame frame;
};

// Random fillings and choices against a plain reading of the rules.
TEST_F(PentadRandom, WorldsAgainstAModel) {
    unsigned const seed = 2112;
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    auto const below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    wchar_t const* const words[] = {L"Test step", L"Instrument", L"Channel",
                                    L"Object",    L"Parameter",  L"Sensor"};
    int const instruments[] = {-1, 77, 1001, 2500, 4711};
    for (int world_number = 0; world_number < 30; ++world_number) {
        ControlWorld const world = ControlWorld::Random(random);
        ASSERT_NO_FATAL_FAILURE(Load(world));
        for (int round = 0; round < 10; ++round) {
            bool const ids = below(2) == 0;
            bool const hide = below(2) == 0;
            auto const mask = static_cast<unsigned>(below(3) == 0 ? 63 : below(64));
            auto const fixed = static_cast<unsigned>(below(64) & below(64));
            CQtParamInstance::ShowIdsInDialogs(ids);
            CPentadCtrl control;
            ASSERT_TRUE(control.Create(&frame));
            control.hide_virtual_modes(hide);
            control.set_visible_mask(mask);
            control.set_readonly_mask(fixed);
            bool const second_message = below(2) == 0;
            control.set_on_change_message(second_message ? WM_USER + 9 : 0);

            CClavis key;
            for (int element = 0; element < 6; ++element)
                key[element] = element == 1 ? instruments[below(5)] : below(32) - 2;
            if (below(4) == 0)
                key[0] = ControlWorld::VirtualMode(below(20), below(10));
            control.fill(key);

            CClavis held; // what the rows stand at
            std::map<int, std::wstring> offered[6];
            auto const offer = [&](int element, int wanted) {
                auto& choices = offered[element];
                choices = {{-1, Dash}};
                if (element == 4) {
                    int const instrument = held[1];
                    if (instrument == -1)
                        wanted = -1;
                    for (auto const& [id, row] : world.parameters) {
                        if (instrument != -1 && row.instrument == instrument)
                            choices[id] = row.name;
                    }
                } else {
                    for (auto const& [id, name] : world.names[element]) {
                        if (element != 0 || (!world.IsHidden(id) && !(hide && ControlWorld::IsVirtual(id))))
                            choices[id] = name;
                    }
                }
                if (!choices.contains(wanted))
                    choices[wanted] =
                        L"(" + std::wstring(words[element]) + L" " + std::to_wstring(wanted) + L")";
                held[element] = wanted;
            };
            for (int const element : {0, 1, 2, 3, 4, 5}) {
                if ((mask >> element & 1) != 0)
                    offer(element, key[element]);
            }
            for (int step = 0; step < 15; ++step) {
                SCOPED_TRACE(std::to_string(world_number) + " " + std::to_string(round) + " " +
                             std::to_string(step));
                ASSERT_EQ(control.retrieve(), held);
                std::vector<int> elements; // by row
                for (int element = 0; element < 6; ++element) {
                    if ((mask >> element & 1) != 0)
                        elements.push_back(element);
                }
                ASSERT_EQ(control.GetItemCount(), static_cast<int>(elements.size()));
                for (std::size_t r = 0; r < elements.size(); ++r) {
                    int const row = static_cast<int>(r);
                    int const element = elements[r];
                    ASSERT_EQ(ChoicesOf(control, row),
                              Choices(offered[element].begin(), offered[element].end()));
                    ASSERT_EQ(control.GetItemText(row, 0), words[element]);
                    ASSERT_EQ(control.GetItemText(row, 1), offered[element].at(held[element]));
                    ASSERT_EQ(control.GetItemText(row, 2), ids ? std::to_wstring(held[element]) : L"");
                    ASSERT_EQ(control.GetEnabled(row), (fixed >> element & 1) == 0);
                    ASSERT_EQ(control.GetComboCurSel(row, 1), held[element]);
                }
                if (elements.empty())
                    break;
                auto const r = static_cast<std::size_t>(below(static_cast<int>(elements.size())));
                int const element = elements[r];
                auto choice = offered[element].begin();
                std::advance(choice, below(static_cast<int>(offered[element].size())));
                int const value = choice->first;
                bool const enabled = (fixed >> element & 1) == 0;
                ASSERT_EQ(control.ChooseInCombo(static_cast<int>(r), 1, value), enabled);
                Posts expected;
                if (enabled && value != held[element]) {
                    held[element] = value;
                    if (element == 1 && (mask >> 4 & 1) != 0)
                        offer(4, -1);
                    expected.emplace_back(WM_PENTADCTRL_SELCHANGED, element, value);
                    if (second_message)
                        expected.emplace_back(WM_USER + 9, element, value);
                }
                ASSERT_EQ(posts(), expected);
            }
        }
    }
}

} // namespace
