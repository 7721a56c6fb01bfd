#include "hex/protocol.h"

namespace emulator {

namespace {

constexpr int documentCountFields = 13;
constexpr int documentSumFields = 11;

QByteArray text(Money sum)
{
    return moneyText(sum).toLatin1();
}

QList<QByteArray> paymentFields(const Turnover& turnover)
{
    QList<QByteArray> fields;
    for (const Money sum : turnover.payments)
        fields.append(text(sum));
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

} // namespace

QList<QByteArray> HexProtocol::driveState() const
{
    const FiscalDrive& drive = device().drive();
    const Document& document = device().document();
    const bool receipt = document.isReceipt() && !document.isStored();
    return {QByteArray::number(drive.lifePhase()), receipt ? "4" : "0",
        receipt && !document.items.isEmpty() ? "1" : "0", device().isShiftOpen() ? "1" : "0",
        QByteArray::number(drive.warnings(device().now()))};
}

HexProtocol::Answer HexProtocol::driveData(HexFields& fields)
{
    if (fields.count() == 0)
        return driveState();
    const FiscalDrive& drive = device().drive();
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
        return QList<QByteArray>{device().isOperatorReachable() ? "1" : "0"};
    case 10:
        return firstUnsent(drive, false);
    case 11:
        return firstUnsent(drive, true);
    case 12:
        return QList<QByteArray>{"1.2"};
    case 14:
        // The first six tell of the marking subsystem of the drive, the seventh counts the notifications.
        return QList<QByteArray>{
            "0", "0", "0", "0", "0", "0", QByteArray::number(device().unsentNotifications())};
    case 15:
        return QList<QByteArray>{drive.version().toLatin1(), "1"};
    default:
        return Refusal::BadValue;
    }
}

HexProtocol::Answer HexProtocol::deviceData(HexFields& fields)
{
    const Identity& identity = device().identity();
    const int number = fields.number(0);
    switch (fields.isBad() ? -1 : number) {
    case 0:
        return QList<QByteArray>{
            QByteArray::number(fields.number(1) == 1 ? identity.release : identity.model)};
    case 1:
        return QList<QByteArray>{QByteArray::number(device().shiftNumber())};
    case 3:
        return paymentFields(device().counters().sales);
    case 4:
        return paymentFields(device().counters().returns);
    case 5:
        return QList<QByteArray>{text(device().cashInDrawer())};
    case 7:
        return QList<QByteArray>{QByteArray::number(device().nextReceiptNumber())};
    case 9:
        return QList<QByteArray>{device().registration().userInn.toLatin1()};
    case 10:
        return QList<QByteArray>{device().registration().number.toLatin1()};
    case 13:
        return documentCounts();
    case 14:
        return documentSums();
    default:
        return Refusal::BadValue;
    }
}

QList<QByteArray> HexProtocol::documentCounts() const
{
    const ShiftCounters& counters = device().counters();
    QList<QByteArray> fields(documentCountFields, "0");
    fields[0] = QByteArray::number(counters.sales.count);
    fields[1] = QByteArray::number(counters.returns.count);
    fields[11] = QByteArray::number(counters.cashIn.count);
    fields[12] = QByteArray::number(counters.cashOut.count);
    return fields;
}

QList<QByteArray> HexProtocol::documentSums() const
{
    const ShiftCounters& counters = device().counters();
    QList<QByteArray> fields(documentSumFields, text(0));
    fields[0] = text(counters.sales.sum);
    fields[1] = text(counters.returns.sum);
    fields[9] = text(counters.cashIn.sum);
    fields[10] = text(counters.cashOut.sum);
    return fields;
}

} // namespace emulator
