// Something that is to be done with the next event, once, however often it is asked for until then. A helper
// of the views.
#pragma once

#include <paramdb/platform/core/export.h>

#include <QtCore/QObject>
#include <functional>

namespace paramdb::qt {

class PARAMDB_VIEWS_API Soon : public QObject {
public:
    explicit Soon(std::function<void()> work);

    void Ask();
    [[nodiscard]] bool IsAsked() const noexcept { return m_asked; }
    // What was asked for is not needed any more.
    void Forget() noexcept { m_asked = false; }

    bool event(QEvent* event) override;

private:
    std::function<void()> m_work;
    bool m_asked = false;
};

} // namespace paramdb::qt
