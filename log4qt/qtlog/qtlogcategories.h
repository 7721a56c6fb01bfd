#pragma once

#include <QLoggingCategory>
#include <QString>

/// Qt's logging categories that the lines of one logger go to.
///
/// The category has the logger's name. Trace lines, which carry the raw exchange, go to a category of their
/// own, "<name>.trace", which is off until QLoggingCategory::setFilterRules or QT_LOGGING_RULES turns it on,
/// as with the rule "*.trace=true": Qt has no level below debug. Error lines are of the type QtCriticalMsg.
class QtLogCategories
{
public:
    explicit QtLogCategories(const QByteArray& name);
    QtLogCategories(const QtLogCategories&) = delete;
    QtLogCategories& operator=(const QtLogCategories&) = delete;
    ~QtLogCategories();

    bool isTraceEnabled() const { return m_traceCategory.isDebugEnabled(); }

    void write(QtMsgType type, const QString& message) const { write(m_category, type, message); }
    void trace(const QString& message) const { write(m_traceCategory, QtDebugMsg, message); }

private:
    static void write(const QLoggingCategory& category, QtMsgType type, const QString& message);

    const QByteArray m_name;
    const QByteArray m_traceName;
    const QLoggingCategory m_category;
    const QLoggingCategory m_traceCategory;
};
