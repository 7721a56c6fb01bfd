#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QTimer>

/// A script in the place of the process that draws.
inline QString drawScript(const QString& fileName, const QByteArray& lines)
{
    QFile file(fileName);
    if (file.open(QIODevice::WriteOnly))
        file.write("#!/bin/sh\n" + lines + "\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return fileName;
}

/// Whether it comes true as events are taken.
template <typename Condition>
bool becomes(const Condition& condition)
{
    constexpr int enough = 20'000;
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
