#include "hex/commands.h"

namespace emulator::hexcommands {

namespace {

constexpr int documentCountFields = 13;
constexpr int documentSumFields = 11;

QByteArray moneyField(Money sum)
{
    return moneyText(sum).toLatin1();
}

QList<QByteArray> paymentFields(const Turnover& turnover)
{
    QList<QByteArray> fields;
    for (const Money sum : turnover.payments)
        fields.append(moneyField(sum));
    return fields;
}

QList<QByteArray> dateTimeFields(const QDateTime& time)
{
    return {time.toString(QStringLiteral("ddMMyy")).toLatin1(),
        time.toString(QStringLiteral("HHmmss")).toLatin1()};
}

// When everything is sent there is no first document that waits.
QList<QByteArray> firstUnsent(const FiscalDrive& drive, bool withDate)
{
    const FiscalRecord* const record = drive.firstUnsent();
    if (withDate)
        return record == nullptr ? QList<QByteArray>{{}, {}} : dateTimeFields(record->dateTime);
    return {QByteArray::number(record == nullptr ? 0 : record->number)};
}

QList<QByteArray> driveState(const Register& device)
{
    const FiscalDrive& drive = device.drive();
    const Document& document = device.document();
    const bool receipt = document.isReceiptInWork();
    return {QByteArray::number(drive.lifePhase()), receipt ? "4" : "0",
        receipt && !document.items.isEmpty() ? "1" : "0", device.state().shift.isOpen ? "1" : "0",
        QByteArray::number(drive.warnings(device.now()))};
}

QList<QByteArray> documentCounts(const ShiftCounters& counters)
{
    QList<QByteArray> fields(documentCountFields, "0");
    fields[0] = QByteArray::number(counters.sales.count);
    fields[1] = QByteArray::number(counters.returns.count);
    fields[11] = QByteArray::number(counters.cashIn.count);
    fields[12] = QByteArray::number(counters.cashOut.count);
    return fields;
}

QList<QByteArray> documentSums(const ShiftCounters& counters)
{
    QList<QByteArray> fields(documentSumFields, moneyField(0));
    fields[0] = moneyField(counters.sales.sum);
    fields[1] = moneyField(counters.returns.sum);
    fields[9] = moneyField(counters.cashIn.sum);
    fields[10] = moneyField(counters.cashOut.sum);
    return fields;
}

} // namespace

HexAnswer driveData(Register& device, HexFields& fields)
{
    if (fields.count() == 0)
        return driveState(device);
    const FiscalDrive& drive = device.drive();
    const int number = fields.number(0);
    switch (fields.isBad() ? -1 : number) {
    case 1:
        return QList<QByteArray>{QByteArray::number(drive.last().number)};
    case 2:
        return dateTimeFields(drive.last().dateTime);
    case 3:
        return QList<QByteArray>{drive.number().toLatin1()};
    case 5:
        return QList<QByteArray>{drive.expiry().toString(QStringLiteral("ddMMyy")).toLatin1()};
    case 6:
        return QList<QByteArray>{QByteArray::number(drive.registrationsLeft())};
    case 7:
        return QList<QByteArray>{QByteArray::number(drive.registrationsDone())};
    case 8:
        return QList<QByteArray>{device.state().isOperatorReachable ? "1" : "0"};
    case 10:
        return firstUnsent(drive, false);
    case 11:
        return firstUnsent(drive, true);
    case 12:
        return QList<QByteArray>{"1.2"};
    case 14:
        // The first six tell of the marking subsystem of the drive, the seventh counts the notifications.
        return QList<QByteArray>{
            "0", "0", "0", "0", "0", "0", QByteArray::number(device.state().marking.notifications)};
    case 15:
        return QList<QByteArray>{drive.version().toLatin1(), "1"};
    default:
        fields.reject(0, QStringLiteral("one of 1, 2, 3, 5, 6, 7, 8, 10, 11, 12, 14, 15"));
        return Refusal::BadValue;
    }
}

HexAnswer deviceData(Register& device, HexFields& fields)
{
    const Identity& identity = device.identity();
    const int number = fields.number(0);
    // Only the version has two halves to ask for.
    if (fields.isStrict() && fields.count() > 1 && number != 0)
        return {Refusal::BadValue, QStringLiteral("field 2 goes with question 0 alone")};
    switch (fields.isBad() ? -1 : number) {
    case 0:
        return QList<QByteArray>{QByteArray::number(
            fields.count() > 1 && fields.number(1) == 1 ? identity.release : identity.model)};
    case 1:
        return QList<QByteArray>{QByteArray::number(device.state().shift.number)};
    case 3:
        return paymentFields(device.state().shift.counters.sales);
    case 4:
        return paymentFields(device.state().shift.counters.returns);
    case 5:
        return QList<QByteArray>{moneyField(device.state().drawer.cash)};
    case 7:
        return QList<QByteArray>{QByteArray::number(device.state().shift.receipts + 1)};
    case 9:
        return QList<QByteArray>{device.state().registration.userInn.toLatin1()};
    case 10:
        return QList<QByteArray>{device.state().registration.number.toLatin1()};
    case 13:
        return documentCounts(device.state().shift.counters);
    case 14:
        return documentSums(device.state().shift.counters);
    default:
        fields.reject(0, QStringLiteral("one of 0, 1, 3, 4, 5, 7, 9, 10, 13, 14"));
        return Refusal::BadValue;
    }
}

} // namespace emulator::hexcommands
