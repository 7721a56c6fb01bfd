#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

/// Whether it comes true as events are taken.
template <typename Condition>
bool becomes(const Condition& condition)
{
    const QDeadlineTimer deadline(60'000);
    // So that there are events, whatever it depends on.
    QTimer look;
    look.start(1);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
