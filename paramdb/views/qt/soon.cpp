#include <paramdb/views/qt/soon.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <utility>

namespace paramdb::qt {

Soon::Soon(std::function<void()> work) : m_work(std::move(work)) {}

void Soon::Ask() {
    if (!std::exchange(m_asked, true))
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

bool Soon::event(QEvent* event) {
    if (event->type() != QEvent::User)
        return QObject::event(event);
    if (std::exchange(m_asked, false))
        m_work();
    return true;
}

} // namespace paramdb::qt
