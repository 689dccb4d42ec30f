// Tells when files change on disk, once for a burst of changes.
//
//     FileWatch watch([&] { Reload(); });
//     watch.SetFiles(files); // before they are read, so that no change in between is missed
//
// Folders are watched beside the files, since many editors write a new file and move it into the place of the
// old one. A change counts when the files have been left alone for a moment and every one of them is there.
#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QStringList>
#include <QtCore/QTimer>
#include <chrono>
#include <functional>
#include <vector>

namespace paramdb::browser {

class FileWatch : public QObject {
public:
    explicit FileWatch(std::function<void()> on_change,
                       std::chrono::milliseconds rest = std::chrono::milliseconds(300));

    // Watches these files, and no longer those of before. What they are like now counts as known. Pipes and
    // the like are left out: they cannot be read twice.
    void SetFiles(QStringList const& files);

private:
    struct State {
        bool is_there = false;
        qint64 size = 0;
        QDateTime time;
        friend bool operator==(State const&, State const&) = default;
    };
    [[nodiscard]] std::vector<State> States() const;
    void WatchAll();
    void Look();

    std::function<void()> m_on_change;
    QFileSystemWatcher m_watcher;
    QTimer m_rest;
    QStringList m_files;
    std::vector<State> m_states;
};

} // namespace paramdb::browser
