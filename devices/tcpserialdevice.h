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

    QString errorString() const override { return m_error.isEmpty() ? m_socket.errorString() : m_error; }
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

    bool open() override;
    bool isAvailable() const override;
    /// Waits until the register has taken all that was written, as long as a write may last. What it has not
    /// taken when the line is closed it does not get.
    bool flush() override;
    int getType() const override { return Tcp; }

protected:
    bool isLineOpen() const override;
    void closeLine() override;
    bool clearLine() override;
    qint64 send(const QByteArray& data, int milliseconds) override;
    qint64 receive(char* data, qint64 maxSize, int milliseconds) override;

private:
    qint64 sendNow(const QByteArray& data);
    qint64 receiveNow(char* data, qint64 maxSize, int milliseconds);

    const QString m_host;
    const quint16 m_port;
    QTcpSocket m_socket;
    /// Why the connection did not come about; empty when it did.
    QString m_error;
    QSerialPort::BaudRate m_baudRate = QSerialPort::Baud115200;
    QSerialPort::FlowControl m_flowControl = QSerialPort::NoFlowControl;
    bool m_dataTerminalReady = false;
};

} // namespace devices
