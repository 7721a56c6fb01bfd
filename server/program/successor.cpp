#include "program/successor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <cerrno>
#include <unistd.h>
#include <vector>

namespace frserver {

namespace {

/// Long for reading a configuration; the service answers nobody meanwhile.
constexpr int startMs = 5'000;

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
}

QString Successor::fault() const
{
    QProcess program;
    program.setProcessChannelMode(QProcess::MergedChannels);
    program.start(m_file, m_arguments + QStringList{QStringLiteral("check-config")});
    const bool isDone = program.waitForFinished(startMs);
    if (!isDone) {
        const QString error = program.errorString();
        program.kill();
        program.waitForFinished(startMs);
        return QStringLiteral("%1: %2").arg(m_file, error);
    }
    if (program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0)
        return {};
    const QString said = QString::fromUtf8(program.readAll()).trimmed();
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
