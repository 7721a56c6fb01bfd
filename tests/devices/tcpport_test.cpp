// What a register that is slow, or takes nothing, does to a line over TCP.

#include "serialdevicefactory.h"
#include "streamdevice.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace {

/// A port that is listened to, with room for few connections and bytes.
class NarrowPort
{
public:
    explicit NarrowPort(int connections)
    {
        constexpr int bytes = 4096;
        setsockopt(m_server, SOL_SOCKET, SO_RCVBUF, &bytes, sizeof bytes);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(m_server, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(m_server, connections), 0);
        getsockname(m_server, reinterpret_cast<sockaddr*>(&address), &size);
        m_name = QStringLiteral("tcp:127.0.0.1:%1").arg(ntohs(address.sin_port));
    }
    ~NarrowPort() { close(m_server); }
    NarrowPort(const NarrowPort&) = delete;
    NarrowPort& operator=(const NarrowPort&) = delete;

    const QString& name() const { return m_name; }

    /// How the next connection ends, once all of it is read: 0 in order, or the system's error.
    int end() const
    {
        const int peer = accept(m_server, nullptr, nullptr);
        std::array<char, 1000> data{};
        ssize_t size = 0;
        while ((size = ::read(peer, data.data(), data.size())) > 0) { }
        const int error = size == 0 ? 0 : errno;
        close(peer);
        return error;
    }

private:
    const int m_server = socket(AF_INET, SOCK_STREAM, 0);
    QString m_name;
};

// The system would send it again, for minutes, to a register that was asked meanwhile and has not printed it.
TEST(TcpPort, WhatTheRegisterHasNotTakenIsForgottenWithTheConnection)
{
    const NarrowPort port(1);
    const auto device = devices::createSerialDevice(port.name());
    for (const auto& [size, end] : {std::pair{0, 0}, {16'000, ECONNRESET}}) {
        ASSERT_TRUE(device->open());
        ASSERT_EQ(device->write(QByteArray(size, 'x')), size);
        device->close();
        EXPECT_EQ(port.end(), end) << size;
    }
    const auto die = [&] {
        device->open();
        device->write(QByteArray(16'000, 'x'));
        std::_Exit(0);
    };
    EXPECT_EXIT(die(), testing::ExitedWithCode(0), "");
    EXPECT_EQ(port.end(), ECONNRESET) << "killed";
}

TEST(TcpPort, FlushWaitsUntilTheRegisterHasTakenAll)
{
    const NarrowPort port(1);
    const auto device = devices::createSerialDevice(port.name());
    ASSERT_TRUE(device->open());
    EXPECT_TRUE(device->flush()) << "nothing was written";
    const QByteArray data(16'000, 'x');
    ASSERT_EQ(device->write(data), data.size());
    int end = -1;
    std::thread reader([&] { end = port.end(); });
    EXPECT_TRUE(device->flush());
    device->close();
    reader.join();
    EXPECT_EQ(end, 0);
    EXPECT_FALSE(device->flush());
    // One that takes nothing.
    ASSERT_TRUE(device->open());
    ASSERT_EQ(device->write(data), data.size());
    device->setBudget(20);
    EXPECT_FALSE(device->flush());
    device->close();
    EXPECT_EQ(port.end(), ECONNRESET);
}

std::atomic<int> interruptions = 0;

TEST(TcpPort, SignalEndsNoFlush)
{
    struct sigaction action = {};
    action.sa_handler = [](int) { ++interruptions; };
    struct sigaction former = {};
    ::sigaction(SIGUSR1, &action, &former);
    const NarrowPort port(1);
    const auto device = devices::createSerialDevice(port.name());
    ASSERT_TRUE(device->open());
    const QByteArray data(16'000, 'x');
    ASSERT_EQ(device->write(data), data.size());
    int end = -1;
    std::thread reader([&, flushing = ::pthread_self()] {
        while (interruptions < 1000)
            ::pthread_kill(flushing, SIGUSR1);
        end = port.end();
    });
    EXPECT_TRUE(device->flush());
    device->close();
    reader.join();
    EXPECT_EQ(end, 0);
    ::sigaction(SIGUSR1, &former, nullptr);
}

// A host that answers nothing keeps the connection waiting for seconds.
TEST(TcpPort, WaitForTheConnectionCanBeLeft)
{
    // With room for none, the second connection is neither taken nor refused.
    const NarrowPort port(0);
    const QString& name = port.name();
    struct Left
    {
    };
    const auto first = devices::createSerialDevice(name);
    ASSERT_TRUE(first->open());
    const auto second = devices::createSerialDevice(name);
    int calls = 0;
    second->setWaitCallback([&calls] {
        if (++calls == 2)
            throw Left();
    });
    EXPECT_THROW(second->open(), Left);
    EXPECT_FALSE(second->isOpen());
    // Nor does it go beyond the time for the port.
    second->setWaitCallback({});
    second->setBudget(20);
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(second->open());
    EXPECT_LT(timer.elapsed(), 2000);
}

} // namespace
