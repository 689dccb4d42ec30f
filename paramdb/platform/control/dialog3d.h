// A dialog that is shown beside the others, and the place where views of dialogs come from.
#pragma once

#include <paramdb/platform/core/export.h>
#include <paramdb/platform/framework/dialog.h>

#include <functional>

class PARAMDB_API CDialog3d : public CDialog {
public:
    using CDialog::CDialog;

    // Makes the dialog if it isn't there, shows it, and has the presenter make it visible.
    void DisplayDialog();

    // Who makes the view of a dialog that is displayed, with its controls ready. One for the whole process,
    // none at first; returns the one before.
    using Presenter = std::function<void(CDialog3d& dialog)>;
    static Presenter SetPresenter(Presenter presenter);
};
