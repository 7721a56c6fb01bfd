#pragma once

#include <QLoggingCategory>
#include <QString>

namespace Log4Qt {

/// The part of Log4Qt's logger that the drivers call, over Qt's logging categories.
///
/// A logger writes into the category of its name. Trace lines, which carry the raw exchange, go to a category
/// of their own, "<name>.trace", which is off until QLoggingCategory::setFilterRules or QT_LOGGING_RULES
/// turns it on, as with the rule "*.trace=true": Qt has no level below debug. Error lines are of the type
/// QtCriticalMsg.
class Logger
{
public:
    explicit Logger(const QByteArray& name);
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    ~Logger();

    bool isTraceEnabled() const { return m_traceCategory.isDebugEnabled(); }

    void trace(const QString& message) const { write(m_traceCategory, QtDebugMsg, message); }
    void debug(const QString& message) const { write(m_category, QtDebugMsg, message); }
    void info(const QString& message) const { write(m_category, QtInfoMsg, message); }
    void warn(const QString& message) const { write(m_category, QtWarningMsg, message); }
    void error(const QString& message) const { write(m_category, QtCriticalMsg, message); }

    /// The same with placeholders: %1 and on take the arguments in order. The format is UTF-8.
    template <typename Arg, typename... Args>
    void trace(const char* format, const Arg& arg, const Args&... args) const
    {
        trace(fill(QString::fromUtf8(format), arg, args...));
    }
    template <typename Arg, typename... Args>
    void debug(const char* format, const Arg& arg, const Args&... args) const
    {
        debug(fill(QString::fromUtf8(format), arg, args...));
    }
    template <typename Arg, typename... Args>
    void info(const char* format, const Arg& arg, const Args&... args) const
    {
        info(fill(QString::fromUtf8(format), arg, args...));
    }
    template <typename Arg, typename... Args>
    void warn(const char* format, const Arg& arg, const Args&... args) const
    {
        warn(fill(QString::fromUtf8(format), arg, args...));
    }
    template <typename Arg, typename... Args>
    void error(const char* format, const Arg& arg, const Args&... args) const
    {
        error(fill(QString::fromUtf8(format), arg, args...));
    }

private:
    static void write(const QLoggingCategory& category, QtMsgType type, const QString& message);

    /// All placeholders at once, so that a "%1" within an argument stays as it is.
    template <typename... Args>
    static QString fill(const QString& format, const Args&... args)
    {
        return format.arg(QStringLiteral("%1").arg(args)...);
    }

    const QByteArray m_name;
    const QByteArray m_traceName;
    const QLoggingCategory m_category;
    const QLoggingCategory m_traceCategory;
};

} // namespace Log4Qt
