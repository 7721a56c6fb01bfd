#include "rack/driveleft.h"

#include <algorithm>

namespace frserver {

namespace {

// Bits of the drive's own warnings.
constexpr int changeAtOnce = 1;
constexpr int memoryFull = 4;
/// The first one comes so many days before the end, the other one when a tenth of the memory is left.
constexpr int daysAtOnce = 3;
constexpr int memoryShare = 10;
/// A drive's days and documents end together when it makes about so many a day.
constexpr qint64 documentsOfADay = 500;

} // namespace

DriveLeft DriveLeft::of(const QJsonObject& condition, int capacity, const QDate& today)
{
    DriveLeft left;
    const int warnings = condition.value(QStringLiteral("driveWarnings")).toInt();
    const QDate until
        = QDate::fromString(condition.value(QStringLiteral("driveUntil")).toString(), Qt::ISODate);
    if (until.isValid())
        left.days = static_cast<int>(std::max<qint64>(0, today.daysTo(until)));
    if ((warnings & changeAtOnce) != 0)
        left.days = std::min(left.days.value_or(daysAtOnce), daysAtOnce);
    const QJsonValue last = condition.value(QStringLiteral("lastDocument"));
    if (last.isDouble())
        left.documents = static_cast<int>(std::max<qint64>(0, capacity - last.toInteger()));
    if ((warnings & memoryFull) != 0)
        left.documents = std::min(left.documents.value_or(capacity), capacity / memoryShare);
    return left;
}

QString DriveLeft::shortOf(const DrainLimit& limit) const
{
    if (limit.days > 0 && days && *days < limit.days)
        return QStringLiteral("driveDays");
    return limit.documents > 0 && documents && *documents < limit.documents ? QStringLiteral("driveDocuments")
                                                                            : QString();
}

qint64 DriveLeft::rank() const
{
    return std::min(days.value_or(0) * documentsOfADay, qint64{documents.value_or(0)});
}

} // namespace frserver
