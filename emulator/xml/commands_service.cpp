#include "register/hexdigits.h"
#include "register/markingquery.h"
#include "register/tags.h"
#include "xml/commands.h"

namespace emulator::xmlcommands {

namespace {

Cashier cashierOf(const XmlNode& data)
{
    return {data.textOf(tag::cashier), data.textOf(tag::cashierInn)};
}

} // namespace

XmlAnswer openShift(const XmlContext& context, const XmlNode& data)
{
    return context.device.openShift(cashierOf(data));
}

XmlAnswer closeShift(const XmlContext& context, const XmlNode& data)
{
    return context.device.shifts().close(cashierOf(data));
}

XmlAnswer printTotals(const XmlContext& context, const XmlNode& data)
{
    return context.device.shifts().printTotals(cashierOf(data));
}

XmlAnswer printAccounting(const XmlContext& context, const XmlNode& data)
{
    // Hosts of this protocol ask for the report while the shift is open.
    return context.device.reports().printAccounting(cashierOf(data), true);
}

XmlAnswer printStored(const XmlContext& context, const XmlNode& data)
{
    const qint64 number = data.numberOf(tag::documentNumber);
    return number < 0 ? XmlAnswer(Refusal::BadValue)
                      : context.device.reports().printStored(static_cast<quint32>(number));
}

XmlAnswer printLast(const XmlContext& context, const XmlNode&)
{
    return context.device.reports().printStored(context.device.drive().last().number);
}

XmlAnswer changeRegistration(const XmlContext& context, const XmlNode& data)
{
    Registration registration = context.device.state().registration;
    registration.taxSystems = static_cast<int>(data.numberOf(tag::taxSystems));
    const qint64 reasons = data.numberOf(tag::changeReasons);
    if (reasons <= 0)
        return XmlVerdict::badValue(QStringLiteral("1205 names no reason"));
    return context.device.reports().changeRegistration(
        registration, cashierOf(data), static_cast<int>(reasons));
}

XmlAnswer setTime(const XmlContext& context, const XmlNode& data)
{
    const Refusal refusal = context.device.setTime(
        QDateTime::fromString(data.textOf(QStringLiteral("DateTime")), xmlDateTimeFormat));
    return refusal == Refusal::BadValue
        ? XmlVerdict::badValue(QStringLiteral("DateTime is a time in the years 2000 to 2099"))
        : XmlVerdict(refusal);
}

XmlAnswer openDrawer(const XmlContext& context, const XmlNode&)
{
    return context.device.cash().openDrawer();
}

XmlAnswer settings(const XmlContext& context, const XmlNode& data)
{
    return context.settings.read(data);
}

XmlAnswer setSettings(const XmlContext& context, const XmlNode& data)
{
    return context.settings.write(data);
}

XmlAnswer checkMarking(const XmlContext& context, const XmlNode& data)
{
    constexpr double thousandths = 1000;
    const auto code = bytesOfHexDigits(data.textOf(tag::markingCode).toLatin1());
    MarkingQuery query;
    query.code = code.value_or(QByteArray());
    query.plannedStatus = static_cast<int>(data.numberOf(tag::plannedStatus));
    query.quantity = static_cast<double>(data.quantityOf(tag::quantity)) / thousandths;
    if (!code || data.child(tag::goodsCode)->children.size() != 1)
        return XmlVerdict::badValue(QStringLiteral("2000 is not hexadecimal, or 1163 not one code"));
    const Register& device = context.device;
    if (context.strict && device.drive().isExpired(device.now()))
        return Refusal::DriveExpired;
    int result = 0;
    const Refusal refusal = context.device.marking().check(query, result);
    if (refusal != Refusal::None)
        return refusal;
    return XmlNode::structure(data.name, {XmlNode::number(tag::checkResult, result)});
}

XmlAnswer clearMarking(const XmlContext& context, const XmlNode&)
{
    return context.device.marking().clear();
}

} // namespace emulator::xmlcommands
