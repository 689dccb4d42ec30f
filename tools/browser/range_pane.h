// The range grid over the keys for which results are measured, with a count of the keys that are selected.
//
// A column in which nothing is marked lets every value pass.
#pragma once

#include <paramdb/controls/pentad_range_select_ctrl.h>
#include <paramdb/views/qt/list_view.h>

#include "tools/browser/control_owner.h"

#include <QtCore/QTimer>
#include <QtWidgets/QWidget>
#include <vector>

class QLabel;

namespace paramdb::browser {

class RangePane : public QWidget {
public:
    explicit RangePane(QWidget* parent = nullptr);
    ~RangePane() override;

    void Clear();
    // Lists the values that occur in the keys of <TIpParamAndStore>, as soon as the pane can be seen: that
    // takes its time for many keys. Values that were selected before Clear are selected again.
    void Fill();

    [[nodiscard]] CPentadRangeSelectCtrl& Grid() noexcept { return m_grid; }
    [[nodiscard]] qt::ListView& View() noexcept { return *m_view; }
    // The keys that are selected, and how many there are.
    [[nodiscard]] std::size_t SelectedCount() const noexcept { return m_selected; }
    [[nodiscard]] std::size_t KeyCount() const noexcept { return m_keys.size(); }
    // "14 of 112 keys: 2 Test steps, 1 Channels"
    [[nodiscard]] QString CountText() const;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // Has the count follow the grid.
    class Watcher : public CWndView {
    public:
        explicit Watcher(QTimer& timer) : m_timer(timer) {}
        void OnItemChanged(int, int) override { Start(); }
        void OnContentChanged() override { Start(); }

    private:
        void Start() {
            if (!m_timer.isActive())
                m_timer.start();
        }

        QTimer& m_timer;
    };

    void FillNow();
    void CountKeys();
    void DeselectAll();

    ControlOwner m_owner;
    CPentadRangeSelectCtrl m_grid;
    std::vector<CClavis> m_keys;
    std::map<int, bool> m_picked[Clavis::ElementCount]; // before Clear
    std::size_t m_selected = 0;
    bool m_is_due = false; // to be filled when it is seen
    bool m_is_filled = false;
    QTimer m_timer;
    Watcher m_watcher;
    qt::ListView* m_view;
    QLabel* m_count;
};

} // namespace paramdb::browser
