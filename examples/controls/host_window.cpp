#include "host_window.h"

#include <paramdb/query/param_instance.h>
#include <paramdb/views/qt/qt_text.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

using paramdb::qt::ToQString;

LRESULT HostFrame::OnMessage(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_COMMAND || message == WM_PENTADCTRL_SELCHANGED)
        m_on_change();
    return CWnd::OnMessage(message, first, second);
}

HostWindow::HostWindow()
    : m_frame([this] { ShowState(); }), m_dialog(&m_frame), m_combo_view(new paramdb::qt::ComboView(this)),
      m_check_list(new paramdb::qt::ListView(this)), m_grid_view(new paramdb::qt::ListView(this)),
      m_state(new QLabel(this)) {
    // The controls, as a host without any windows would use them.
    m_modes.Create(&m_frame, 1);
    m_modes.HideVirtualModes(true);
    m_modes.Fill(Clavis::qMode, -1, 0);
    m_parameters.Create(&m_frame, 2);
    m_parameters.Init(Clavis::qInstrParam);
    m_parameters.Fill({}, 0);
    m_grid.set_mask(0b101101); // all but instruments and parameters
    FillGrid();
    m_grid.Create(&m_frame, 3); // fills it
    m_dialog.set_target([this](CClavis const& key) {
        m_key = key;
        ShowState();
    });

    // Their views.
    m_combo_view->setAccessibleName(ToQString(Clavis::ElementName(Clavis::qMode, 1)));
    m_combo_view->SetCombo(&m_modes);
    m_check_list->SetList(&m_parameters);
    m_grid_view->SetList(&m_grid);

    auto* const edit = new QPushButton(QStringLiteral("Edit key..."), this);
    connect(edit, &QPushButton::clicked, this, [this] { EditKey(); });
    auto* const top = new QHBoxLayout;
    top->addWidget(m_combo_view, 1);
    top->addWidget(edit);
    auto* const lists = new QHBoxLayout;
    lists->addWidget(m_check_list, 2);
    lists->addWidget(m_grid_view, 3);
    auto* const column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addLayout(lists, 1);
    column->addWidget(m_state);
    setWindowTitle(QStringLiteral("paramdb controls"));
    ShowState();
}

void HostWindow::FillGrid() {
    CQtParamInstance const parameters;
    std::set<std::pair<int, CString>> lists[Clavis::ElementCount];
    for (unsigned int element = 0; element < Clavis::ElementCount; ++element) {
        if (element == Clavis::qInstrParam)
            continue;
        for (auto const& [id, name] : parameters.IdNameMap(element))
            lists[element].emplace(id[0], CString(static_cast<wchar_t const*>(name)));
    }
    m_grid.send_pentad_list(lists);
}

paramdb::qt::DialogView* HostWindow::EditKey() {
    m_dialog.Display(m_key);
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        auto* const view = dynamic_cast<paramdb::qt::DialogView*>(window);
        if (view && view->GetDialog() == &m_dialog)
            return view;
    }
    return nullptr;
}

void HostWindow::ShowState() {
    QString const key = QStringLiteral("Key %1, %2, %3, %4, %5, %6");
    m_state->setText(key.arg(m_key[0]).arg(m_key[1]).arg(m_key[2]).arg(m_key[3]).arg(m_key[4]).arg(m_key[5]) +
                     QStringLiteral("   Mode %1").arg(m_modes.Retrieve()));
}
