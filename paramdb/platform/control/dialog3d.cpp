#include <paramdb/platform/control/dialog3d.h>

#include <utility>

namespace {

CDialog3d::Presenter& ThePresenter() {
    static auto& presenter = *new CDialog3d::Presenter;
    return presenter;
}

} // namespace

void CDialog3d::DisplayDialog() {
    Create();
    ShowWindow(true);
    if (ThePresenter())
        ThePresenter()(*this);
}

CDialog3d::Presenter CDialog3d::SetPresenter(Presenter presenter) {
    return std::exchange(ThePresenter(), std::move(presenter));
}
