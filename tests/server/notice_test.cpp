#include "program/servicenotice.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// The socket of whoever has started the program.
class Starter
{
public:
    explicit Starter(const QByteArray& name)
        : m_socket(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.constData(), static_cast<size_t>(name.size()));
        if (name.startsWith('@'))
            address.sun_path[0] = '\0';
        const auto size
            = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<size_t>(name.size()));
        EXPECT_EQ(0, ::bind(m_socket, reinterpret_cast<const sockaddr*>(&address), size));
    }
    ~Starter() { ::close(m_socket); }
    Starter(const Starter&) = delete;
    Starter& operator=(const Starter&) = delete;

    /// Empty when nothing has come.
    QByteArray take() const
    {
        char text[256] = {};
        const ssize_t size = ::recv(m_socket, text, sizeof text, MSG_DONTWAIT);
        return size > 0 ? QByteArray(text, size) : QByteArray();
    }
    /// Lets the program live until something comes.
    QByteArray await() const
    {
        QByteArray text;
        while ((text = take()).isEmpty())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return text;
    }

private:
    int m_socket;
};

class Notice : public testing::TestWithParam<bool>
{
protected:
    /// In the file system, or abstract.
    QByteArray name() const
    {
        const QByteArray file = m_folder.filePath("notify").toLocal8Bit();
        return GetParam() ? '@' + file : file;
    }

    QTemporaryDir m_folder;
};

TEST_P(Notice, TellsThatItIsReadyAliveAndStopping)
{
    const Starter starter(name());
    qputenv("NOTIFY_SOCKET", name());
    qputenv("WATCHDOG_USEC", "20000");
    frserver::ServiceNotice notice;
    // What it starts is not the service.
    EXPECT_FALSE(qEnvironmentVariableIsSet("NOTIFY_SOCKET"));
    EXPECT_FALSE(qEnvironmentVariableIsSet("WATCHDOG_USEC"));
    EXPECT_EQ("", starter.take());
    notice.ready("ready on http://127.0.0.1:8403");
    EXPECT_EQ("READY=1\nSTATUS=ready on http://127.0.0.1:8403", starter.await());
    EXPECT_EQ("WATCHDOG=1", starter.await());
    EXPECT_EQ("WATCHDOG=1", starter.await());
    notice.stopping();
    EXPECT_EQ("STOPPING=1", starter.await());
}

TEST_P(Notice, LeavesTheWatchdogOfAnotherProcessAlone)
{
    const Starter starter(name());
    qputenv("NOTIFY_SOCKET", name());
    qputenv("WATCHDOG_USEC", "2000");
    qputenv("WATCHDOG_PID", "1");
    frserver::ServiceNotice notice;
    notice.ready("");
    EXPECT_EQ("READY=1\nSTATUS=", starter.take());
    QTimer later;
    later.setSingleShot(true);
    later.start(5);
    while (later.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ("", starter.take());
}

INSTANTIATE_TEST_SUITE_P(Sockets, Notice, testing::Bool());

} // namespace
