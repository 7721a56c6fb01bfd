#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace frserver {

/// An end of a document that a webhook is told of.
struct Delivery
{
    /// Counted on for ever: the same at each attempt.
    qint64 number = 0;
    QString documentId;
    /// JSON.
    QByteArray body;
    QDateTime created;
    int attempts = 0;
    /// Not before.
    QDateTime due;
};

} // namespace frserver
