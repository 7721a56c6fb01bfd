#include "rack/workerprocess.h"

#include <QJsonDocument>
#include <QLoggingCategory>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(workerLog, "frserver.worker")

constexpr int longestEndMs = 130'000;

} // namespace

WorkerProcess::WorkerProcess(const QString& program, QObject* parent)
    : Worker(parent)
    , m_program(program)
{
}

WorkerProcess::~WorkerProcess()
{
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->closeWriteChannel();
    // QProcess itself would kill it in the middle of a document.
    m_process->waitForFinished(longestEndMs);
}

void WorkerProcess::start()
{
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    connect(m_process.get(), &QProcess::readyReadStandardOutput, this, &WorkerProcess::read);
    connect(m_process.get(), &QProcess::finished, this, [this](int status, QProcess::ExitStatus how) {
        read();
        finish(how == QProcess::CrashExit ? QStringLiteral("killed by a signal")
                                          : QStringLiteral("ended with status %1").arg(status));
    });
    connect(m_process.get(), &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            finish(m_process->errorString());
    });
    m_process->start(m_program, {QStringLiteral("--worker")});
}

void WorkerProcess::finish(const QString& how)
{
    // It may be on the stack, and what hears of it may start the next one.
    m_process.release()->deleteLater();
    Q_EMIT ended(how);
}

void WorkerProcess::send(const QJsonObject& message)
{
    if (m_process)
        m_process->write(QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n');
}

void WorkerProcess::end()
{
    if (m_process)
        m_process->closeWriteChannel();
}

void WorkerProcess::kill()
{
    if (m_process)
        m_process->kill();
}

void WorkerProcess::read()
{
    while (m_process && m_process->canReadLine()) {
        const QByteArray line = m_process->readLine();
        const QJsonDocument message = QJsonDocument::fromJson(line);
        if (message.isObject())
            Q_EMIT told(message.object());
        else
            qCWarning(workerLog).noquote() << "no message:" << line.trimmed().left(200);
    }
}

} // namespace frserver
