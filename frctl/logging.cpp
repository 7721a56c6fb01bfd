#include "logging.h"

#include "progress.h"

#include <QLoggingCategory>
#include <QTime>

#include <cstdio>

namespace frctl {

namespace {

const char* levelName(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return "debug";
    case QtInfoMsg:
        return "info";
    case QtWarningMsg:
        return "warn";
    default:
        return "error";
    }
}

void writeLine(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    const QByteArray time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss.zzz")).toLatin1();
    hideProgress();
    std::fprintf(stderr, "%s %s %s: %s\n", time.constData(), levelName(type), context.category,
        message.toUtf8().constData());
}

QString onOff(const char* what, bool on)
{
    return QStringLiteral("%1=%2\n").arg(
        QLatin1String(what), on ? QStringLiteral("true") : QStringLiteral("false"));
}

} // namespace

void setUpLogging(Options::LogLevel level)
{
    // Trace lines are debug lines of categories of their own: Qt has no level below debug.
    QLoggingCategory::setFilterRules(onOff("*.debug", level <= Options::Debug)
        + onOff("*.trace.debug", level <= Options::Trace) + onOff("*.info", level <= Options::Info)
        + onOff("*.warning", level <= Options::Warn) + onOff("*.critical", level <= Options::Error)
        + QStringLiteral("qt.*.debug=false\nqt.*.info=false\n"));
    qInstallMessageHandler(writeLine);
}

} // namespace frctl
