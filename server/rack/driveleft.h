#pragma once

#include "configuration/drainlimit.h"

#include <QDate>
#include <QJsonObject>

#include <optional>

namespace frserver {

/// What is left of a register's fiscal drive, as far as the register tells.
struct DriveLeft
{
    /// The condition is that of RegisterAgent::view.
    static DriveLeft of(const QJsonObject& condition, int capacity, const QDate& today);

    /// "driveDays" or "driveDocuments" when less is left than that; empty otherwise, and for what is not
    /// known.
    QString shortOf(const DrainLimit& limit) const;
    /// The more, the longer the drive will last: by documents, or by days when those end first.
    qint64 rank() const;

    std::optional<int> days;
    std::optional<int> documents;
};

} // namespace frserver
