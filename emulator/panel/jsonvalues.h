#pragma once

#include <QDateTime>
#include <QJsonValue>

/// Values as all answers have them.
namespace emulator::panel::jsonvalues {

inline QJsonValue textOrNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

/// Null for 0.
inline QJsonValue numberOrNull(qint64 number)
{
    return number == 0 ? QJsonValue() : QJsonValue(number);
}

inline QString time(const QDateTime& time)
{
    return time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
}

} // namespace emulator::panel::jsonvalues
