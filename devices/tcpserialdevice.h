#pragma once

#include "streamdevice.h"

#include <QTcpSocket>

namespace devices {

/// A register behind a TCP port. It has no line settings: they are remembered and answered as done.
class TcpSerialDevice : public StreamDevice
{
    Q_OBJECT

public:
    TcpSerialDevice(const QString& host, quint16 port);
    ~TcpSerialDevice() override;

    /// "tcp:host:port".
    QString getDeviceName() const override;
    bool setBaudRate(QSerialPort::BaudRate baudRate) override;
    QSerialPort::BaudRate getBaudRate() const override { return m_baudRate; }
    bool setDataBits(QSerialPort::DataBits) override { return true; }
    bool setParity(QSerialPort::Parity) override { return true; }
    bool setStopBits(QSerialPort::StopBits) override { return true; }
    bool setFlowControl(QSerialPort::FlowControl flowControl) override;
    QSerialPort::FlowControl getFlowControl() const override { return m_flowControl; }
    bool setDataTerminalReady(bool ready) override;
    bool isDataTerminalReady() const override { return m_dataTerminalReady; }

    /// Bytes that came before the other end hung up can still be read, so it counts as open until then.
    bool isOpen() const override;
    bool open() override;
    void close() override;
    bool clear() override;
    bool isAvailable() const override;
    int getType() const override { return Tcp; }

protected:
    QIODevice& stream() override { return m_socket; }
    const QIODevice& stream() const override { return m_socket; }
    bool isLineLost() const override;
    void forgetTimeout() override { }

private:
    const QString m_host;
    const quint16 m_port;
    QTcpSocket m_socket;
    QSerialPort::BaudRate m_baudRate = QSerialPort::Baud115200;
    QSerialPort::FlowControl m_flowControl = QSerialPort::NoFlowControl;
    bool m_dataTerminalReady = false;
};

} // namespace devices
