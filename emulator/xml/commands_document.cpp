#include "register/tags.h"
#include "xml/commands.h"
#include "xml/print.h"
#include "xml/receipt.h"

#include <functional>

namespace emulator::xmlcommands {

namespace {

// A document comes in one piece here, so it is entered step by step and the first refusal ends it. Nobody
// asks for one that the paper ended on to be finished.
using Step = std::function<Refusal()>;

Refusal enter(Register& device, const Document& head, const QList<Step>& steps)
{
    if (const Refusal refusal = device.documents().open(head); refusal != Refusal::None)
        return refusal;
    Refusal refusal = Refusal::None;
    for (const Step& step : steps) {
        if (refusal = step(); refusal != Refusal::None)
            break;
    }
    device.documents().drop();
    return refusal;
}

Refusal addItem(Register& device, const Item& item)
{
    if (!item.agent.isEmpty()) {
        if (const Refusal refusal = device.receipts().bindAgent(item.agent); refusal != Refusal::None)
            return refusal;
    }
    if (!item.markingCode.isEmpty()) {
        if (const Refusal refusal = device.marking().bind(item.markingCode); refusal != Refusal::None)
            return refusal;
    }
    return device.receipts().addItem(item);
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
    for (size_t kind = 0; kind < paymentKinds; ++kind) {
        if (payments[kind] == 0)
            continue;
        const Refusal refusal = device.receipts().pay(static_cast<int>(kind), payments[kind]);
        if (refusal != Refusal::None)
            return refusal;
    }
    return Refusal::None;
}

tape::Code codeOf(const PrintPiece& piece)
{
    constexpr qsizetype ean13 = 13;
    if (piece.kind == PrintPiece::Kind::QrCode)
        return {tape::Symbology::Qr, piece.text};
    return {piece.text.size() == ean13 ? tape::Symbology::Ean13 : tape::Symbology::Other, piece.text};
}

QList<tape::Line> linesOf(const Register& device, const QList<PrintPiece>& pieces)
{
    PageWriter lines = device.newLines();
    for (const PrintPiece& piece : pieces) {
        if (piece.kind == PrintPiece::Kind::Line)
            lines.text(piece.text, tape::attributesOf(piece.attribute));
        else
            lines.add(codeOf(piece));
    }
    return lines.lines();
}

Refusal print(Register& device, const QList<PrintPiece>& pieces)
{
    return pieces.isEmpty() ? Refusal::None : device.documents().print(linesOf(device, pieces));
}

// What the fiscal drive made of the receipt.
XmlNode fiscalData(const Register& device)
{
    const FiscalRecord& record = device.drive().last();
    return XmlNode::structure(QString::number(static_cast<int>(record.type)),
        {XmlNode::number(tag::documentNumber, record.number), XmlNode::text(tag::fiscalSign, record.sign),
            XmlNode::dateTime(tag::dateTime, record.dateTime),
            XmlNode::text(tag::driveNumber, device.drive().number()),
            XmlNode::number(tag::shiftNumber, device.state().shift.number),
            XmlNode::number(tag::receiptNumber, device.state().shift.receipts)});
}

} // namespace

XmlAnswer receipt(const XmlContext& context, const XmlNode& data)
{
    XmlReceipt receipt;
    if (const XmlVerdict verdict = receipt.read(data, context.strict); !verdict.isGood())
        return verdict;
    Register& device = context.device;
    receipt.head.tail = linesOf(device, receipt.tail);
    const Refusal refusal = enter(device, receipt.head,
        {[&] { return print(device, receipt.above); }, [&] { return addItems(device, receipt.items); },
            [&] { return device.receipts().subtotal(); }, [&] { return print(device, receipt.below); },
            [&] { return pay(device, receipt.payments); }, [&] { return device.documents().finish(); }});
    return refusal == Refusal::None ? XmlAnswer(fiscalData(device)) : XmlAnswer(refusal);
}

XmlAnswer moneyDocument(const XmlContext& context, const XmlNode& data)
{
    const qint64 kind = data.numberOf(QStringLiteral("MoneyOperationType"));
    if (kind != 1 && kind != 2)
        return XmlVerdict::badValue(QStringLiteral("MoneyOperationType is 1 or 2"));
    const Money sum = data.moneyOf(QStringLiteral("CashSumm"));
    if (sum <= 0)
        return XmlVerdict::badValue(QStringLiteral("CashSumm is above 0"));
    Document head;
    head.type = kind == 1 ? DocumentType::CashIn : DocumentType::CashOut;
    head.cashier.name = data.textOf(tag::cashier);
    // Without text there is one empty text to read, and nothing to print.
    const XmlNode* const text = data.child(QStringLiteral("HeaderText"));
    const auto pieces = readPrintText(text == nullptr ? QString() : text->value, context.strict);
    if (!pieces)
        return XmlVerdict::badValue(QStringLiteral("HeaderText: no such print sequence"));
    const QList<PrintPiece> above = text == nullptr ? QList<PrintPiece>() : *pieces;
    Register& device = context.device;
    return enter(device, head,
        {[&] { return print(device, above); }, [&] { return device.cash().setSum(sum); },
            [&] { return device.documents().finish(); }});
}

XmlAnswer textDocument(const XmlContext& context, const XmlNode& data)
{
    const auto pieces = readPrintText(data.textOf(QStringLiteral("NonFiscalText")), context.strict);
    if (!pieces)
        return XmlVerdict::badValue(QStringLiteral("NonFiscalText: no such print sequence"));
    Document head;
    head.type = DocumentType::NonFiscal;
    Register& device = context.device;
    return enter(
        device, head, {[&] { return print(device, *pieces); }, [&] { return device.documents().finish(); }});
}

} // namespace emulator::xmlcommands
