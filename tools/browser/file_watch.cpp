#include "tools/browser/file_watch.h"

#include <QtCore/QFileInfo>
#include <algorithm>

namespace paramdb::browser {

FileWatch::FileWatch(std::function<void()> on_change, std::chrono::milliseconds rest)
    : m_on_change(std::move(on_change)) {
    m_rest.setSingleShot(true);
    m_rest.setInterval(rest);
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, [this] { m_rest.start(); });
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_rest.isActive()) // a folder may never come to rest
            m_rest.start();
    });
    connect(&m_rest, &QTimer::timeout, this, [this] { Look(); });
}

void FileWatch::SetFiles(QStringList const& files) {
    m_rest.stop();
    if (QStringList const watched = m_watcher.files() + m_watcher.directories(); !watched.isEmpty())
        m_watcher.removePaths(watched);
    m_files.clear();
    for (QString const& file : files)
        if (QFileInfo const info(file); info.isFile() || !info.exists())
            m_files += file;
    m_states = States();
    WatchAll();
}

std::vector<FileWatch::State> FileWatch::States() const {
    std::vector<State> states;
    for (QString const& file : m_files) {
        QFileInfo const info(file);
        states.push_back({info.exists(), info.size(), info.lastModified()});
    }
    return states;
}

// The watcher drops a file that is removed or replaced.
void FileWatch::WatchAll() {
    QStringList const watched = m_watcher.files() + m_watcher.directories();
    for (QString const& file : m_files) {
        QFileInfo const info(file);
        for (QString const& path : {info.absoluteFilePath(), info.absolutePath()})
            if (QFileInfo::exists(path) && !watched.contains(path))
                m_watcher.addPath(path);
    }
}

void FileWatch::Look() {
    WatchAll();
    std::vector<State> states = States();
    bool const all_there =
        std::all_of(states.begin(), states.end(), [](State const& state) { return state.is_there; });
    if (!all_there || states == m_states)
        return;
    m_states = std::move(states);
    m_on_change();
}

} // namespace paramdb::browser
