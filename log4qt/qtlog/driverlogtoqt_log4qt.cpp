#include "driverlogtoqt.h"

#include "qtcategoryappender.h"

#include <log4qt/logger.h>
#include <log4qt/logmanager.h>

void driverLogToQt()
{
    const QString name = QStringLiteral("Qt's logging categories");
    Log4Qt::Logger* const logger = Log4Qt::LogManager::logger(QStringLiteral("frdriver"));
    if (logger->appender(name))
        return;
    const Log4Qt::AppenderSharedPtr appender(new QtCategoryAppender);
    appender->setName(name);
    logger->setLevel(Log4Qt::Level::TRACE_INT);
    logger->addAppender(appender);
}
