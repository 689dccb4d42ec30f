#include <paramdb/database/host_system.h>
#include <paramdb/database/watch.h>

namespace paramdb::database {

Watch::Watch(std::intptr_t socket, std::chrono::milliseconds patience)
    : m_socket(socket), m_patience(patience), m_thread([this] { Run(); }) {}

Watch::~Watch() {
    {
        std::lock_guard const lock(m_mutex);
        m_is_over = true;
    }
    m_change.notify_one();
    m_thread.join();
}

void Watch::Begin() {
    std::lock_guard const lock(m_mutex);
    if (m_waiting++ > 0)
        return;
    m_deadline = std::chrono::steady_clock::now() + m_patience;
    m_change.notify_one();
}

void Watch::End() noexcept {
    std::lock_guard const lock(m_mutex);
    --m_waiting;
}

bool Watch::HasFired() const {
    std::lock_guard const lock(m_mutex);
    return m_has_fired;
}

void Watch::Run() {
    std::unique_lock lock(m_mutex);
    while (!m_is_over) {
        if (m_waiting == 0) {
            // A short statement is over before this thread would look: it sleeps on and looks again.
            m_change.wait(lock);
        } else if (m_change.wait_until(lock, m_deadline) == std::cv_status::timeout && m_waiting > 0 &&
                   std::chrono::steady_clock::now() >= m_deadline) {
            m_has_fired = true;
            ShutDownSocket(m_socket);
            return;
        }
    }
}

} // namespace paramdb::database
