#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

/// Words of the service screens, the same for all records.
namespace servicetexts {

inline QString yesNo(bool yes)
{
    return yes ? QStringLiteral("да") : QStringLiteral("нет");
}

inline QString noData()
{
    return QStringLiteral("нет данных");
}

inline QString date(const QDate& value)
{
    return value.isValid() ? value.toString(QStringLiteral("dd.MM.yyyy")) : noData();
}

inline QString dateTime(const QDateTime& value)
{
    return value.isValid() ? value.toString(QStringLiteral("dd.MM.yyyy hh:mm:ss")) : noData();
}

} // namespace servicetexts
