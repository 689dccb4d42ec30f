// A window for a dialog, laid out by its template.
//
//     CPentadDialog dialog;
//     dialog.Display(key);                            // a dialog on the screen has its window
//     auto* view = new paramdb::qt::DialogView(dialog); // or have Views make it, see views.h
//     view->show();
//
// The places are those of the template, counted in the letters of the font; when the frame is made larger the
// list grows and the buttons keep to their corner. Buttons, the return and the escape key and the frame's own
// button go to the dialog, which decides; the view goes away with the dialog's window and deletes itself. A
// dialog whose view is deleted by somebody else is closed, with no word to it.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/dialog.h>
#include <paramdb/views/qt/list_view.h>

#include <QtCore/QPoint>
#include <QtWidgets/QDialog>
#include <vector>

class QAbstractButton;

namespace paramdb::qt {

class PARAMDB_VIEWS_API DialogView : public QDialog, private CWndView {
public:
    explicit DialogView(CDialog& dialog, QWidget* parent = nullptr);
    ~DialogView() override;

    // The dialog; null once it has gone.
    [[nodiscard]] CDialog* GetDialog() const noexcept { return m_dialog; }
    // The button or the list of an id of the template; null on a miss.
    [[nodiscard]] QAbstractButton* Button(int id) const;
    [[nodiscard]] ListView* List(int id) const;

    // The return and the escape key and the frame's button. The dialog closes itself if it wants to.
    void accept() override { Command(IDOK); }
    void reject() override { Command(IDCANCEL); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    struct Item {
        CDialogItem description;
        QWidget* widget;
        QRect place; // at the size of the template
    };

    void OnDestroyed() override { Leave(); }
    void OnControlGone() override;
    void OnVisibilityChanged() override { setVisible(m_dialog->IsWindowVisible()); }
    void OnEnabledChanged() override { setEnabled(m_dialog->IsWindowEnabled()); }
    void OnTitleChanged() override;

    void Build();
    void Arrange();
    void Command(int id);
    void Leave();

    CDialog* m_dialog;
    std::vector<Item> m_items;
    QSize m_first_size;
};

} // namespace paramdb::qt
