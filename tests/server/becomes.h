#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

/// Whether it comes true as events are taken.
template <typename Condition>
bool becomes(const Condition& condition)
{
    constexpr int enough = 60'000;
    const QDeadlineTimer deadline(enough);
    // So that there is an event at its end.
    QTimer::singleShot(enough, [] {});
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}
