#pragma once

#include "lineobserver.h"

#include <QElapsedTimer>

#include <functional>

namespace frserver {

/// Shows that the line is at work: at most some ten times a second, "written" or "read".
class LineTick : public devices::LineObserver
{
public:
    explicit LineTick(const std::function<void(const char*)>& tell)
        : m_tell(tell)
    {
    }

    void opened() override { }
    void sent(const QByteArray&) override { tick("written"); }
    void received(const QByteArray&) override { tick("read"); }
    void failed(const QString&) override { }

private:
    void tick(const char* what)
    {
        constexpr qint64 pauseMs = 100;
        if (m_last.isValid() && !m_last.hasExpired(pauseMs))
            return;
        m_last.start();
        m_tell(what);
    }

    std::function<void(const char*)> m_tell;
    QElapsedTimer m_last;
};

} // namespace frserver
