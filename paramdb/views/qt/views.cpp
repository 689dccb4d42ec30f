#include <paramdb/views/qt/dialog_view.h>
#include <paramdb/views/qt/theme.h>
#include <paramdb/views/qt/views.h>

#include <QtWidgets/QApplication>
#include <utility>

namespace paramdb::qt {

namespace {

// Shows a dialog, in the window that it has or in a new one before the active one.
void Present(CDialog3d& dialog) {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        auto* const view = dynamic_cast<DialogView*>(window);
        if (view && view->GetDialog() == &dialog) {
            view->show();
            view->raise();
            view->activateWindow();
            return;
        }
    }
    auto* const view = new DialogView(dialog, QApplication::activeWindow());
    view->show();
}

} // namespace

Views::Views() {
    InstallTheme();
    m_presenter_before = CDialog3d::SetPresenter(Present);
}

Views::~Views() {
    CDialog3d::SetPresenter(std::move(m_presenter_before));
    UninstallTheme();
}

} // namespace paramdb::qt
