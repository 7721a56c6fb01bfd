#pragma once

#include "line/exchange.h"
#include "trace/frame.h"

#include <QDateTime>
#include <QList>

namespace emulator::panel {

/// A frame as it went over the line.
struct LoggedFrame
{
    qint64 number = 0;
    trace::Frame frame;
};

/// One request, what became of it, and all that went over the line until the next one.
struct LoggedExchange
{
    struct Warning
    {
        QString kind;
        QString text;
    };

    int number = 0;
    /// By the register's clock.
    QDateTime dateTime;
    /// Without the bytes of the request, which stand in its frame.
    Exchange exchange;
    /// Number of the last document of the fiscal drive before and after it.
    quint32 documentBefore = 0;
    quint32 documentAfter = 0;
    /// Fiscal sign of the last one.
    QString sign;
    /// A reset and a restore begin another life of the register.
    int life = 0;
    QList<Warning> warnings;
    QList<LoggedFrame> frames;

    /// Its host was told an error, for whatever reason.
    bool isRefused() const { return !exchange.error.isEmpty(); }
    bool hasStored() const { return documentAfter > documentBefore; }
};

} // namespace emulator::panel
