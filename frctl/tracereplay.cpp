#include "tracereplay.h"

#include "errors.h"
#include "frctltr.h"
#include "interruption.h"
#include "messages.h"
#include "portlock.h"
#include "serialdevicefactory.h"
#include "servedport.h"
#include "streamdevice.h"
#include "trace/hostplayer.h"
#include "trace/registerplayer.h"
#include "trace/signs.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QThread>

#include <algorithm>
#include <memory>

namespace frctl {

namespace {

constexpr int sliceMs = 50;
// As drivers wait: so long for a byte on HEX before they ask, and so long for an answer over XML.
constexpr int hexSilenceMs = 2000;
constexpr int longestAnswerMs = 60'000;
constexpr qint64 portion = 4096;
// Microseconds between two answers to one request.
constexpr qint64 longestPause = 2'000'000;

void addLines(Output& output, const char* name, const QString& what, const QStringList& lines)
{
    for (const QString& line : lines)
        output.lines.append(what + line);
    output.json.insert(QLatin1String(name), QJsonArray::fromStringList(lines));
    if (!lines.isEmpty())
        output.status = ExitFailure;
}

/// Asks the register until the request that was sent is answered; false when it says nothing.
bool waitForAnswer(devices::StreamDevice& line, trace::HostPlayer& player)
{
    const bool isHex = player.isHex();
    bool isAsked = false;
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(longestAnswerMs)) {
        if (line.waitForReadyRead(isHex ? hexSilenceMs : longestAnswerMs)) {
            isAsked = false;
            if (player.receive(line.read(portion)))
                return true;
        } else if (!isHex || isAsked || line.write(QByteArray(1, trace::enquiry)) < 0) {
            return false;
        } else {
            isAsked = true;
        }
    }
    return false;
}

/// As drivers set up the line.
void setUp(devices::StreamDevice& line, bool isHex)
{
    line.setWaitCallback(throwIfInterrupted);
    line.setBaudRate(QSerialPort::Baud115200);
    line.setDataBits(QSerialPort::Data8);
    line.setParity(QSerialPort::NoParity);
    line.setStopBits(QSerialPort::OneStop);
    if (isHex) {
        line.setFlowControl(QSerialPort::SoftwareControl);
        line.setDataTerminalReady(false);
    }
}

void lockPort(devices::PortLock& lock, const QString& name)
{
    if (lock.take(name))
        return;
    if (!lock.errorString().isEmpty())
        throw HostError(
            tr("port %1 cannot be locked: %2").arg(name, lock.errorString()), sale::ErrorKind::Line);
    throw HostError(tr("port %1 is busy").arg(name), sale::ErrorKind::Busy);
}

Output hostReport(const trace::HostPlayer& player, qsizetype played)
{
    Output output;
    output.lines.append(tr("%1 of %2 requests answered").arg(played).arg(player.count()));
    output.json = {{QStringLiteral("played"), played}, {QStringLiteral("requests"), player.count()}};
    addLines(output, "differences", {}, player.differences());
    return output;
}

} // namespace

Output playRegister(const trace::Trace& trace, const QString& name)
{
    const std::unique_ptr<ServedPort> port = servePort(name);
    trace::RegisterPlayer player(trace);
    catchInterruptions();
    complain(tr("ready on ") + name);
    while (!wasInterrupted() && !(player.isDone() && port->isLeft())) {
        for (const trace::RegisterPlayer::Answer& answer : player.receive(port->read(sliceMs))) {
            QThread::usleep(
                static_cast<unsigned long>(std::clamp<qint64>(answer.pauseMicroseconds, 0, longestPause)));
            port->write(answer.bytes);
        }
    }
    Output output;
    output.lines.append(tr("%1 requests answered").arg(player.playedCount()));
    output.json = {{QStringLiteral("played"), player.playedCount()}};
    addLines(output, "refused", tr("refused: "), player.complaints());
    const QStringList missing = player.isDone() ? QStringList() : player.missing();
    addLines(output, "missing", tr("did not come: "), missing);
    return output;
}

Output playHost(const trace::Trace& trace, const QString& name, const Options& options)
{
    // Held until the port is closed again.
    devices::PortLock lock;
    const std::unique_ptr<devices::StreamDevice> line = devices::createSerialDevice(name);
    if (!line)
        throw UsageError(tr("trace replay: \"%1\" names no port").arg(name));
    lockPort(lock, name);
    if (!line->open())
        throw HostError(
            tr("port %1 cannot be opened: %2").arg(name, line->errorString()), sale::ErrorKind::Line);
    trace::HostPlayer player(trace, options.password.toLatin1());
    setUp(*line, !player.isOver() && player.isHex());
    catchInterruptions();
    qsizetype played = 0;
    while (!player.isOver()) {
        if (line->write(player.nextRequest()) < 0)
            throw HostError(tr("port %1: %2").arg(name, line->errorString()), sale::ErrorKind::Line);
        if (waitForAnswer(*line, player))
            ++played;
        else
            player.giveUp();
    }
    lock.leaveIdle();
    return hostReport(player, played);
}

} // namespace frctl
