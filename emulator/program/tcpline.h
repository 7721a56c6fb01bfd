#pragma once

#include "program/line.h"
#include "program/tcpconnections.h"

#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

/// A TCP port; what a second host on it meets is for the rule to say.
class TcpLine : public Line
{
    Q_OBJECT

public:
    TcpLine(quint16 port, TcpConnections rule, QObject* parent = nullptr);

    QString error() const;
    QString address() const override;
    void write(const QByteArray& bytes) override;
    void settle() override;

private:
    void accept();
    /// Nobody is there any more but in the bytes that were not heard yet.
    void leave(QTcpSocket* host);
    void hear(QTcpSocket* host);

    bool hasHost();

    const TcpConnections m_rule;
    QList<QTcpSocket*> m_hosts;
    /// The one that is answered.
    QPointer<QTcpSocket> m_host;
    bool m_owesAnswer = false;
    /// Ends first: the hosts that are connected leave then.
    QTcpServer m_server;
};
