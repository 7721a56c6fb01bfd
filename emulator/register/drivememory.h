#pragma once

#include <QDate>
#include <QString>

#include <optional>

namespace emulator {

/// What a fiscal drive keeps beside its documents.
struct DriveMemory
{
    QString number;
    QDate expiry;
    int phase = 0;
    /// Documents that there is room for; no value for as many as are wanted.
    std::optional<qint64> documentsLeft;
    qsizetype documents = 0;
    /// How many of its documents the OFD has got.
    qsizetype sent = 0;
};

} // namespace emulator
