#include "program/successor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <cerrno>
#include <chrono>
#include <unistd.h>
#include <utility>
#include <vector>

namespace frserver {

namespace {

/// Long for reading a configuration.
constexpr std::chrono::seconds longestTrial(5);

/// By the name that it was started by: where that is a link it may lead elsewhere by then.
QString fileNamed(const QString& name)
{
    const QString file = name.contains(QLatin1Char('/')) ? QDir().absoluteFilePath(name)
                                                         : QStandardPaths::findExecutable(name);
    return file.isEmpty() ? QCoreApplication::applicationFilePath() : file;
}

void replaceBy(const QString& file, const QStringList& arguments)
{
    std::vector<QByteArray> texts{QFile::encodeName(file)};
    for (const QString& argument : arguments)
        texts.push_back(argument.toLocal8Bit());
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (QByteArray& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    ::execv(QFile::encodeName(file).constData(), pointers.data());
}

} // namespace

Successor::Successor(const QStringList& commandLine)
    : m_file(fileNamed(commandLine.constFirst()))
    , m_arguments(commandLine.mid(1))
{
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_patience, [this] {
        finish(QStringLiteral("%1 does not come to an end of reading the configuration").arg(m_file));
    });
}

/// A trial that is under way is killed, and whoever wanted to hear of it is gone.
Successor::~Successor()
{
    if (m_trial)
        m_trial->disconnect();
}

void Successor::examine(const std::function<void(const QString& fault)>& tried)
{
    if (m_trial)
        return;
    m_tried = tried;
    m_trial = std::make_unique<QProcess>();
    QProcess* const program = m_trial.get();
    program->setProcessChannelMode(QProcess::MergedChannels);
    QObject::connect(program, &QProcess::finished, program, [this, program] { finish(faultOf(*program)); });
    QObject::connect(
        program, &QProcess::errorOccurred, program, [this, program](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                finish(QStringLiteral("%1: %2").arg(m_file, program->errorString()));
        });
    m_patience.start(longestTrial);
    program->start(m_file, m_arguments + QStringList{QStringLiteral("check-config")});
}

void Successor::finish(const QString& fault)
{
    m_patience.stop();
    // It may be the one that tells of this.
    QProcess* const program = m_trial.release();
    program->disconnect();
    program->kill();
    program->deleteLater();
    std::exchange(m_tried, {})(fault);
}

QString Successor::faultOf(const QProcess& program) const
{
    if (program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0)
        return {};
    const QString said = QString::fromUtf8(m_trial->readAll()).trimmed();
    return QStringLiteral("%1 does not start (%2) %3")
        .arg(m_file)
        .arg(program.exitCode())
        .arg(said)
        .trimmed();
}

QString Successor::takePlace() const
{
    replaceBy(m_file, m_arguments);
    const QString reason = qt_error_string(errno);
    // It was there a moment ago.
    replaceBy(QStringLiteral("/proc/self/exe"), m_arguments);
    return QStringLiteral("%1: %2").arg(m_file, reason);
}

} // namespace frserver
