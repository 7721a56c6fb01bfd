#include "hex/commands.h"

#include "register/codepage.h"
#include "register/parametertable.h"

#include <algorithm>

namespace emulator::hexcommands {

namespace {

constexpr qsizetype longestCashierName = 48;
constexpr int largestLogo = 65'536;

QList<QByteArray> one(const QByteArray& value)
{
    return {value};
}

// What the setting takes.
QString valuesOf(const ParameterEntry& entry)
{
    if (entry.kind == ParameterEntry::Kind::Date)
        return QStringLiteral("a date, ddMMyy");
    if (entry.kind == ParameterEntry::Kind::Number)
        return QStringLiteral("a number from %1 to %2").arg(entry.smallest).arg(entry.greatest);
    if (entry.greatest < 0)
        return QStringLiteral("a text of %1 characters at least").arg(entry.smallest);
    if (entry.smallest == entry.greatest)
        return QStringLiteral("a text of %1 characters").arg(entry.smallest);
    return QStringLiteral("a text of %1 to %2 characters").arg(entry.smallest).arg(entry.greatest);
}

QString settingMisfit(int number, int row)
{
    const QList<ParameterEntry>& table = parameterTable();
    const auto entry = std::find_if(table.cbegin(), table.cend(),
        [=](const ParameterEntry& known) { return known.number == number && known.row == row; });
    return entry == table.cend() ? QStringLiteral("there is no setting %1 with row %2").arg(number).arg(row)
                                 : QStringLiteral("setting %1 is %2").arg(number).arg(valuesOf(*entry));
}

} // namespace

HexAnswer start(Register& device, HexFields& fields)
{
    const QDateTime time = fields.dateTime(0, 1);
    return fields.isBad() ? Refusal::BadValue : device.start(time);
}

HexAnswer setTime(Register& device, HexFields& fields)
{
    const QDateTime time = fields.dateTime(0, 1);
    return fields.isBad() ? Refusal::BadValue : device.setTime(time);
}

HexAnswer time(Register& device, HexFields&)
{
    const QDateTime now = device.now();
    return QList<QByteArray>{
        now.toString(QStringLiteral("ddMMyy")).toLatin1(), now.toString(QStringLiteral("HHmmss")).toLatin1()};
}

HexAnswer openShift(Register& device, HexFields& fields)
{
    // The one command with the cashier in UTF-8: meant so, all others have the code page.
    const Cashier cashier{fields.utf8(0, longestCashierName), fields.inn(1)};
    return fields.isBad() ? Refusal::BadValue : device.openShift(cashier);
}

HexAnswer closeShift(Register& device, HexFields& fields)
{
    const Cashier cashier{fields.text(0, longestCashierName), fields.inn(1)};
    return fields.isBad() ? Refusal::BadValue : device.shifts().close(cashier);
}

HexAnswer printTotals(Register& device, HexFields& fields)
{
    const Cashier cashier{fields.text(0, longestCashierName), {}};
    return fields.isBad() ? Refusal::BadValue : device.shifts().printTotals(cashier);
}

HexAnswer printAccounting(Register& device, HexFields& fields)
{
    const Cashier cashier{fields.text(0, longestCashierName), {}};
    return fields.isBad() ? Refusal::BadValue : device.reports().printAccounting(cashier);
}

HexAnswer printStored(Register& device, HexFields& fields)
{
    const quint32 number = fields.documentNumber(0);
    return fields.isBad() ? Refusal::BadValue : device.reports().printStored(number);
}

HexAnswer openDrawer(Register& device, HexFields&)
{
    return device.cash().openDrawer();
}

HexAnswer drawerState(Register& device, HexFields&)
{
    return one(device.isDrawerOpen() ? "1" : "0");
}

HexAnswer serialNumber(Register& device, HexFields&)
{
    return one(codepage::fromText(device.identity().serialNumber));
}

HexAnswer state(Register& device, HexFields&)
{
    // No flag of the fatal state is ever raised: what is emulated is a register in good order.
    int flags = 0;
    flags |= device.state().isStarted ? 0 : 1;
    flags |= device.state().shift.isOpen ? 4 : 0;
    flags |= device.isShiftTooLong() ? 8 : 0;
    flags |= device.drive().isArchiveClosed() ? 16 : 0;
    flags |= device.drive().isActivated() ? 0 : 32;
    const Document& document = device.document();
    const int phase = static_cast<int>(document.phase);
    const int type = static_cast<int>(document.type);
    return QList<QByteArray>{"0", QByteArray::number(flags), QByteArray::number(phase * 256 + type)};
}

HexAnswer parameter(Register& device, HexFields& fields)
{
    const int number = fields.number(0);
    const int row = fields.number(1);
    const std::optional<QString> value = device.parameters().value(number, row);
    if (fields.isBad() || !value)
        return {Refusal::BadValue, QStringLiteral("there is no setting %1 with row %2").arg(number).arg(row)};
    return one(codepage::fromText(*value));
}

HexAnswer setParameter(Register& device, HexFields& fields)
{
    const int number = fields.number(0);
    const int row = fields.number(1);
    if (fields.isBad())
        return Refusal::BadValue;
    // The bytes are kept as they are, in the code page of the register. A host that writes UTF-8 does not
    // read back what it wrote; that is how these registers are.
    const QByteArray value = fields.raw(2);
    const QString text = fields.isStrict() ? codepage::toText(value) : QString::fromUtf8(value);
    const Refusal refusal = device.parameters().write(number, row, text);
    if (refusal == Refusal::WrongState)
        return {refusal, QStringLiteral("setting %1 is only read").arg(number)};
    return HexAnswer::judged(refusal, settingMisfit(number, row));
}

// Both forms of the registration data have the same order: number, address of the tax site, date of the last
// registration, INN and name of the user, address and place of trade, INN and name of the OFD, tax systems,
// modes of work, kinds of agent, sender's mail address. A field asks for one of them by its number from 1;
// hosts ask for the tax systems alone.
HexAnswer registrationData(Register& device, HexFields& fields)
{
    const Registration& data = device.state().registration;
    const QList<QByteArray> all{codepage::fromText(data.number), codepage::fromText(data.taxSite),
        device.drive().lastRegistration().toString(QStringLiteral("ddMMyy")).toLatin1(),
        codepage::fromText(data.userInn), codepage::fromText(data.userName), codepage::fromText(data.address),
        codepage::fromText(data.place), codepage::fromText(data.operatorInn),
        codepage::fromText(data.operatorName), QByteArray::number(data.taxSystems),
        QByteArray::number(data.modes), QByteArray::number(data.agents), codepage::fromText(data.senderMail)};
    if (fields.count() == 0)
        return all;
    const int number = fields.numberWithin(0, 1, static_cast<int>(all.size()));
    if (fields.isBad())
        return Refusal::BadValue;
    return one(all.at(number - 1));
}

HexAnswer changeRegistration(Register& device, HexFields& fields)
{
    Registration data;
    data.userName = fields.text(1, 256);
    data.userInn = fields.inn(2);
    data.number = fields.text(3, 20).trimmed();
    const Cashier cashier{fields.text(4, longestCashierName), {}};
    data.address = fields.text(6, 256);
    data.place = fields.text(7, 256);
    data.taxSystems = fields.number(8);
    data.agents = fields.number(9);
    data.modes = fields.number(10);
    data.operatorInn = fields.inn(11);
    data.operatorName = fields.text(12, 256);
    data.taxSite = fields.text(13, 256);
    data.senderMail = fields.text(14, 64);
    // Bits of tag 1205: why the registration is changed.
    const int reasons = fields.number(15);
    if (reasons <= 0)
        fields.reject(15, QStringLiteral("a number above 0"));
    if (fields.isBad())
        return Refusal::BadValue;
    return HexAnswer::judged(device.reports().changeRegistration(data, cashier, reasons),
        QStringLiteral("no registration number, no tax system, or tax numbers without 10 or 12 digits"));
}

HexAnswer setLogo(Register& device, HexFields& fields)
{
    const int size = fields.numberWithin(0, 1, largestLogo);
    if (fields.isBad())
        return Refusal::BadValue;
    if (device.document().isOpen())
        return Refusal::WrongState;
    return HexAnswer::wantsBlock(size);
}

HexAnswer clearLogo(Register& device, HexFields&)
{
    return device.logo().clear();
}

} // namespace emulator::hexcommands
