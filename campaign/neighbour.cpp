#include "neighbour.h"

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

void sell(emulator::Register& device, emulator::Money price)
{
    device.openShift(neighbour);
    emulator::Item item;
    item.name = neighboursGoods();
    item.price = price;
    item.quantity = 1000;
    item.tax = 1;
    device.documents().open(documentOf(emulator::DocumentType::Sale));
    device.receipts().addItem(item);
    device.receipts().subtotal();
    device.receipts().pay(0, price);
    device.documents().finish();
}

void putCashIn(emulator::Register& device, emulator::Money sum)
{
    device.openShift(neighbour);
    device.documents().open(documentOf(emulator::DocumentType::CashIn));
    device.cash().setSum(sum);
    device.documents().finish();
}

} // namespace

QString neighboursGoods()
{
    return QStringLiteral("Сосед");
}

void actAsNeighbour(FaultKind deed, emulator::Register& device, emulator::Money price)
{
    // A document of ours in work is in its way, and so is an empty printer.
    if (device.document().isOpen() || !device.hasPaper())
        return;
    if (deed == FaultKind::NeighbourSells)
        sell(device, price);
    else if (deed == FaultKind::NeighbourPutsCashIn)
        putCashIn(device, price);
    else if (deed == FaultKind::NeighbourClosesShift)
        device.shifts().close(neighbour);
    else
        device.shifts().printTotals(neighbour);
}
