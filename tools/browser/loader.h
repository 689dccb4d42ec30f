// Loads parameter files on a thread of its own, as `paramdb load` does, while the window stays alive.
//
//     Loader loader({.on_progress = ..., .on_end = ...}, sink);
//     loader.Start(files); // from here to on_end nobody but the loader may touch the store
//
// Files are read before anything is given up: where one of them cannot be read, or the version is refused,
// the store keeps the data of before. The callbacks run on the thread of the windows, from the event loop.
#pragma once

#include "tools/browser/message_sink.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>
#include <functional>
#include <thread>

namespace paramdb::browser {

enum class LoadEnd {
    Complete,   // the store has the new data
    Incomplete, // it has the new tables, but what is derived from them is missing or old
    Refused,    // the version was refused, nothing has changed
    Unreadable, // a file is at fault, nothing has changed
};

struct LoadOutcome {
    LoadEnd end = LoadEnd::Unreadable;
    double seconds = 0;
};

class Loader : public QObject {
public:
    struct Callbacks {
        // The step ("read" or "derive") and how much of it is done, in percent.
        std::function<void(QString const& step, int percent)> on_progress;
        std::function<void(LoadOutcome const& outcome)> on_end;
    };

    // The sink must outlive the loader.
    Loader(Callbacks callbacks, MessageSink& sink);
    Loader(Loader const&) = delete;
    Loader& operator=(Loader const&) = delete;
    ~Loader() override; // waits for the end of a load

    // Begins a load and returns; there must be at least one file and no load under way.
    void Start(QStringList const& files);
    [[nodiscard]] bool IsLoading() const noexcept { return m_thread.joinable(); }

private:
    [[nodiscard]] LoadOutcome Run(std::vector<std::string> const& files);
    void End(LoadOutcome const& outcome);

    Callbacks m_callbacks;
    MessageSink& m_sink;
    std::thread m_thread;
};

} // namespace paramdb::browser
