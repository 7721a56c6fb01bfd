#include "registerprocess.h"

#include "violation.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpServer>

namespace {

constexpr int startPatience = 30'000;

// Below those that the system gives to others, who could come by while the register has no power.
QString freePort()
{
    constexpr int lowest = 20'000;
    constexpr int count = 10'000;
    const int first = static_cast<int>(QCoreApplication::applicationPid() % count);
    QTcpServer server;
    for (int port = lowest + first; port < lowest + count; ++port) {
        if (server.listen(QHostAddress::LocalHost, static_cast<quint16>(port)))
            return QString::number(port);
    }
    throw Violation("no free port");
}

} // namespace

RegisterProcess::RegisterProcess(const QString& program, const QString& folder, Line line)
    : m_program(program)
    , m_journal(folder + QStringLiteral("/documents"))
    , m_arguments({QStringLiteral("--state"), folder + QStringLiteral("/state"), QStringLiteral("--journal"),
          m_journal, QStringLiteral("--quiet"), QStringLiteral("--trace"), QStringLiteral("-")})
    , m_messages(folder + QStringLiteral("/messages"))
{
    if (line == Line::Network) {
        const QString port = freePort();
        m_address = QStringLiteral("tcp:127.0.0.1:") + port;
        m_arguments += {QStringLiteral("--tcp"), port};
    } else {
        m_address = folder + QStringLiteral("/register");
        m_arguments += {QStringLiteral("--pty"), m_address};
    }
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(m_messages.fileName(), QIODevice::Append);
}

RegisterProcess::~RegisterProcess()
{
    kill();
}

void RegisterProcess::start()
{
    m_messages.close();
    beginTrace();
    m_process.start(m_program, m_arguments);
    QElapsedTimer waited;
    waited.start();
    while (!m_trace.isReady()) {
        const bool hasEnded = m_process.waitForFinished(5);
        listen();
        if (!m_trace.isReady() && (hasEnded || waited.elapsed() > startPatience))
            throw Violation("the register did not come up: " + m_trace.otherLines().toStdString());
    }
}

void RegisterProcess::listen()
{
    if (m_messages.isOpen() || m_messages.open(QIODevice::ReadOnly))
        m_trace.feed(m_messages.readAll());
}

void RegisterProcess::beginTrace()
{
    // It is written to its end, wherever that is.
    QFile::resize(m_messages.fileName(), 0);
    if (m_messages.isOpen())
        m_messages.seek(0);
    m_trace = WireTrace();
}

void RegisterProcess::kill()
{
    if (!isRunning())
        return;
    m_process.kill();
    m_process.waitForFinished(startPatience);
    listen();
}
