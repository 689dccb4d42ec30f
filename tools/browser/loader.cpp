#include "tools/browser/loader.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>
#include <paramdb/storage/parameter_table_set.h>

#include "tools/messages.h"
#include "tools/sources.h"

#include <QtCore/QMetaObject>
#include <algorithm>
#include <chrono>
#include <exception>
#include <sstream>

namespace paramdb::browser {
namespace {

constexpr int Category = 8; // that of the loading messages

// What the reader of the files says, line by line, as messages like any other.
void TellFaults(std::string const& text) {
    static constexpr std::string_view name = "paramdb: ";
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name))
            line.erase(0, name.size());
        PrWin::Output(Category, tools::RefusalStyle, FromUtf8(line) + L'\n');
    }
}

int Percent(std::size_t done, std::size_t total) {
    if (total == 0)
        return 0;
    return static_cast<int>(100.0 * static_cast<double>(std::min(done, total)) / static_cast<double>(total));
}

} // namespace

Loader::Loader(Callbacks callbacks, MessageSink& sink) : m_callbacks(std::move(callbacks)), m_sink(sink) {}

Loader::~Loader() {
    if (m_thread.joinable())
        m_thread.join();
}

void Loader::Start(QStringList const& files) {
    std::vector<std::string> names;
    for (QString const& file : files)
        names.push_back(file.toStdString());
    m_thread = std::thread([this, names] {
        LoadOutcome const outcome = Run(names);
        QMetaObject::invokeMethod(
            this, [this, outcome] { End(outcome); }, Qt::QueuedConnection);
    });
}

LoadOutcome Loader::Run(std::vector<std::string> const& files) {
    auto const start = std::chrono::steady_clock::now();
    CQtParamInstance parameters;
    LoadOutcome outcome;
    try {
        std::ostringstream faults;
        bool const is_read = tools::ReadSources(files, faults).has_value();
        TellFaults(faults.str());
        if (is_read) {
            ParamDb::CParameterTableSet::TableSet().clear(); // it would be read in place of the lake
            parameters.SetLoadProgress([this](wchar_t const* step, std::size_t done, std::size_t total) {
                QMetaObject::invokeMethod(
                    this,
                    [this, word = QString::fromWCharArray(step), percent = Percent(done, total)] {
                        m_callbacks.on_progress(word, percent);
                    },
                    Qt::QueuedConnection);
            });
            auto const refusals = m_sink.CountOfStyle(tools::RefusalStyle);
            bool const complete = parameters.ReadTablesFromCandidateLake();
            bool const refused = m_sink.CountOfStyle(tools::RefusalStyle) > refusals;
            outcome.end = complete ? LoadEnd::Complete : refused ? LoadEnd::Refused : LoadEnd::Incomplete;
        }
    } catch (std::exception const& fault) { // such as no memory left: some of the tables may be new
        PrWin::Output(Category, tools::FaultStyle, FromUtf8(fault.what()) + L'\n');
        outcome.end = LoadEnd::Incomplete;
    }
    parameters.SetLoadProgress({});
    outcome.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return outcome;
}

void Loader::End(LoadOutcome const& outcome) {
    m_thread.join();
    m_sink.Flush();
    m_callbacks.on_end(outcome);
}

} // namespace paramdb::browser
