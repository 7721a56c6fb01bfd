#include "log4qt/logmanager.h"

#include "log4qt/logger.h"

#include <map>
#include <memory>

namespace Log4Qt {

Logger* LogManager::logger(const QString& root, const QString& name)
{
    static std::map<QByteArray, std::unique_ptr<Logger>> loggers;
    const QByteArray fullName = (name.isEmpty() ? root : root + QLatin1Char('.') + name).toUtf8();
    std::unique_ptr<Logger>& entry = loggers[fullName];
    if (!entry)
        entry = std::make_unique<Logger>(fullName);
    return entry.get();
}

} // namespace Log4Qt
