#pragma once

#include "exceptions.h"
#include "serialdriverwrapper.h"

#include <QMap>
#include <QStringList>

#include <gtest/gtest.h>

/// A line with a scripted device at its end. The script is words: T silence, F a fault of the port, X an
/// exception of no driver, A or A*n ACKs, Z*n so many bytes of an unfinished answer, any other word the bytes
/// of bytesOf().
///
/// What was done stands in done: R request, E ENQ and F follow-up written; f flow control, d DTR, o opened
/// and c closed as a HEX driver does it. Any other call is refused, for there is no device.
class HexLine : public SerialDriverWrapper
{
public:
    explicit HexLine(const char* words = "")
        : SerialDriverWrapper(nullptr)
        , script(QString::fromLatin1(words).split(QLatin1Char(' ')))
    {
    }

    using SerialDriverWrapper::portOpen;
    using SerialDriverWrapper::sendData;
    bool portOpen(QSerialPort::BaudRate rate, QSerialPort::Parity parity, QSerialPort::DataBits bits,
        QSerialPort::StopBits stop) override
    {
        const bool isUsual = rate == 115200 && parity == QSerialPort::NoParity && bits == 8 && stop == 1;
        return step(isUsual ? "o" : "?");
    }
    void portClose() override { step("c"); }
    void sendByte(unsigned char byte) override { step(byte == 0x05 ? "E" : "?"); }
    void sendData(const QByteArray& data) override
    {
        if (data.startsWith('\x02'))
            m_request = data;
        step(data == m_request ? "R" : data == "\x1B\x42\x4D" ? "F" : "?");
    }
    unsigned char receiveByte(unsigned long timeout) override
    {
        EXPECT_EQ(timeout, 2000U);
        while (m_incoming.isEmpty())
            next(script.takeFirst());
        const auto byte = static_cast<unsigned char>(m_incoming.at(0));
        m_incoming.remove(0, 1);
        return byte;
    }
    bool setFlowControl(QSerialPort::FlowControl flow) override { return step(flow == 2 ? "f" : "?"); }
    bool setDataTerminalReady(bool ready) override { return step(ready ? "?" : "d"); }

    QStringList script;
    QByteArray answerCode = "00";
    /// The step of this number fails; none for 0.
    qsizetype failingStep = 0;
    std::string done;

private:
    bool step(const char* name)
    {
        done += name;
        if (static_cast<qsizetype>(done.size()) == failingStep)
            throw ComDriverException(QStringLiteral("Обрыв"));
        return true;
    }

    void next(const QString& word)
    {
        if (word == "T")
            throw ComDriverTimeoutException(QStringLiteral("Тишина"));
        if (word == "F")
            throw ComDriverException(QStringLiteral("Обрыв"));
        if (word == "X")
            throw BasicException(QStringLiteral("Чужое"));
        const qsizetype count = qMax(1, word.mid(2).toInt());
        m_incoming = word.startsWith('A') ? QByteArray(count, '\x06')
            : word.startsWith('Z')        ? '\x02' + QByteArray(count - 1, 'z')
                                          : bytesOf(word);
        ASSERT_FALSE(m_incoming.isEmpty()) << word.toStdString();
    }

    QByteArray bytesOf(const QString& word) const
    {
        const QByteArray ok = answer(0, "12\x1C\x33\x34\x1C");
        const QByteArray old = answer(-1, "56\x1C");
        const QMap<QString, QByteArray> known{{"ok", ok}, {"bad", brokenLrc(ok)}, {"old", old},
            {"oldbad", brokenLrc(old)}, {"empty", answer(0, "")}, {"stx", answer(0, "1\x02\x32\x1C")},
            {"ack", QByteArray(ok).insert(8, '\x06')}, {"half", ok.left(8)}, {"short", "\x02\x03\x30\x30"},
            {"noise", "\x03zz\x05\x1C"}, {"echo", m_request}};
        return known.value(word);
    }

    QByteArray answer(int idShift, const QByteArray& fields) const
    {
        const QByteArray body
            = static_cast<char>(m_request.at(5) + idShift) + ("A0" + answerCode + fields + '\x03');
        char lrc = 0;
        for (const char byte : body)
            lrc = static_cast<char>(lrc ^ byte);
        return '\x02' + body + QByteArray(1, lrc).toHex().toUpper();
    }

    static QByteArray brokenLrc(QByteArray frame)
    {
        return frame.replace(frame.size() - 1, 1, frame.endsWith('0') ? "1" : "0");
    }

    QByteArray m_incoming;
    QByteArray m_request;
};
