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

/// Until the one or the other is certain.
void awaitSuccessor(const QString& journal, const RunFile::Running& former)
{
    const QDeadlineTimer end(longestUpgrade);
    QDeadlineTimer absence(longestAbsence);
    while (!end.hasExpired() && !absence.hasExpired()) {
        const RunFile::Running present = RunFile::read(journal);
        if (present.process != 0)
            absence.setRemainingTime(longestAbsence);
        if (present.process != 0 && !present.version.isEmpty() && present.start != former.start)
            return judge(former, present);
        if (present.start == former.start && present.keptPlace != former.keptPlace)
            giveUp(QStringLiteral("%1 goes on: %2").arg(present.version, present.reason));
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
    std::fprintf(stderr, "frserver: %s finishes the documents under way\n", qPrintable(former.version));
    awaitSuccessor(journal, former);
}

} // namespace frserver
