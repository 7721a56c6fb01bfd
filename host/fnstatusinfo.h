#pragma once

#include "frhost_export.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

/// State of the fiscal drive.
struct FRHOST_EXPORT FnStatusInfo
{
    /// Number of the last fiscal document: what tells whether a receipt was issued.
    quint32 lastFdNumber = 0;
    /// Bits: 0 configured, 1 fiscal mode open, 2 fiscal mode closed, 3 data transferred.
    quint8 lifePhase = 0;
    quint8 currentDocType = 0;
    /// Bits: 0 change at once, 1 resource ends, 2 memory full, 3 the OFD has been silent for too long.
    quint8 warningFlags = 0;
    /// The current document holds data.
    bool hasDocData = false;
    bool isShiftOpen = false;
    QDateTime lastFdDateTime;
    QString fnNumber;
    /// Not filled.
    quint32 reserved = 0;

    /// Lines for a service screen.
    QStringList getStrInfo() const;
};
