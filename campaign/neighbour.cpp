#include "neighbour.h"

#include <numeric>

namespace {

const emulator::Cashier neighbour{QStringLiteral("Сосед"), QStringLiteral("772100000040")};

emulator::Document documentOf(emulator::DocumentType type)
{
    emulator::Document document;
    document.type = type;
    document.cashier = neighbour;
    document.taxSystem = 1;
    return document;
}

bool isDone(emulator::Refusal refusal)
{
    return refusal == emulator::Refusal::None;
}

/// By kind of payment; cash comes last.
bool sell(emulator::Register& device, const sale::PaymentSums& payments)
{
    device.openShift(neighbour);
    emulator::Item item;
    item.name = neighboursGoods();
    item.price = std::accumulate(payments.cbegin(), payments.cend(), qint64{0});
    item.quantity = 1000;
    item.tax = 1;
    device.documents().open(documentOf(emulator::DocumentType::Sale));
    device.receipts().addItem(item);
    device.receipts().subtotal();
    for (const int kind : {1, 0}) {
        if (payments.value(kind) > 0)
            device.receipts().pay(kind, payments.value(kind));
    }
    return isDone(device.documents().finish());
}

bool putCashIn(emulator::Register& device, emulator::Money sum)
{
    device.openShift(neighbour);
    device.documents().open(documentOf(emulator::DocumentType::CashIn));
    device.cash().setSum(sum);
    return isDone(device.documents().finish());
}

/// Which a register does in a closed shift alone.
bool registerAnew(emulator::Register& device)
{
    constexpr int otherReasons = 1;
    if (device.drive().registrationsLeft() == 0)
        return false;
    device.shifts().close(neighbour);
    return isDone(device.reports().changeRegistration(device.state().registration, neighbour, otherReasons));
}

} // namespace

QString neighboursGoods()
{
    return QStringLiteral("Сосед");
}

bool actAsNeighbour(
    FaultKind deed, emulator::Register& device, emulator::Money price, const sale::Movement& ours)
{
    // A document of ours in work is in its way, and so is an empty printer.
    if (device.document().isOpen() || !device.hasPaper())
        return false;
    switch (deed) {
    case FaultKind::NeighbourSells:
        return sell(device, {{0, price}});
    case FaultKind::NeighbourSellsTheSame:
        return sell(device, ours.payments);
    case FaultKind::NeighbourPutsCashIn:
        return putCashIn(device, price);
    case FaultKind::NeighbourClosesShift:
        return isDone(device.shifts().close(neighbour));
    case FaultKind::NeighbourRegisters:
        return registerAnew(device);
    default:
        return isDone(device.shifts().printTotals(neighbour));
    }
}
