#include "hostreplay.h"

#include "errors.h"
#include "frctltr.h"
#include "heldline.h"
#include "interruption.h"
#include "registerstart.h"
#include "serialdevicefactory.h"
#include "streamdevice.h"
#include "testdrive.h"
#include "trace/hostplayer.h"
#include "trace/identity.h"
#include "trace/signs.h"

#include <QElapsedTimer>
#include <QJsonArray>

namespace frctl {

namespace {

// As drivers wait: so long for a byte on HEX before they ask, and so long for an answer over XML.
constexpr int hexSilenceMs = 2000;
constexpr int longestAnswerMs = 60'000;
constexpr qint64 mostAtOnce = 4096;

/// The register's line, set up as drivers do it.
class PlayedLine
{
public:
    PlayedLine(const devices::ConnectionSettings& settings, bool isHex);

    /// False when the register said nothing.
    bool ask(trace::HostPlayer& player);
    void leaveIdle() { m_line.leaveIdle(); }

private:
    void send(const QByteArray& bytes);
    bool waitForAnswer(trace::HostPlayer& player);
    void setUp(bool isHex);

    const QString m_name;
    devices::HeldLine m_line;
    devices::StreamDevice& m_device;
};

PlayedLine::PlayedLine(const devices::ConnectionSettings& settings, bool isHex)
    : m_name(settings.port)
    , m_line(settings)
    , m_device(m_line.device())
{
    setUp(isHex);
    m_line.dropLeftovers();
}

void PlayedLine::setUp(bool isHex)
{
    m_device.setBaudRate(QSerialPort::Baud115200);
    m_device.setDataBits(QSerialPort::Data8);
    m_device.setParity(QSerialPort::NoParity);
    m_device.setStopBits(QSerialPort::OneStop);
    if (isHex) {
        m_device.setFlowControl(QSerialPort::SoftwareControl);
        m_device.setDataTerminalReady(false);
    }
}

void PlayedLine::send(const QByteArray& bytes)
{
    if (m_device.write(bytes) < 0)
        throw HostError(tr("port %1: %2").arg(m_name, m_device.errorString()), sale::ErrorKind::Line);
}

bool PlayedLine::ask(trace::HostPlayer& player)
{
    send(player.nextRequest());
    if (waitForAnswer(player))
        return true;
    player.giveUp();
    return false;
}

bool PlayedLine::waitForAnswer(trace::HostPlayer& player)
{
    const bool isHex = player.isHex();
    bool isAsked = false;
    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(longestAnswerMs)) {
        if (m_device.waitForReadyRead(isHex ? hexSilenceMs : longestAnswerMs)) {
            isAsked = false;
            if (player.receive(m_device.read(mostAtOnce)))
                return true;
        } else if (!isHex || isAsked || m_device.write(QByteArray(1, trace::enquiry)) < 0) {
            return false;
        } else {
            isAsked = true;
        }
    }
    return false;
}

/// What is played, and where.
struct Replay
{
    const trace::Trace& trace;
    const QString& port;
    const Options& options;
    bool isHex;
    /// What it does besides asking.
    QStringList changes;
};

[[noreturn]] void refuseUntold(const Replay& replay, const QString& error)
{
    const bool isOfPassword = replay.isHex && error.startsWith(QStringLiteral("06"));
    throw Refusal(isOfPassword ? sale::ErrorKind::Data : sale::ErrorKind::Other,
        tr("port %1: the register does not tell which one it is: %2%3")
            .arg(replay.port, error, isOfPassword ? tr("; its password is that of --password") : QString()));
}

trace::Identity identityOf(PlayedLine& line, const Replay& replay)
{
    trace::Identity identity;
    const bool hasInn = !replay.options.expected.inn.isEmpty();
    trace::HostPlayer player(
        trace::identityQuestions(replay.trace, hasInn), replay.options.password.toLatin1());
    while (!player.isOver()) {
        if (!line.ask(player))
            throw HostError(tr("port %1: no answer to the question which register it is").arg(replay.port),
                sale::ErrorKind::Line);
        if (!player.lastAnswer().error.isEmpty())
            refuseUntold(replay, player.lastAnswer().error);
        identity.take(player.lastAnswer());
    }
    return identity;
}

[[noreturn]] void refuse(const Replay& replay, const QString& drive)
{
    const QString standIns
        = replay.trace.hasStandIns() ? tr(", with stand-ins for names and texts") : QString();
    throw Refusal(sale::ErrorKind::Data,
        tr("the trace does more than ask (%1), and the fiscal drive, %2, is none for tests: it would be done once "
           "more%3. --force plays it all the same")
            .arg(replay.changes.join(QStringLiteral(", ")), drive.isEmpty() ? tr("not told") : drive,
                standIns));
}

/// Who the register is, as far as that decides whether the trace may go to it.
void checkRegister(PlayedLine& line, const Replay& replay)
{
    const Options& options = replay.options;
    const bool isExpected = !options.expected.serial.isEmpty() || !options.expected.inn.isEmpty();
    const bool wantsTestDrive = !replay.changes.isEmpty() && !options.force;
    if (!isExpected && !wantsTestDrive)
        return;
    const trace::Identity identity = identityOf(line, replay);
    options.answer->drive = identity.drive;
    sale::RegisterLine expected = options.line();
    expected.protocol = replay.isHex ? receipt::Protocol::Hex : receipt::Protocol::Xml;
    sale::compareRegister({identity.serial, identity.inn}, expected);
    if (wantsTestDrive && !sale::isTestDrive(identity.drive))
        refuse(replay, identity.drive);
}

Output hostReport(const trace::HostPlayer& player, qsizetype played)
{
    const QStringList& differences = player.differences();
    Output output;
    output.lines
        = QStringList{tr("%1 of %2 requests answered").arg(played).arg(player.count())} + differences;
    output.json = {{QStringLiteral("played"), played}, {QStringLiteral("requests"), player.count()},
        {QStringLiteral("differences"), QJsonArray::fromStringList(differences)}};
    output.status = differences.isEmpty() ? ExitSuccess : ExitFailure;
    return output;
}

/// Whoever sells on that register is stopped otherwise, and does not know by what; and over HEX a register
/// that was switched on does nothing before its work is started.
void warn(const Replay& replay, bool isRefused)
{
    QStringList texts;
    if (!replay.changes.isEmpty())
        texts.append(
            tr("what the trace made stands in no journal: where one knows this register, the next document "
               "on it waits for frctl journal accept"));
    if (isRefused && replay.isHex && !trace::startsWork(replay.trace))
        texts.append(
            tr("the trace does not start the register's work, without which it refuses after it was switched "
               "on: frctl status starts it"));
    for (const QString& text : texts)
        replay.options.warnings->add({{receipt::Finding::Warning, {}, {}, text}});
}

devices::ConnectionSettings connectionTo(const QString& port, const Options& options)
{
    devices::ConnectionSettings settings = options.connection();
    settings.port = port;
    settings.waitCallback = throwIfInterrupted;
    return settings;
}

} // namespace

Output playHost(const trace::Trace& trace, const QString& port, const Options& options)
{
    if (!devices::createSerialDevice(port))
        throw UsageError(tr("trace replay: \"%1\" names no port").arg(port));
    options.journal->requireFreeLine(port, options.isExclusive);
    catchInterruptions();
    const Replay replay{trace, port, options, trace::isHex(trace), trace::changesOf(trace)};
    PlayedLine line(connectionTo(port, options), replay.isHex);
    trace::HostPlayer player(trace, options.password.toLatin1());
    checkRegister(line, replay);
    qsizetype played = 0;
    while (!player.isOver())
        played += line.ask(player) ? 1 : 0;
    // What was given up may still be answered.
    if (played == player.count())
        line.leaveIdle();
    warn(replay, player.isRefused());
    return hostReport(player, played);
}

} // namespace frctl
