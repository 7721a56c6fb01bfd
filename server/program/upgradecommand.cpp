#include "program/upgradecommand.h"

#include "program/runfile.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <stdexcept>
#include <utility>

namespace frserver {

namespace {

using std::chrono::seconds;

/// A document under way may take 130 s.
constexpr seconds longestUpgrade(180);
/// Whoever watches the service starts it anew by then.
constexpr seconds longestAbsence(15);
constexpr unsigned long lookMs = 50;

[[noreturn]] void giveUp(const QString& text)
{
    throw std::runtime_error(text.toStdString());
}

void judge(const RunFile::Running& former, const RunFile::Running& present)
{
    std::printf("frserver %s was replaced by %s (process %lld)\n", qPrintable(former.version),
        qPrintable(present.version), static_cast<long long>(present.process));
    const QString ours = QCoreApplication::applicationVersion();
    if (present.version != ours)
        giveUp(QStringLiteral("this is %1: the service was started from another file").arg(ours));
}

void say(const QString& version, const char* does)
{
    std::fprintf(stderr, "frserver: %s %s\n", qPrintable(version), does);
}

/// What the former one has said since it was looked at last.
void follow(const RunFile::Running& former, const RunFile::Running& present, RunFile::Phase& told)
{
    if (present.start != former.start)
        return;
    if (present.keptPlace != former.keptPlace)
        giveUp(QStringLiteral("%1 goes on: %2").arg(present.version, present.reason));
    if (present.phase == RunFile::Phase::Ending)
        giveUp(QStringLiteral("%1 ends, as it was told to; what is installed runs from the next start")
                   .arg(present.version));
    if (present.phase == RunFile::Phase::Leaving && std::exchange(told, present.phase) != present.phase)
        say(present.version, "finishes the documents under way");
}

/// Until the one or the other is certain.
void awaitSuccessor(const QString& journal, const RunFile::Running& former)
{
    const QDeadlineTimer end(longestUpgrade);
    QDeadlineTimer absence(longestAbsence);
    RunFile::Phase told = RunFile::Phase::Serving;
    while (!end.hasExpired() && !absence.hasExpired()) {
        const RunFile::Running present = RunFile::read(journal);
        if (present.process != 0)
            absence.setRemainingTime(longestAbsence);
        if (present.process != 0 && !present.version.isEmpty() && present.start != former.start)
            return judge(former, present);
        follow(former, present, told);
        QThread::msleep(lookMs);
    }
    giveUp(absence.hasExpired()
            ? QStringLiteral("%1 has ended, and no service is there in its place").arg(former.version)
            : QStringLiteral("%1 still has not left its place").arg(former.version));
}

} // namespace

void runUpgrade(const QString& journal)
{
    const RunFile::Running former = RunFile::read(journal);
    if (former.process == 0 || former.version.isEmpty())
        giveUp(QStringLiteral("no service serves from the journal %1").arg(journal));
    if (::kill(static_cast<pid_t>(former.process), SIGUSR2) != 0)
        giveUp(QStringLiteral("process %1: %2").arg(former.process).arg(qt_error_string(errno)));
    say(former.version, "tries the program that is installed");
    awaitSuccessor(journal, former);
}

} // namespace frserver
