#include "xml/protocol.h"

namespace emulator {

namespace {

Cashier cashierOf(const XmlNode& data)
{
    return {data.textOf(QStringLiteral("1021")), data.textOf(QStringLiteral("1203"))};
}

} // namespace

XmlAnswer XmlProtocol::openShift(const XmlNode& data)
{
    return device().openShift(cashierOf(data));
}

XmlAnswer XmlProtocol::closeShift(const XmlNode& data)
{
    return device().closeShift(cashierOf(data));
}

XmlAnswer XmlProtocol::printTotals(const XmlNode& data)
{
    return device().printTotals(cashierOf(data));
}

XmlAnswer XmlProtocol::printAccounting(const XmlNode& data)
{
    // Hosts of this protocol ask for the report while the shift is open.
    return device().printAccounting(cashierOf(data), true);
}

XmlAnswer XmlProtocol::printStored(const XmlNode& data)
{
    const qint64 number = data.numberOf(QStringLiteral("1040"));
    return number < 0 ? XmlAnswer(Refusal::BadValue) : device().printStored(static_cast<quint32>(number));
}

XmlAnswer XmlProtocol::printLast(const XmlNode&)
{
    return device().printStored(device().drive().last().number);
}

XmlAnswer XmlProtocol::changeRegistration(const XmlNode& data)
{
    Registration registration = device().registration();
    registration.taxSystems = static_cast<int>(data.numberOf(QStringLiteral("1062")));
    const qint64 reasons = data.numberOf(QStringLiteral("1205"));
    if (reasons <= 0)
        return XmlVerdict::badValue(QStringLiteral("1205"));
    return device().changeRegistration(registration, cashierOf(data), static_cast<int>(reasons));
}

XmlAnswer XmlProtocol::setTime(const XmlNode& data)
{
    return device().setTime(
        QDateTime::fromString(data.textOf(QStringLiteral("DateTime")), xmlDateTimeFormat));
}

XmlAnswer XmlProtocol::openDrawer(const XmlNode&)
{
    device().openDrawer();
    return Refusal::None;
}

XmlAnswer XmlProtocol::settings(const XmlNode& data)
{
    return m_settings.read(data);
}

XmlAnswer XmlProtocol::setSettings(const XmlNode& data)
{
    return m_settings.write(data);
}

XmlAnswer XmlProtocol::checkMarking(const XmlNode& data)
{
    constexpr double thousandths = 1000;
    const QByteArray digits = data.textOf(QStringLiteral("2000")).toLatin1();
    MarkingQuery query;
    query.code = QByteArray::fromHex(digits);
    query.plannedStatus = static_cast<int>(data.numberOf(QStringLiteral("2003")));
    query.quantity = static_cast<double>(data.quantityOf(QStringLiteral("1023"))) / thousandths;
    query.unit = static_cast<int>(data.numberOf(QStringLiteral("2108")));
    // Letters that are no digits are passed over by the conversion, so it must come out the same again.
    if (query.code.toHex() != digits.toLower() || data.child(QStringLiteral("1163"))->children.size() != 1)
        return XmlVerdict::badValue(QStringLiteral("2000, 1163"));
    int result = 0;
    const Refusal refusal = device().checkMarking(query, result);
    if (refusal != Refusal::None)
        return refusal;
    return XmlNode::structure(data.name, {XmlNode::number(QStringLiteral("2106"), result)});
}

XmlAnswer XmlProtocol::clearMarking(const XmlNode&)
{
    return device().clearMarking();
}

} // namespace emulator
