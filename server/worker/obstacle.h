#pragma once

#include "errorkind.h"

#include <QJsonObject>
#include <QString>

namespace frserver {

/// What keeps a register from work, as the service is told: see Waiting::reason.
struct Obstacle
{
    /// To be called where an exception is being handled.
    static Obstacle current();
    QJsonObject toJson() const;

    QString reason;
    QString text;
};

/// The reason of a failure that a library of ours tells of.
QString heldReason(sale::ErrorKind kind, const QString& exceptionName);

} // namespace frserver
