#pragma once

#include "hex/protocol.h"
#include "register/virtualclock.h"

#include <numeric>
#include <QTextCodec>

/// A request as a host would put it: command code and fields.
struct Step
{
    int code;
    QList<QByteArray> fields;
};

struct Reply
{
    int code = -1;
    QList<QByteArray> fields;
    QByteArray bytes;
};

inline QByteArray to866(const QString& text)
{
    return QTextCodec::codecForName("CP866")->fromUnicode(text);
}

/// The first of these parts that does not stand in the text behind those before it; empty when all do.
inline std::string missingFrom(const QString& text, const QStringList& parts)
{
    qsizetype at = 0;
    for (const QString& part : parts) {
        const qsizetype found = text.indexOf(part, at);
        if (found < 0)
            return part.toStdString();
        at = found + part.size();
    }
    return {};
}

/// A register with a host of its own that makes its frames by hand and lives in virtual time.
class Rig
{
public:
    explicit Rig(const emulator::Identity& identity = {}, int baudRate = 0)
        : device(clock, identity)
        , outbox(clock, baudRate)
        , protocol(device, outbox, clock)
    {
    }

    static QByteArray hex(int value)
    {
        return QByteArray::number(value, 16).rightJustified(2, '0').toUpper();
    }
    static QByteArray check(const QByteArray& bytes)
    {
        return hex(std::accumulate(bytes.cbegin(), bytes.cend(), 0,
            [](int sum, char byte) { return sum ^ static_cast<uchar>(byte); }));
    }

    QByteArray frame(const Step& step)
    {
        m_id = m_id >= 0xFD ? 0x20 : m_id + 1;
        QByteArray body = "QZXW" + QByteArray(1, static_cast<char>(m_id));
        body += hex(step.code);
        for (const QByteArray& field : step.fields)
            body += field + '\x1C';
        body += '\x03';
        return '\x02' + body + check(body);
    }

    QByteArray exchange(const QByteArray& bytes)
    {
        protocol.receive(bytes);
        return outbox.take();
    }

    Reply send(const Step& step) { return parse(exchange(frame(step))); }
    int code(const Step& step) { return send(step).code; }
    /// The first field of an answer to a query.
    QByteArray ask(int code, const QList<QByteArray>& fields = {})
    {
        return send({code, fields}).fields.value(0);
    }

    /// Reads one frame with the current id and a right check value; anything else has the code -1.
    Reply parse(const QByteArray& bytes) const
    {
        Reply reply{-1, {}, bytes};
        if (bytes.size() < 9 || bytes.at(0) != 2 || bytes.at(1) != static_cast<char>(m_id)
            || bytes.at(bytes.size() - 3) != 3 || bytes.right(2) != check(bytes.mid(1, bytes.size() - 3)))
            return reply;
        reply.code = bytes.mid(4, 2).toInt(nullptr, 16);
        reply.fields = bytes.mid(6, bytes.size() - 9).split('\x1C');
        reply.fields.removeLast();
        return reply;
    }

    void start()
    {
        const Reply time = send({0xA7, {}});
        send({0x00, time.fields});
    }

    void openShift()
    {
        start();
        send({0x6B, {"Иванова", "771234567890"}});
    }

    void run(const QList<Step>& steps)
    {
        for (const Step& step : steps)
            code(step);
    }

    emulator::VirtualClock clock;
    emulator::Register device;
    emulator::Outbox outbox;
    emulator::HexProtocol protocol;

private:
    int m_id = 0x1F;
};

inline Step open(int type, int taxSystem = 1, const QByteArray& mailOnly = "0")
{
    return {0x20,
        {QByteArray::number(type), "", to866(QStringLiteral("Иванова")), "771234567890", "",
            QByteArray::number(taxSystem), "a@b.example", mailOnly, "", ""}};
}

inline Step item(const QByteArray& quantity, const QByteArray& price, const QByteArray& tax = "2",
    const QByteArray& object = "1", const QByteArray& method = "4")
{
    return {0x30,
        {to866(QStringLiteral("Молоко")), "4601234567890", quantity, price, "0", tax, "", method, "", "",
            "643", "10/1", object, "0", "2", "15", "030", "010224", "12", "x=1", "", "", ""}};
}

inline Step subtotal()
{
    return {0x34, {}};
}

inline Step pay(int kind, const QByteArray& sum)
{
    return {0x35, {QByteArray::number(kind), sum}};
}

inline Step finish()
{
    return {0x22, {"0", "1", "0"}};
}

inline Step cancel()
{
    return {0x23, {}};
}

inline Step money(const QByteArray& sum)
{
    return {0x36, {"", sum}};
}

inline Step text(const QString& line, int attribute = 0)
{
    return {0x21, {to866(line), QByteArray::number(attribute)}};
}

/// A code with its group separator and short proof.
const QByteArray markingCode = "0104601234567890215abc\u001D93test";

inline Step check(const QByteArray& code = markingCode)
{
    return {0x3D, {"0", "1", "1", "0", "", "", code.toHex(), "0", "", ""}};
}

inline Step bind(const QByteArray& code = markingCode)
{
    return {0x41, {code, "0", "", "255"}};
}

inline QList<Step> sale(const QByteArray& price = "100.00")
{
    return {open(2), item("1.000", price), subtotal(), pay(0, price), finish()};
}
