#pragma once

#include "program/protocolswitch.h"
#include "register/virtualclock.h"
#include "rig.h"

#include <QRegularExpression>

/// One parameter, written by hand.
inline QString pa(const QString& name, int type, const QString& inside = {})
{
    return QStringLiteral("<pa n=\"%1\" t=\"%2\">%3</pa>").arg(name).arg(type).arg(inside);
}

/// An answer as a host reads it: by the names of elements and parameters, wherever they stand.
struct XmlReply
{
    QByteArray bytes;

    bool isWhole() const { return bytes.endsWith("</ArmResponse>"); }
    QString element(const QString& name) const
    {
        const QString pattern = QStringLiteral("<%1>(?:<!\\[CDATA\\[)?(.*?)(?:\\]\\]>)?</%1>").arg(name);
        return QRegularExpression(pattern, QRegularExpression::DotMatchesEverythingOption)
            .match(QString::fromUtf8(bytes))
            .captured(1);
    }
    /// The text of a parameter in the data.
    QString value(const QString& name) const
    {
        const QString pattern = QStringLiteral("<pa n=\"%1\" t=\"\\d\">([^<]*)</pa>").arg(name);
        return QRegularExpression(pattern).match(element("ResponseData")).captured(1).replace("&quot;", "\"");
    }
    /// Category and code, "0.0" for a good answer.
    std::string verdict() const
    {
        const QString result = element("Result");
        const QString code = element("ErrorCategory") + '.' + element("ErrorCode");
        return (result == (code == "0.0" ? "0" : "1") ? code : "Result " + result).toStdString();
    }
};

/// A register with a host that writes its documents by hand and lives in virtual time.
class XmlRig
{
public:
    explicit XmlRig(emulator::ProtocolChoice choice = emulator::ProtocolChoice::Auto,
        const emulator::Identity& identity = {})
        : device(clock, identity)
        , outbox(clock)
        , line(device, outbox, clock, choice)
    {
    }

    QByteArray request(int command, const QString& data = {})
    {
        ++m_id;
        return QStringLiteral(R"(<?xml version="1.0" encoding="UTF-8"?>
<ArmRequest><RequestBody><ProtocolLabel>OFDFNARMUKM</ProtocolLabel><ProtocolVersion>13.0</ProtocolVersion>
<RequestId>%1</RequestId><msgFFDVer>4</msgFFDVer><msgContVer>1</msgContVer>
<DateTime>2024-03-01 09:00:00</DateTime><Command>%2</Command></RequestBody>
<RequestData><![CDATA[%3]]></RequestData></ArmRequest>)")
            .arg(id())
            .arg(command)
            .arg(data)
            .toUtf8();
    }
    QString id() const
    {
        return QStringLiteral("{10000000-0000-4000-8000-%1}").arg(m_id, 12, 10, QLatin1Char('0'));
    }

    XmlReply exchange(const QByteArray& bytes)
    {
        line.receive(bytes);
        return {outbox.take()};
    }
    XmlReply send(int command, const QString& data = {}) { return exchange(request(command, data)); }
    std::string run(int command, const QString& data = {}) { return send(command, data).verdict(); }
    std::string openShift()
    {
        return run(4, pa("2", 7, pa("1021", 1, "Иванова") + pa("1203", 1, "771234567890")));
    }
    std::string money(int kind, const QString& sum)
    {
        return run(38,
            pa("200007", 7,
                pa("1021", 1, "Иванова") + pa("CashSumm", 2, sum)
                    + pa("MoneyOperationType", 4, QString::number(kind)) + pa("HeaderText", 1, "Размен")));
    }
    std::string set(const QString& section, const QString& subsection, const QString& settings)
    {
        return run(56, pa("200005", 7, pa(section, 7, pa(subsection, 7, settings))));
    }

    emulator::VirtualClock clock;
    emulator::Register device;
    emulator::Outbox outbox;
    emulator::ProtocolSwitch line;

private:
    int m_id = 0;
};

/// A position of goods without a mark.
inline QString position(const QString& price, const QString& quantity, const QString& withDiscount)
{
    return pa("1059", 7,
        pa("1030", 1, "Молоко") + pa("1079", 2, price) + pa("1197", 1, "шт") + pa("1023", 3, quantity)
            + pa("1199", 4, "2") + pa("1212", 4, "1") + pa("1214", 4, "4") + pa("2108", 4, "0")
            + pa("PriceWithDiscount", 2, withDiscount));
}

/// A receipt with cash and electronic money; what else it has stands around the tax system, with a text at
/// the foot unless it has one of its own.
inline QString receipt(
    const QString& positions, const QString& cash, const QString& card = "0.00", const QString& more = {})
{
    const QString foot = more.contains("Footer") ? QString() : pa("Footer", 1, "СДАЧА: 0.00");
    const qsizetype texts = more.indexOf(QRegularExpression("<pa n=\"(HeaderText|Footer|TextAfterDoc)\""));
    return pa("3", 7,
        pa("1059", 6, positions) + pa("1031", 2, cash) + pa("1081", 2, card) + pa("1215", 2, "0.00")
            + pa("1216", 2, "0.00") + pa("1217", 2, "0.00") + pa("1021", 1, "Иванова") + pa("1054", 4, "1")
            + pa("DoNotPrint", 4, "0") + more.left(texts) + pa("1055", 4, "1")
            + (texts < 0 ? QString() : more.mid(texts)) + foot);
}

const QString markHex = QString::fromLatin1(markingCode.toHex());

inline QString goodsCode()
{
    return pa("1163", 7, pa("1305", 1, "444d"));
}

/// The check of the marking code of a piece.
inline QString markingCheck()
{
    return pa("200017", 7,
        pa("1023", 3, "1.000") + pa("2000", 1, markHex) + pa("2003", 4, "1") + pa("2102", 4, "0")
            + pa("2108", 4, "0") + goodsCode());
}

/// Marked goods with a discount, and what else is said of them at the end: 170 roubles.
inline QString markedPosition(const QString& rest)
{
    const QString marking = pa("2102", 4, "0") + goodsCode() + pa("2110", 4, "1") + pa("2000", 1, markHex)
        + pa("ItemDiscounts", 6, pa("ItemDiscounts", 7, pa("Name", 1, "Скидка") + pa("Value", 2, "-10.00")));
    return position("60.00", "3.000", "56.67")
        .replace(R"(n="1212" t="4">1<)", R"(n="1212" t="4">33<)")
        .replace(R"(<pa n="PriceWith)", marking + R"(<pa n="PriceWith)")
        .replace(QRegularExpression("</pa>$"), rest + "</pa>");
}
