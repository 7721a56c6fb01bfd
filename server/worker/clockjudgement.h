#pragma once

#include <QDateTime>

#include <optional>

namespace frserver {

/// What decides whether a register's clock may be set. Times are the register's local ones.
struct ClockCase
{
    QDateTime registerTime = {};
    QDateTime now = {};
    /// Of the drive; invalid when it has none.
    QDateTime lastDocument = {};
    bool isShiftOpen = false;
    /// The kernel says so of this computer's clock.
    bool isSynchronised = false;
};

/// Seconds by which the register is ahead.
qint64 clockDifference(const QDateTime& registerTime, const QDateTime& now);
/// Only with a closed shift, by a clock that can be trusted, by five minutes at most, and never to a time
/// before that of a document.
bool mayClockBeSet(const ClockCase& given);
/// Asks the kernel.
bool isComputerClockSynchronised();

} // namespace frserver
