#include "servedport.h"

#include "errors.h"
#include "frctltr.h"
#include "portname.h"

#include <QFile>
#include <QFileInfo>
#include <QTcpServer>
#include <QTcpSocket>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

namespace frctl {

namespace {

HostError cannotServe(const QString& name, const QString& reason)
{
    return HostError(tr("port %1 cannot be served: %2").arg(name, reason), sale::ErrorKind::Line);
}

/// The link of a pseudo terminal; it goes away with the port.
class ServedPty : public ServedPort
{
public:
    explicit ServedPty(const QString& link);
    ~ServedPty() override;

    QByteArray read(int milliseconds) override;
    void write(const QByteArray& bytes) override;
    bool isLeft() override;

private:
    void openPty();
    void makeLink();
    void closeSlave();
    void closeAll();

    QString m_link;
    QString m_slaveName;
    int m_master = -1;
    /// Keeps the line up between hosts.
    int m_slave = -1;
};

ServedPty::ServedPty(const QString& link)
    : m_link(link)
{
    try {
        openPty();
        makeLink();
    } catch (...) {
        closeAll();
        throw;
    }
}

void ServedPty::openPty()
{
    termios mode{};
    ::cfmakeraw(&mode);
    mode.c_cflag |= CREAD | CLOCAL;
    char name[256] = {};
    if (::openpty(&m_master, &m_slave, name, &mode, nullptr) != 0)
        throw cannotServe(m_link, qt_error_string(errno));
    // Or a write would wait, and for ever, where a host reads only a part of it.
    ::fcntl(m_master, F_SETFL, O_NONBLOCK);
    m_slaveName = QString::fromLocal8Bit(name);
}

ServedPty::~ServedPty()
{
    if (QFile::symLinkTarget(m_link) == m_slaveName)
        QFile::remove(m_link);
    closeAll();
}

void ServedPty::closeAll()
{
    closeSlave();
    if (m_master >= 0)
        ::close(m_master);
}

void ServedPty::closeSlave()
{
    if (const int slave = std::exchange(m_slave, -1); slave >= 0)
        ::close(slave);
}

void ServedPty::makeLink()
{
    const QFileInfo old(m_link);
    // One that a killed run left behind may lead to the line that is ours now.
    const bool isDeadLink = old.isSymLink() && (!old.exists() || QFile::symLinkTarget(m_link) == m_slaveName);
    if (isDeadLink)
        QFile::remove(m_link);
    if ((old.isSymLink() || old.exists()) && !isDeadLink)
        throw cannotServe(m_link, tr("it is there already"));
    if (!QFile::link(m_slaveName, m_link))
        throw cannotServe(m_link, tr("the link cannot be made"));
}

QByteArray ServedPty::read(int milliseconds)
{
    pollfd entry{m_master, POLLIN, 0};
    if (::poll(&entry, 1, milliseconds) <= 0 || (entry.revents & POLLIN) == 0)
        return {};
    char buffer[4096];
    const ssize_t count = ::read(m_master, buffer, sizeof buffer);
    // A host takes the line for itself, and our own hold on it would keep it that way for the next one.
    if (m_slave >= 0)
        ::ioctl(m_slave, TIOCNXCL);
    return QByteArray(buffer, std::max<ssize_t>(0, count));
}

void ServedPty::write(const QByteArray& bytes)
{
    constexpr int patienceMs = 1000;
    for (qsizetype written = 0; written < bytes.size();) {
        pollfd entry{m_master, POLLOUT, 0};
        const bool hasRoom = ::poll(&entry, 1, patienceMs) > 0;
        const ssize_t count = hasRoom
            ? ::write(m_master, bytes.constData() + written, static_cast<size_t>(bytes.size() - written))
            : -1;
        // Who reads nothing has gone.
        if (count <= 0)
            return;
        written += count;
    }
}

bool ServedPty::isLeft()
{
    // Without our own hold the system tells when the last host has closed it.
    closeSlave();
    pollfd entry{m_master, POLLIN, 0};
    return ::poll(&entry, 1, 0) > 0 && (entry.revents & POLLHUP) != 0 && (entry.revents & POLLIN) == 0;
}

class ServedTcp : public ServedPort
{
public:
    ServedTcp(const QString& name, const devices::TcpAddress& address);

    QByteArray read(int milliseconds) override;
    void write(const QByteArray& bytes) override;
    bool isLeft() override { return !m_host || m_host->state() == QAbstractSocket::UnconnectedState; }

private:
    QTcpServer m_server;
    std::unique_ptr<QTcpSocket> m_host;
};

ServedTcp::ServedTcp(const QString& name, const devices::TcpAddress& address)
{
    const bool isLocal = address.host == QStringLiteral("localhost");
    const QHostAddress host = isLocal ? QHostAddress(QHostAddress::LocalHost) : QHostAddress(address.host);
    if (!m_server.listen(host, address.port))
        throw cannotServe(name, m_server.errorString());
}

QByteArray ServedTcp::read(int milliseconds)
{
    if (m_host && m_host->state() == QAbstractSocket::ConnectedState) {
        m_host->waitForReadyRead(milliseconds);
        return m_host->readAll();
    }
    if (m_server.waitForNewConnection(milliseconds)) {
        m_host.reset(m_server.nextPendingConnection());
        m_host->setParent(nullptr);
        m_host->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    }
    return {};
}

void ServedTcp::write(const QByteArray& bytes)
{
    constexpr int patienceMs = 1000;
    if (!m_host)
        return;
    m_host->write(bytes);
    while (m_host->bytesToWrite() > 0 && m_host->waitForBytesWritten(patienceMs))
        ;
}

} // namespace

std::unique_ptr<ServedPort> servePort(const QString& name)
{
    if (!devices::isTcpName(name))
        return std::make_unique<ServedPty>(name);
    const std::optional<devices::TcpAddress> address = devices::tcpAddressOf(name);
    if (!address)
        throw UsageError(tr("trace replay: \"%1\" names no port").arg(name));
    return std::make_unique<ServedTcp>(name, *address);
}

} // namespace frctl
