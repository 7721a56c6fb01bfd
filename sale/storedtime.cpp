#include "storedtime.h"

#include "currenttime.h"
#include "mockfactory.h"

namespace sale {

QString storedTime(const QDateTime& time)
{
    return time.isValid() ? time.toUTC().toString(Qt::ISODateWithMs) : QString();
}

QDateTime timeFromStored(const QString& text)
{
    return QDateTime::fromString(text, Qt::ISODateWithMs);
}

QString storedNow()
{
    return storedTime(MockFactory<CurrentTime>::create()->getCurrentDateTime());
}

} // namespace sale
