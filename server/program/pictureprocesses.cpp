#include "program/pictureprocesses.h"

#include "api/pictureformat.h"
#include "api/posteddocument.h"
#include "preview/previewstatus.h"

#include "http/problem.h"
#include "http/processanswer.h"
#include "tape/drawingprogram.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTimer>

#include <sys/prctl.h>
#include <sys/resource.h>

#include <csignal>

namespace frserver {

namespace {

/// Why the service has ended the process itself.
const char* const endedFor = "endedFor";
const QString runningName = QStringLiteral("running");

/// In the process itself, before it becomes the program: it ends with the service, goes behind the registers'
/// workers, and takes no more memory than a long receipt needs.
void limitProcess()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::setpriority(PRIO_PROCESS, 0, 10);
    const rlimit noCore{0, 0};
    ::setrlimit(RLIMIT_CORE, &noCore);
#ifndef __SANITIZE_ADDRESS__ // which takes terabytes of addresses
    constexpr rlim_t most = 1024UL * 1024 * 1024;
    const rlimit memory{most, most};
    ::setrlimit(RLIMIT_AS, &memory);
#endif
}

http::Response failed(const QString& type, const QString& detail)
{
    return http::Problem(503, type, QStringLiteral("The picture could not be drawn"), detail)
        .withHeader("Retry-After", "10")
        .response();
}

http::Response tooLong(const QString& detail)
{
    return http::Problem(
        422, QStringLiteral("picture-too-long"), QStringLiteral("The picture is too long"), detail)
        .response();
}

http::Response refused(const QString& why)
{
    return wrongDocument({{receipt::Finding::Error, {}, {}, why}}).response();
}

/// What has come of one that has ended, or never started.
http::Response outcome(QProcess& process, const QString& format)
{
    if (process.property(endedFor).isValid())
        return failed(QStringLiteral("picture-given-up"), process.property(endedFor).toString());
    if (process.error() == QProcess::FailedToStart)
        return failed(QStringLiteral("picture-failed"), process.errorString());
    if (process.exitStatus() == QProcess::CrashExit)
        return failed(
            QStringLiteral("picture-failed"), QStringLiteral("The process that draws it has died."));
    switch (process.exitCode()) {
    case PreviewDrawn:
        return http::Response::bytes(process.readAllStandardOutput(), pictureType(format));
    case PreviewTooLong:
        return tooLong(QStringLiteral("A PNG of it would be longer than 4 m; SVG takes any."));
    case PreviewRefused:
        return refused(QString::fromUtf8(process.readAllStandardOutput()));
    default:
        return failed(QStringLiteral("picture-failed"),
            QStringLiteral("The process that draws it ended with status %1; the service's log has more.")
                .arg(process.exitCode()));
    }
}

void giveUp(QProcess& process, const QString& why)
{
    process.setProperty(endedFor, why);
    process.kill();
}

} // namespace

PictureProcesses::PictureProcesses(const Settings& settings)
    : m_settings(settings)
    , m_drawing(tape::drawingProgram(QStringLiteral(FRSERVER_LIBEXEC_DIR)))
{
}

PictureProcesses::~PictureProcesses()
{
    const auto processes = m_room.findChildren<QProcess*>();
    for (QProcess* const process : processes) {
        // Nobody is there any more to be told.
        process->disconnect();
        process->kill();
        process->waitForFinished();
    }
}

QByteArray PictureProcesses::message(const PictureOrder& order) const
{
    const QJsonObject json{{QStringLiteral("receipt"), QString::fromUtf8(order.receipt)},
        {QStringLiteral("protocol"), receipt::protocolName(order.protocol)},
        // As the register's clock shows it, whose zone the paper does not tell.
        {QStringLiteral("time"), QDateTime(order.time.date(), order.time.time()).toString(Qt::ISODate)},
        {QStringLiteral("cashier"), order.cashier}, {QStringLiteral("cashierInn"), order.cashierInn},
        {QStringLiteral("format"), order.format},
        {QStringLiteral("plugins"), QJsonArray::fromStringList(m_settings.plugins)},
        {QStringLiteral("drawing"), m_drawing}};
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

void PictureProcesses::watch(QProcess& process) const
{
    QObject::connect(&process, &QProcess::readyReadStandardOutput, &process, [this, &process] {
        if (process.bytesAvailable() > m_settings.mostBytes)
            giveUp(process, QStringLiteral("It is larger than %1 bytes.").arg(m_settings.mostBytes));
    });
    QTimer::singleShot(m_settings.patience, &process, [this, &process] {
        giveUp(process,
            QStringLiteral("It was not done within %1 s.")
                .arg(static_cast<double>(m_settings.patience.count()) / 1000));
    });
}

bool PictureProcesses::isBusy() const
{
    return m_room.findChildren<QProcess*>(runningName, Qt::FindDirectChildrenOnly).size()
        >= m_settings.mostAtOnce;
}

http::Answer PictureProcesses::paint(const PictureOrder& order)
{
    if (isBusy())
        return http::Problem(
            503, QStringLiteral("busy"), QStringLiteral("Too many pictures are being drawn"), {})
            .withHeader("Retry-After", "1")
            .response();
    auto* const process = new QProcess(&m_room);
    process->setObjectName(runningName);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process->setChildProcessModifier(limitProcess);
    const auto pending = http::processAnswer(*process, m_settings.patience * 2,
        failed(
            QStringLiteral("picture-given-up"), QStringLiteral("The process that draws it cannot be ended.")),
        [format = order.format](QProcess& ended) { return outcome(ended, format); });
    watch(*process);
    process->start(m_settings.program, {QStringLiteral("--preview")});
    process->write(message(order));
    process->closeWriteChannel();
    return pending;
}

} // namespace frserver
