#pragma once

#include "worker/exchangetimes.h"

#include "lineobserver.h"

#include <QElapsedTimer>

#include <functional>
#include <utility>

namespace frserver {

/// Shows that the line is at work: at most once a second, "written" or "read". Counts how long the register
/// takes to answer. Nothing goes over the line that may not.
class LineTick : public devices::LineObserver
{
public:
    /// What mayGo throws keeps a line closed, or a request back.
    explicit LineTick(const std::function<void(const char*)>& tell, const std::function<void()>& mayGo)
        : m_tell(tell)
        , m_mayGo(mayGo)
    {
    }

    void opening() override { m_mayGo(); }
    void opened() override { }
    void sent(const QByteArray&) override
    {
        m_mayGo();
        // The rest of a request, or one that is sent again, is no other one.
        if (!m_asked.isValid())
            m_asked.start();
        tick("written");
    }
    void received(const QByteArray&) override
    {
        if (m_asked.isValid()) {
            m_times.microseconds += m_asked.nsecsElapsed() / 1000;
            ++m_times.count;
            m_asked.invalidate();
        }
        tick("read");
    }
    void failed(const QString&) override { m_asked.invalidate(); }

    /// Those since they were taken last.
    ExchangeTimes takeTimes() { return std::exchange(m_times, {}); }

private:
    void tick(const char* what)
    {
        constexpr qint64 pauseMs = 1'000;
        if (m_last.isValid() && !m_last.hasExpired(pauseMs))
            return;
        m_last.start();
        m_tell(what);
    }

    std::function<void(const char*)> m_tell;
    std::function<void()> m_mayGo;
    QElapsedTimer m_last;
    QElapsedTimer m_asked;
    ExchangeTimes m_times;
};

} // namespace frserver
