#pragma once

#include <qtlogcategories.h>

namespace Log4Qt {

/// The part of Log4Qt's logger that the drivers call, over Qt's logging categories.
class Logger
{
public:
    explicit Logger(const QByteArray& name)
        : m_categories(name)
    {
    }

    bool isTraceEnabled() const { return m_categories.isTraceEnabled(); }

    void trace(const QString& message) const { m_categories.trace(message); }
    void debug(const QString& message) const { m_categories.write(QtDebugMsg, message); }
    void info(const QString& message) const { m_categories.write(QtInfoMsg, message); }
    void warn(const QString& message) const { m_categories.write(QtWarningMsg, message); }
    void error(const QString& message) const { m_categories.write(QtCriticalMsg, message); }

    /// The same with an argument in place of %1. The format is UTF-8. For one argument only: Log4Qt fills
    /// them in one after another, so that a "%2" within the first would take the second. Lines with more come
    /// finished.
    template <typename Arg>
    void trace(const char* format, const Arg& arg) const
    {
        trace(QString::fromUtf8(format).arg(arg));
    }
    template <typename Arg>
    void debug(const char* format, const Arg& arg) const
    {
        debug(QString::fromUtf8(format).arg(arg));
    }
    template <typename Arg>
    void info(const char* format, const Arg& arg) const
    {
        info(QString::fromUtf8(format).arg(arg));
    }
    template <typename Arg>
    void warn(const char* format, const Arg& arg) const
    {
        warn(QString::fromUtf8(format).arg(arg));
    }
    template <typename Arg>
    void error(const char* format, const Arg& arg) const
    {
        error(QString::fromUtf8(format).arg(arg));
    }

private:
    const QtLogCategories m_categories;
};

} // namespace Log4Qt
