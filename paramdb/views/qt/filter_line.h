// The line in which a part of a name is typed to narrow a list, with a word on how many names are left.
#pragma once

#include <paramdb/platform/core/export.h>

#include <QtWidgets/QLineEdit>
#include <QtWidgets/QWidget>
#include <functional>

class QLabel;

namespace paramdb::qt {

class PARAMDB_VIEWS_API FilterLine : public QWidget {
public:
    // `on_key` gets what the line itself has no use for: arrows up and down, page keys, return, escape; true
    // if it did something.
    FilterLine(std::function<void(QString const& text)> on_text,
               std::function<bool(QKeyEvent const& key)> on_key, QWidget* parent);

    [[nodiscard]] QLineEdit& Edit() noexcept { return *m_edit; }
    // Shows how many of all are left; nothing for a count below 0.
    void ShowCount(int left, int all);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<bool(QKeyEvent const&)> m_on_key;
    QLineEdit* m_edit;
    QLabel* m_count;
};

} // namespace paramdb::qt
