#include "qtlogcategories.h"

#include <QMessageLogger>

QtLogCategories::QtLogCategories(const QByteArray& name)
    : m_name(name)
    , m_traceName(name + ".trace")
    , m_category(m_name.constData(), QtDebugMsg)
    , m_traceCategory(m_traceName.constData(), QtWarningMsg)
{
}

QtLogCategories::~QtLogCategories() = default;

void QtLogCategories::write(const QLoggingCategory& category, QtMsgType type, const QString& message)
{
    if (!category.isEnabled(type))
        return;
    const QMessageLogger logger(nullptr, 0, nullptr, category.categoryName());
    switch (type) {
    case QtInfoMsg:
        logger.info().noquote().nospace() << message;
        break;
    case QtWarningMsg:
        logger.warning().noquote().nospace() << message;
        break;
    case QtCriticalMsg:
        logger.critical().noquote().nospace() << message;
        break;
    default:
        logger.debug().noquote().nospace() << message;
        break;
    }
}
