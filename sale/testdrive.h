#pragma once

#include <QJsonValue>
#include <QString>

namespace sale {

/// Fiscal drives for tests have numbers of their own: what they sign is no fiscal document.
inline bool isTestDrive(const QString& driveNumber)
{
    return driveNumber.startsWith(QStringLiteral("9999"));
}

/// Null for a number that is not known.
inline QJsonValue testDriveJson(const QString& driveNumber)
{
    return driveNumber.isEmpty() ? QJsonValue() : QJsonValue(isTestDrive(driveNumber));
}

} // namespace sale
