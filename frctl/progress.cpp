#include "progress.h"

#include "frctltr.h"
#include "postgres/blockedsignals.h"

#include <QElapsedTimer>
#include <QList>

#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <thread>

namespace frctl {

namespace {

constexpr int stepMs = 250;

struct Work
{
    QString text;
    int patienceMs;
    QElapsedTimer since;
};

/// The line is drawn by a thread of its own: whoever works neither knows nor cares.
class ProgressLine
{
public:
    static ProgressLine& instance()
    {
        static ProgressLine line;
        return line;
    }

    void begin(const Work& work)
    {
        const std::scoped_lock lock(m_mutex);
        m_works.append(work);
        m_works.last().since.start();
        if (!m_thread.joinable()) {
            const sale::BlockedSignals blocked;
            m_thread = std::jthread([this](const std::stop_token& stop) { draw(stop); });
        }
        m_change.notify_one();
    }

    void end()
    {
        const std::scoped_lock lock(m_mutex);
        m_works.removeLast();
        erase();
    }

    void hide()
    {
        const std::scoped_lock lock(m_mutex);
        erase();
        m_sinceHidden.start();
    }

private:
    void erase()
    {
        // Back to the start of the line, and blank to its end.
        if (m_isShown)
            write("\r\033[K");
        m_isShown = false;
    }

    void draw(const std::stop_token& stop)
    {
        std::unique_lock lock(m_mutex);
        while (!stop.stop_requested()) {
            drawLast();
            if (m_works.isEmpty())
                m_change.wait(lock, stop, [this] { return !m_works.isEmpty(); });
            else
                m_change.wait_for(lock, stop, std::chrono::milliseconds(stepMs), [] { return false; });
        }
    }

    void drawLast()
    {
        // What it was hidden for may be about to be written.
        const bool isRoomWanted = m_sinceHidden.isValid() && m_sinceHidden.elapsed() < stepMs;
        if (isRoomWanted || m_works.isEmpty() || m_works.last().since.elapsed() < m_works.last().patienceMs)
            return;
        const Work& work = m_works.last();
        write(QStringLiteral("\r\033[K")
                  .append(tr("%1 ... %2 s").arg(work.text).arg(work.since.elapsed() / 1000))
                  .toUtf8());
        m_isShown = true;
    }

    static void write(const QByteArray& bytes)
    {
        std::fputs(bytes.constData(), stderr);
        std::fflush(stderr);
    }

    std::mutex m_mutex;
    std::condition_variable_any m_change;
    QList<Work> m_works;
    bool m_isShown = false;
    QElapsedTimer m_sinceHidden;
    /// The last one, so that it ends before what it uses.
    std::jthread m_thread;
};

} // namespace

Progress::Progress(const QString& text, int patienceMs)
    : m_isWanted(isatty(STDERR_FILENO) != 0)
{
    if (m_isWanted)
        ProgressLine::instance().begin({text, patienceMs, {}});
}

Progress::~Progress()
{
    if (m_isWanted)
        ProgressLine::instance().end();
}

void hideProgress()
{
    if (isatty(STDERR_FILENO) != 0)
        ProgressLine::instance().hide();
}

} // namespace frctl
