// A bar on the terminal that shows how far a load has come.
//
// While it lives it stands between a stream and its buffer, so that a message written meanwhile takes the
// place of the bar, which comes again on the line below. Messages may come from any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>

namespace paramdb::tools {

class ProgressBar {
public:
    // Nothing is shown before the delay is over, and on a quiet stream (quiet.h) nothing at all. The stream
    // must outlive this object.
    ProgressBar(std::ostream& stream, std::chrono::milliseconds delay);
    ProgressBar(ProgressBar const&) = delete;
    ProgressBar& operator=(ProgressBar const&) = delete;
    // Removes the bar from the screen.
    ~ProgressBar();

    void Show(wchar_t const* step, std::size_t done, std::size_t total);

private:
    class Buffer;

    std::ostream& m_stream;
    std::chrono::steady_clock::time_point m_begin;
    std::unique_ptr<Buffer> m_buffer;
};

// Shows the loads of the process-wide parameter data on a stream, if that is the terminal and they take
// longer than half a second.
class LoadProgressBar {
public:
    explicit LoadProgressBar(std::ostream& err);
    LoadProgressBar(LoadProgressBar const&) = delete;
    LoadProgressBar& operator=(LoadProgressBar const&) = delete;
    ~LoadProgressBar();

private:
    std::optional<ProgressBar> m_bar;
};

} // namespace paramdb::tools
