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
