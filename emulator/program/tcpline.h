#pragma once

#include "program/line.h"

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

/// A TCP port that one host at a time is connected to; a newcomer takes the line over.
class TcpLine : public Line
{
    Q_OBJECT

public:
    explicit TcpLine(quint16 port, QObject* parent = nullptr);

    QString error() const;
    QString address() const override;
    void write(const QByteArray& bytes) override;

private:
    void accept();

    QTcpServer m_server;
    QPointer<QTcpSocket> m_host;
};
