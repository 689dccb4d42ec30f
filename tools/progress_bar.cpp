#include "tools/progress_bar.h"

#include <paramdb/platform/core/utf8.h>
#include <paramdb/query/param_instance.h>

#include "tools/quiet.h"
#include "tools/terminal.h"

#include <algorithm>
#include <iostream>
#include <mutex>
#include <streambuf>

namespace paramdb::tools {
namespace {

constexpr std::chrono::milliseconds Delay(500);
constexpr std::size_t BarWidth = 40;
constexpr std::size_t StepWidth = 6;

// "derive [##########..............................]  25 %"
std::string BarText(wchar_t const* step, std::size_t done, std::size_t total) {
    double const share =
        total == 0 ? 0 : static_cast<double>(std::min(done, total)) / static_cast<double>(total);
    auto const filled = static_cast<std::size_t>(share * static_cast<double>(BarWidth));
    std::string const percent = std::to_string(static_cast<int>(share * 100));
    std::string text = ToUtf8(step);
    text.append(StepWidth - std::min(StepWidth, text.size()), ' ');
    text.append(" [").append(filled, '#').append(BarWidth - filled, '.').append("] ");
    text.append(3 - std::min<std::size_t>(3, percent.size()), ' ');
    return text.append(percent).append(" %");
}

} // namespace

// Passes everything on, behind the removal of the bar.
class ProgressBar::Buffer : public std::streambuf {
public:
    explicit Buffer(std::streambuf& target) : m_target(target) {}

    std::streambuf& target() const { return m_target; }

    void Draw(std::string const& bar) {
        std::scoped_lock const lock(m_mutex);
        if (!m_is_at_line_start || bar == m_bar)
            return;
        Erase();
        Put(bar);
        m_bar = bar;
        m_target.pubsync();
    }

    void Remove() {
        std::scoped_lock const lock(m_mutex);
        Erase();
        m_target.pubsync();
    }

protected:
    int_type overflow(int_type character) override {
        if (traits_type::eq_int_type(character, traits_type::eof()))
            return traits_type::not_eof(character);
        char const byte = traits_type::to_char_type(character);
        return xsputn(&byte, 1) == 1 ? character : traits_type::eof();
    }

    std::streamsize xsputn(char const* bytes, std::streamsize count) override {
        if (count <= 0)
            return 0;
        std::scoped_lock const lock(m_mutex);
        Erase();
        m_is_at_line_start = bytes[count - 1] == '\n';
        return m_target.sputn(bytes, count);
    }

    int sync() override {
        std::scoped_lock const lock(m_mutex);
        return m_target.pubsync();
    }

private:
    void Put(std::string const& text) {
        m_target.sputn(text.data(), static_cast<std::streamsize>(text.size()));
    }

    // Blanks, since not every terminal knows how to clear a line.
    void Erase() {
        if (m_bar.empty())
            return;
        Put("\r");
        Put(std::string(m_bar.size(), ' '));
        Put("\r");
        m_bar.clear();
    }

    std::streambuf& m_target;
    std::mutex m_mutex;
    std::string m_bar; // on the screen
    bool m_is_at_line_start = true;
};

ProgressBar::ProgressBar(std::ostream& stream, std::chrono::milliseconds delay)
    : m_stream(stream), m_begin(std::chrono::steady_clock::now() + delay),
      m_buffer(std::make_unique<Buffer>(*stream.rdbuf())) {
    m_stream.rdbuf(m_buffer.get());
}

ProgressBar::~ProgressBar() {
    m_buffer->Remove();
    m_stream.rdbuf(&m_buffer->target());
}

void ProgressBar::Show(wchar_t const* step, std::size_t done, std::size_t total) {
    if (!IsQuiet(m_stream) && std::chrono::steady_clock::now() >= m_begin)
        m_buffer->Draw(BarText(step, done, total));
}

LoadProgressBar::LoadProgressBar(std::ostream& err) {
    if (err.rdbuf() != std::cerr.rdbuf() || !IsErrorTerminal())
        return;
    m_bar.emplace(err, Delay);
    CQtParamInstance().SetLoadProgress(
        [this](wchar_t const* step, std::size_t done, std::size_t total) { m_bar->Show(step, done, total); });
}

LoadProgressBar::~LoadProgressBar() {
    if (m_bar)
        CQtParamInstance().SetLoadProgress({});
}

} // namespace paramdb::tools
