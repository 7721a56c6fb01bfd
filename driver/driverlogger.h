#pragma once

#include <QString>

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

/// The drivers' logger of that name, a child of "frdriver". The one place that knows which Log4Qt it is: the
/// real one names a logger by one dotted text, the stand-in by two.
inline Log4Qt::Logger* driverLogger(const QString& name)
{
    const QString root = QStringLiteral("frdriver");
#if defined(FRSPF_SYSTEM_LOG4QT)
    return Log4Qt::LogManager::logger(name.isEmpty() ? root : root + QLatin1Char('.') + name);
#else
    return Log4Qt::LogManager::logger(root, name);
#endif
}
