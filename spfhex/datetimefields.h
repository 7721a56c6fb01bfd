#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace spfhex {

/// The device's form of a date: two digits each of day, month and year.
inline QString dateFormat()
{
    return QStringLiteral("ddMMyy");
}

/// The device's form of a time.
inline QString timeFormat()
{
    return QStringLiteral("HHmmss");
}

/// Date and time out of the first two fields of an answer, in the right century. Fields that do not parse
/// give an invalid one; throws FrCommandException for fewer than two fields.
QDateTime createDateTime(const QList<QByteArray>& fields);

} // namespace spfhex
