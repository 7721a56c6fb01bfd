#pragma once

#include <QDate>
#include <QString>

namespace emulator {

/// A date as HEX and its settings have it, "ddMMyy"; invalid when it is none.
inline QDate shortDate(QString text)
{
    // With its century, as 1900 had no 29 February.
    return QDate::fromString(text.insert(4, QStringLiteral("20")), QStringLiteral("ddMMyyyy"));
}

} // namespace emulator
