#pragma once

#include "configuration/registersettings.h"
#include "fninfo.h"
#include "registerline.h"

#include <QDateTime>
#include <QJsonObject>

#include <optional>

class AbstractFrDriver;

namespace frserver {

/// What a register tells of itself.
struct RegisterCondition
{
    /// Asks for all of it (HEX: some twenty exchanges, XML: five). What the register refuses to tell is
    /// empty. Throws the driver's exceptions when the line fails.
    static RegisterCondition read(AbstractFrDriver& driver, const sale::RegisterLine& line);

    /// "shiftOpen", "drive", "driveUntil", "driveWarnings", "lastDocument", "unsent", "unsentSince",
    /// "unsentNotices", "clockDifference" in seconds (the register's ahead). What is not known is null.
    QJsonObject toJson(const QDateTime& localNow) const;
    /// A moment at which the shift was open already, by the computer's clock: that of the drive's last
    /// document, where it is told.
    QDateTime seenOpen(const QDateTime& localNow) const;

    std::optional<bool> isShiftOpen = {};
    FnInfo drive = {};
    QDateTime time = {};
    /// Documents that the OFD has not got; negative when that is not told.
    qint64 unsent = -1;
};

/// "model", "serial", "firmware", "drive", "testDrive", "taxSystems" (their names in receipts; null where the
/// register does not tell).
QJsonObject identityJson(AbstractFrDriver& driver, const QString& drive);

} // namespace frserver
