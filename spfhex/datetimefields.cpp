#include "datetimefields.h"

#include "answers.h"
#include "frutils.h"

namespace spfhex {

QDateTime createDateTime(const QList<QByteArray>& fields)
{
    answer::atLeast(answer::MomentCount, fields);
    const QDate date = QDate::fromString(QString::fromLatin1(fields.at(answer::Date)), dateFormat());
    const QTime time = QTime::fromString(QString::fromLatin1(fields.at(answer::Time)), timeFormat());
    QDateTime dateTime(date, time);
    FrUtils::fixDateTime(dateTime);
    return dateTime;
}

} // namespace spfhex
