#pragma once

#include "rig.h"

#include <gtest/gtest.h>
#include <QProcess>
#include <QTcpSocket>

#include <csignal>

constexpr int patience = 10'000;

/// The program, for as long as this lives.
class Program
{
public:
    explicit Program(const QStringList& arguments, const QString& outputFile = {})
    {
        process.setStandardOutputFile(outputFile);
        process.start(QStringLiteral(FRSPF_EMULATOR), arguments);
        process.waitForStarted(patience);
    }
    ~Program()
    {
        process.kill();
        process.waitForFinished(patience);
    }
    QString ready()
    {
        process.setReadChannel(QProcess::StandardError);
        while (!process.canReadLine() && process.waitForReadyRead(patience)) { }
        return QString::fromUtf8(process.readLine()).trimmed();
    }
    int stop(int signal)
    {
        ::kill(static_cast<pid_t>(process.processId()), signal);
        process.waitForFinished(patience);
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QProcess process;
};

/// A host that stays connected.
class TcpHost
{
public:
    /// Another one's answers are none for it.
    TcpHost(quint16 port, int firstCommand)
    {
        for (int command = 0; command < firstCommand; ++command)
            m_rig.frame({0xA7, {}});
        m_socket.connectToHost("127.0.0.1", port);
        m_socket.waitForConnected(patience);
    }
    void ask()
    {
        m_socket.write(m_rig.frame({0xA7, {}}));
        m_socket.flush();
    }
    /// Its code; -1 when the connection was cut instead.
    int answer()
    {
        QByteArray bytes;
        while (m_rig.parse(bytes).code < 0 && m_socket.waitForReadyRead(patience))
            bytes += m_socket.readAll();
        return m_rig.parse(bytes).code;
    }

private:
    Rig m_rig;
    QTcpSocket m_socket;
};

/// Sends requests, each by a connection of its own, as of hosts that come and go; gives the last answer.
inline Reply sendAll(const QString& ready, const QList<int>& commands)
{
    Rig host;
    Reply reply;
    for (const int command : commands) {
        QTcpSocket socket;
        socket.connectToHost("127.0.0.1", ready.section(':', -1).toUShort());
        socket.waitForConnected(patience);
        const QList<QByteArray> cashier{"Иванова", ""};
        socket.write(host.frame({command, command == 0x6B || command == 0x61 ? cashier : reply.fields}));
        QByteArray answer;
        while (host.parse(answer).code < 0 && socket.waitForReadyRead(patience))
            answer += socket.readAll();
        reply = host.parse(answer);
    }
    return reply;
}

/// Opens the shift.
inline void openShift(const QString& ready)
{
    ASSERT_TRUE(ready.startsWith("spf-emulator: ready on tcp:127.0.0.1:")) << ready.toStdString();
    EXPECT_EQ(sendAll(ready, {0xA7, 0x00, 0x6B}).code, 0);
}
