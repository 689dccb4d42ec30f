#include <paramdb/controls/pentad_dialog.h>

#include <functional>
#include <memory>
#include <tests/controls/control_world.h>
#include <tests/support/view_log.h>

namespace {

class PentadDialog : public ControlTest {
protected:
    PentadDialog() {
        ControlWorld world;
        world.names[0] = {{7, L"Ramp"}, {4, L"Coast"}};
        Load(world);
        frame.Create();
        dialog.set_target([this](CClavis const& key) { keys.push_back(key); });
    }

    CClavis const ramp{7, -1, -1, -1, -1, -1};
    CClavis const coast{4, -1, -1, -1, -1, -1};
    CWnd frame;
    CPentadDialog dialog{&frame};
    std::vector<CClavis> keys;
};

TEST_F(PentadDialog, HandsOverTheKey) {
    EXPECT_EQ(dialog.GetResource(), 3002u);
    dialog.Display(ramp);
    EXPECT_EQ(dialog.GetParent(), &frame);
    EXPECT_EQ(dialog.GetDlgItem(3000), &dialog.control());
    EXPECT_EQ(dialog.retrieve(), ramp);
    dialog.control().ChooseInCombo(0, 1, 4);
    EXPECT_EQ(dialog.retrieve(), coast);
    EXPECT_TRUE(keys.empty());
    dialog.OnBnClickedOk();
    EXPECT_EQ(keys, std::vector<CClavis>{coast});
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    EXPECT_EQ(dialog.GetResult(), 1);
}

TEST_F(PentadDialog, IsShownOnce) {
    dialog.Display(ramp);
    dialog.Display(coast);
    EXPECT_EQ(dialog.retrieve(), ramp);
    dialog.OnBnClickedCancel();
    EXPECT_TRUE(keys.empty());
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    EXPECT_EQ(dialog.GetResult(), 2);
    dialog.Display(coast); // and again
    EXPECT_EQ(dialog.retrieve(), coast);
    EXPECT_EQ(dialog.control().GetColumnCount(), 2);
    EXPECT_EQ(dialog.control().GetItemCount(), 6);
}

TEST_F(PentadDialog, ItsButtons) {
    dialog.Display(ramp);
    dialog.Command(2);
    EXPECT_TRUE(keys.empty());
    dialog.Display(ramp);
    dialog.SendMessageW(WM_COMMAND, 1);
    EXPECT_EQ(keys, std::vector<CClavis>{ramp});
    dialog.Display(ramp);
    dialog.SendMessageW(WM_CLOSE);
    EXPECT_EQ(keys.size(), 1u);
    dialog.Display(coast);
    EXPECT_EQ(dialog.retrieve(), coast);
}

TEST_F(PentadDialog, Masks) {
    dialog.set_visible_mask(0b000011);
    dialog.set_readonly_mask(0b000001);
    dialog.Display(ramp);
    EXPECT_EQ(dialog.control().GetItemCount(), 2);
    EXPECT_FALSE(dialog.control().GetEnabled(0));
    EXPECT_TRUE(dialog.control().GetEnabled(1));
}

TEST_F(PentadDialog, WithoutATarget) {
    dialog.set_target({});
    dialog.Display(ramp);
    EXPECT_THROW(dialog.OnBnClickedOk(), std::bad_function_call);
    EXPECT_NE(dialog.GetSafeHwnd(), nullptr);
    dialog.Display(coast); // still shown
    EXPECT_EQ(dialog.retrieve(), ramp);
    dialog.OnBnClickedCancel();
}

TEST_F(PentadDialog, TheTargetFindsItStillShown) {
    dialog.set_target([&](CClavis const& key) {
        keys.push_back(key);
        dialog.Display(coast);
        EXPECT_EQ(dialog.retrieve(), ramp);
    });
    dialog.Display(ramp);
    dialog.OnBnClickedOk();
    EXPECT_EQ(keys, std::vector<CClavis>{ramp});
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
}

TEST_F(PentadDialog, TheTargetMayDestroyIt) {
    auto doomed = std::make_unique<CPentadDialog>(&frame);
    doomed->set_target([&](CClavis const& key) {
        doomed.reset();
        keys.push_back(key);
    });
    doomed->Display(ramp);
    doomed->OnBnClickedOk();
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(keys, std::vector<CClavis>{ramp});
}

TEST_F(PentadDialog, GoesWithItsFrame) {
    dialog.Display(ramp);
    frame.DestroyWindow();
    EXPECT_EQ(dialog.GetSafeHwnd(), nullptr);
    dialog.Display(coast);
    EXPECT_EQ(dialog.retrieve(), coast);
    EXPECT_EQ(dialog.GetParent(), nullptr);
}

TEST_F(PentadDialog, APresenterFindsItReadyAndHearsOfTheKey) {
    ViewLog view;
    CDialog3d::SetPresenter([&](CDialog3d& shown) { view.Attach(*shown.GetDlgItem(3000)); });
    dialog.Display(ramp);
    CDialog3d::SetPresenter({});
    EXPECT_FALSE(view.Take().empty());
    dialog.OnBnClickedOk();
    EXPECT_EQ(view.Take().back(), "destroyed");
}

} // namespace
