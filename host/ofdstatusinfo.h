#pragma once

#include "frhost_export.h"

#include <QDateTime>
#include <QString>

/// State of the exchange with the operator of fiscal data (OFD).
struct FRHOST_EXPORT OfdStatusInfo
{
    /// 1 while the exchange works, 0 otherwise.
    quint8 isConnected = 0;
    /// Time of the first document that was not sent yet.
    QDateTime firstUnsentDateTime;
    /// Number of that document, -1 for none. The XML driver puts the length of the queue here.
    int firstUnsentNumber = -1;
    /// Empty on this family.
    QString message;

    /// One line for a log.
    QString toString() const;
};
