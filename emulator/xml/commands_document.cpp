#include "xml/protocol.h"
#include "xml/receipt.h"

#include <functional>

namespace emulator {

namespace {

// A document comes in one piece here, so it is entered step by step and the first refusal ends it.
using Step = std::function<Refusal()>;

Refusal enter(Register& device, const Document& head, const QList<Step>& steps)
{
    if (const Refusal refusal = device.openDocument(head); refusal != Refusal::None)
        return refusal;
    for (const Step& step : steps) {
        if (const Refusal refusal = step(); refusal != Refusal::None) {
            device.dropDocument();
            return refusal;
        }
    }
    return Refusal::None;
}

Refusal addItem(Register& device, const Item& item)
{
    if (!item.agent.isEmpty()) {
        if (const Refusal refusal = device.bindAgent(item.agent); refusal != Refusal::None)
            return refusal;
    }
    if (!item.markingCode.isEmpty()) {
        if (const Refusal refusal = device.bindMarking(item.markingCode); refusal != Refusal::None)
            return refusal;
    }
    return device.addItem(item);
}

Refusal addItems(Register& device, const QList<Item>& items)
{
    for (const Item& item : items) {
        if (const Refusal refusal = addItem(device, item); refusal != Refusal::None)
            return refusal;
    }
    return Refusal::None;
}

Refusal pay(Register& device, const Payments& payments)
{
    for (int kind = 0; kind < paymentKinds; ++kind) {
        const Money sum = payments[static_cast<size_t>(kind)];
        if (const Refusal refusal = sum == 0 ? Refusal::None : device.pay(kind, sum);
            refusal != Refusal::None)
            return refusal;
    }
    return Refusal::None;
}

QString titleOf(const PrintPiece& piece)
{
    constexpr qsizetype ean13 = 13;
    if (piece.kind == PrintPiece::Kind::QrCode)
        return QStringLiteral("QR");
    return piece.text.size() == ean13 ? QStringLiteral("EAN-13") : QStringLiteral("ШТРИХКОД");
}

// What the fiscal drive made of the receipt.
XmlNode fiscalData(const Register& device)
{
    const FiscalRecord& record = device.drive().last();
    return XmlNode::structure(QString::number(static_cast<int>(record.type)),
        {XmlNode::number(QStringLiteral("1040"), record.number),
            XmlNode::text(QStringLiteral("1077"), record.sign),
            XmlNode::dateTime(QStringLiteral("1012"), record.dateTime),
            XmlNode::text(QStringLiteral("1041"), device.drive().number()),
            XmlNode::number(QStringLiteral("1038"), device.shiftNumber()),
            XmlNode::number(QStringLiteral("1042"), device.nextReceiptNumber() - 1)});
}

} // namespace

Refusal XmlProtocol::print(const QList<PrintPiece>& pieces)
{
    for (const PrintPiece& piece : pieces) {
        const Refusal refusal = piece.kind == PrintPiece::Kind::Line
            ? device().printText(piece.text, piece.attribute)
            : device().printPicture(titleOf(piece), piece.text);
        if (refusal != Refusal::None)
            return refusal;
    }
    return Refusal::None;
}

XmlAnswer XmlProtocol::receipt(const XmlNode& data)
{
    XmlReceipt receipt;
    if (const XmlVerdict verdict = receipt.read(data); !verdict.isGood())
        return verdict;
    Register& target = device();
    const Refusal refusal = enter(target, receipt.head,
        {[&] { return print(receipt.above); }, [&] { return addItems(target, receipt.items); },
            [&] { return target.subtotal(); }, [&] { return print(receipt.below); },
            [&] { return pay(target, receipt.payments); }, [&] { return target.finishDocument(); }});
    return refusal == Refusal::None ? XmlAnswer(fiscalData(target)) : XmlAnswer(refusal);
}

XmlAnswer XmlProtocol::moneyDocument(const XmlNode& data)
{
    const qint64 kind = data.numberOf(QStringLiteral("MoneyOperationType"));
    if (kind != 1 && kind != 2)
        return XmlVerdict::badValue(QStringLiteral("MoneyOperationType"));
    Document head;
    head.type = kind == 1 ? DocumentType::CashIn : DocumentType::CashOut;
    head.cashier.name = data.textOf(QStringLiteral("1021"));
    const XmlNode* const text = data.child(QStringLiteral("HeaderText"));
    const auto pieces = readPrintText(text == nullptr ? QString() : text->value);
    if (!pieces)
        return XmlVerdict::badValue(QStringLiteral("HeaderText"));
    const QList<PrintPiece> above = text == nullptr ? QList<PrintPiece>() : *pieces;
    return enter(device(), head,
        {[&] { return print(above); },
            [&] { return device().setMoney(data.moneyOf(QStringLiteral("CashSumm"))); },
            [this] { return device().finishDocument(); }});
}

XmlAnswer XmlProtocol::textDocument(const XmlNode& data)
{
    const auto pieces = readPrintText(data.textOf(QStringLiteral("NonFiscalText")));
    if (!pieces)
        return XmlVerdict::badValue(QStringLiteral("NonFiscalText"));
    Document head;
    head.type = DocumentType::NonFiscal;
    return enter(
        device(), head, {[&] { return print(*pieces); }, [this] { return device().finishDocument(); }});
}

} // namespace emulator
