#include "hostprocess.h"

#include "violation.h"

#include <QElapsedTimer>

#include <unistd.h>

#include <csignal>

namespace {

constexpr int hostPatience = 180'000;

} // namespace

HostProcess::HostProcess(const QString& program, const QStringList& arguments)
{
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([this] {
        m_output.becomeStream(STDOUT_FILENO);
        m_messages.becomeStream(STDERR_FILENO);
        // A campaign in the background would hand on what is ignored there.
        for (const int number : {SIGINT, SIGTERM, SIGHUP})
            std::signal(number, SIG_DFL);
    });
    m_process.start(program, arguments);
    expect(m_process.waitForStarted(hostPatience), program + QStringLiteral(" does not start"));
    m_output.leaveToWriter();
    m_messages.leaveToWriter();
}

HostProcess::~HostProcess()
{
    if (hasEnded())
        return;
    m_process.kill();
    m_process.waitForFinished(hostPatience);
}

bool HostProcess::hasEnded()
{
    const bool isOver = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(0);
    m_output.drain();
    m_messages.drain();
    return isOver;
}

bool HostProcess::signal(int number)
{
    // One that has ended already has no process: 0 would mean this program itself.
    const qint64 process = hasEnded() ? 0 : m_process.processId();
    return process > 0 && ::kill(static_cast<pid_t>(process), number) == 0;
}

bool HostProcess::closeOutput()
{
    if (hasEnded())
        return false;
    m_output.close();
    m_messages.close();
    return true;
}

HostAnswer HostProcess::end()
{
    QElapsedTimer waited;
    waited.start();
    // A pipe that is full would keep it waiting.
    for (constexpr int pause = 5; !hasEnded(); m_process.waitForFinished(pause))
        expect(waited.elapsed() < hostPatience, QStringLiteral("the host did not end"));
    return {m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1, m_output.text(),
        m_messages.text()};
}
