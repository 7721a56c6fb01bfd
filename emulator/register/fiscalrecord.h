#pragma once

#include <QDateTime>
#include <QString>

namespace emulator {

/// Kinds of document that a fiscal drive stores; the numbers are those of the fiscal data format.
enum class FiscalType {
    Registration = 1,
    ShiftOpening = 2,
    Receipt = 3,
    ShiftClosing = 5,
    DriveClosing = 6,
    RegistrationChange = 11,
    AccountingReport = 21
};

/// One stored document.
struct FiscalRecord
{
    quint32 number = 0;
    FiscalType type = FiscalType::Receipt;
    QDateTime dateTime;
    /// Ten decimal digits.
    QString sign;
    /// All that the document says, as the fiscal drive keeps it (see tlv.h); with the youngest documents
    /// alone.
    QByteArray tags;
};

} // namespace emulator
