#include "qtcategoryappender.h"

#include <log4qt/loggingevent.h>

namespace {

QtMsgType typeOf(Log4Qt::Level level)
{
    if (level >= Log4Qt::Level::ERROR_INT)
        return QtCriticalMsg;
    if (level >= Log4Qt::Level::WARN_INT)
        return QtWarningMsg;
    return level >= Log4Qt::Level::INFO_INT ? QtInfoMsg : QtDebugMsg;
}

} // namespace

void QtCategoryAppender::append(const Log4Qt::LoggingEvent& event)
{
    const QtLogCategories& target = categories(event.loggername());
    if (event.level() < Log4Qt::Level::DEBUG_INT)
        target.trace(event.message());
    else
        target.write(typeOf(event.level()), event.message());
}

const QtLogCategories& QtCategoryAppender::categories(const QString& loggerName)
{
    std::unique_ptr<QtLogCategories>& entry = m_categories[loggerName];
    if (!entry) {
        // Log4Qt keeps the dots of a name as "::".
        const QString name = QString(loggerName).replace(QStringLiteral("::"), QStringLiteral("."));
        entry = std::make_unique<QtLogCategories>(name.toUtf8());
    }
    return *entry;
}
