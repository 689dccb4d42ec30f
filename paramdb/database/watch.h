// A clock beside a connection: where the answer to a statement does not come in time, it shuts the socket
// down, and whoever waits for it goes on with a fault. A server that is stopped or cut off without a word
// would hold its client for ever otherwise.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <thread>

namespace paramdb::database {

class Watch {
public:
    Watch(std::intptr_t socket, std::chrono::milliseconds patience);
    Watch(Watch const&) = delete;
    Watch& operator=(Watch const&) = delete;
    ~Watch();

    void Begin();
    void End() noexcept;
    // Whether the socket has been shut down.
    bool HasFired() const;

private:
    void Run();

    std::intptr_t m_socket;
    std::chrono::milliseconds m_patience;
    mutable std::mutex m_mutex;
    std::condition_variable m_change;
    std::chrono::steady_clock::time_point m_deadline;
    int m_waiting = 0; // calls within one another
    bool m_has_fired = false;
    bool m_is_over = false;
    std::thread m_thread; // last: it uses the others
};

} // namespace paramdb::database
