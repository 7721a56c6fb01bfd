#include "datetimefields.h"

#include "drivertexts.h"
#include "exceptions.h"
#include "frutils.h"

namespace spfhex {

QDateTime createDateTime(const QList<QByteArray>& fields)
{
    if (fields.size() < 2)
        throw FrCommandException(drivertexts::badAnswer());
    const QDate date = QDate::fromString(QString::fromLatin1(fields.at(0)), dateFormat());
    const QTime time = QTime::fromString(QString::fromLatin1(fields.at(1)), timeFormat());
    QDateTime dateTime(date, time);
    FrUtils::fixDateTime(dateTime);
    return dateTime;
}

} // namespace spfhex
