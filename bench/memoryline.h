#pragma once

#include "abstractserialdriver.h"
#include "answerers.h"
#include "exceptions.h"

#include <QList>

/// A transport without a line: the answer to a request is there at once.
class MemoryLine : public AbstractSerialDriver
{
public:
    struct Exchange
    {
        QByteArray request;
        QByteArray answer;
    };

    /// Answers come in pieces of that size, or as large as they are asked for.
    explicit MemoryLine(Answerer answerer, qsizetype pieceSize = 1 << 20)
        : m_answerer(std::move(answerer))
        , m_pieceSize(pieceSize)
    {
    }

    void setRecording(bool on) { m_isRecording = on; }
    const QList<Exchange>& exchanges() const { return m_exchanges; }

    void sendData(const QByteArray& data) override
    {
        m_input = m_answerer(data);
        m_read = 0;
        if (m_isRecording)
            m_exchanges.append({data, m_input});
    }
    QByteArray receiveDataAsByteArray(unsigned long maxSize, unsigned long) override
    {
        const qsizetype count = qMin(m_pieceSize, static_cast<qsizetype>(maxSize));
        if (m_read >= m_input.size())
            throw ComDriverTimeoutException(QStringLiteral("Нет данных"));
        m_read += count;
        return m_input.mid(m_read - count, count);
    }
    unsigned char receiveByte(unsigned long) override
    {
        if (m_read >= m_input.size())
            throw ComDriverTimeoutException(QStringLiteral("Нет данных"));
        return static_cast<unsigned char>(m_input.at(m_read++));
    }
    void sendData(const std::vector<unsigned char>& data) override
    {
        sendData(QByteArray(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())));
    }
    std::vector<unsigned char> receiveData(unsigned long maxSize, unsigned long timeout) override
    {
        const QByteArray data = receiveDataAsByteArray(maxSize, timeout);
        return {data.begin(), data.end()};
    }

    bool portOpen(
        QSerialPort::BaudRate, QSerialPort::Parity, QSerialPort::DataBits, QSerialPort::StopBits) override
    {
        return true;
    }
    bool portOpen() override { return true; }
    void portClose() override { }
    bool setBaudRate(QSerialPort::BaudRate) override { return true; }
    QSerialPort::BaudRate getBaudRate() const override { return QSerialPort::Baud115200; }
    bool portClear() override { return true; }
    void sendByte(unsigned char) override { }
    void sendByteWithTimeout(unsigned char, unsigned long) override { }
    void flush() override { }
    int getType() const override { return 1; }
    hw::AbstractSerialDevice* getDevice() override { return nullptr; }
    QString getDeviceName() const override { return QStringLiteral("memory"); }
    bool isAvailable() const override { return true; }
    bool setFlowControl(QSerialPort::FlowControl) override { return true; }
    QSerialPort::FlowControl getFlowControl() const override { return QSerialPort::NoFlowControl; }
    bool setDataTerminalReady(bool) override { return true; }
    bool isDataTerminalReady() const override { return false; }

private:
    const Answerer m_answerer;
    const qsizetype m_pieceSize;
    QByteArray m_input;
    qsizetype m_read = 0;
    bool m_isRecording = false;
    QList<Exchange> m_exchanges;
};
