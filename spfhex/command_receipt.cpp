// Documents: receipts, money documents, texts.

#include "command.h"

#include "barcode.h"
#include "cp866.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "fiscaldocument.h"
#include "frpayment.h"
#include "frutils.h"

#include <QMap>

#include <logger.h>

namespace spfhex {

namespace {

// The device takes no longer texts in one frame.
constexpr qsizetype maxTextBytes = 256;

int deviceDocumentCode(hw::fr::CheckType type)
{
    static const QMap<hw::fr::CheckType, int> codes{
        {hw::fr::CheckSale, 2},
        {hw::fr::CheckSaleReturn, 3},
        {hw::fr::CheckCashIn, 4},
        {hw::fr::CheckCashOut, 5},
        {hw::fr::CheckNonFiscal, 1},
        {hw::fr::CheckCopy, 1},
    };
    return codes.value(type, 0);
}

int textAttribute(EFrDriver::FontTypes font)
{
    switch (font) {
    case EFrDriver::DoubleWidthFont:
        return 48;
    case EFrDriver::CondensedFont:
    case EFrDriver::SmallFont:
        return 1;
    case EFrDriver::LargeFont:
        return 32;
    case EFrDriver::DoubleHeightFont:
        return 16;
    case EFrDriver::InvertedFont:
        return 128;
    default:
        return 0;
    }
}

int deviceBarcodeType(int type)
{
    switch (type) {
    case Barcode::Code93:
        return 7;
    case Barcode::Code128:
        return 8;
    default:
        return type;
    }
}

QString money(double sum)
{
    return QString::number(sum, 'f', 2);
}

} // namespace

void Command::openDocument(const FiscalDocument& document, const QString& cashierInn) const
{
    logger->debug(QStringLiteral("Открытие документа"));
    hw::fr::common::TaxSystemType taxSystem = document.getTaxSystem();
    if (taxSystem == hw::fr::common::TaxSystemNone) {
        const QList<hw::fr::common::TaxSystemType> registered = getTaxSystems();
        if (registered.isEmpty())
            throw FrCommandException(drivertexts::badAnswer());
        taxSystem = registered.constFirst();
    }
    const int withoutPrinting = document.getPrintMode() == CheckPrintNone ? 1 : 0;
    sendCommand(OpenDocument,
        {deviceDocumentCode(document.getDocumentType()), QVariant(), toCp866(document.getCashierName()),
            cashierInn, QVariant(), static_cast<int>(taxSystem), toCp866(document.getCustomerAddress()),
            withoutPrinting, QVariant(), QVariant()});
}

void Command::printText(const QString& text, EFrDriver::FontTypes font) const
{
    logger->debug(QStringLiteral("Печать текста"));
    sendCommand(PrintText, {FrUtils::to866(text).left(maxTextBytes), textAttribute(font)});
}

void Command::finishDocument() const
{
    logger->debug(QStringLiteral("Завершение документа"));
    sendCommand(FinishDocument, {0, 1, 0});
}

void Command::cancelDocument() const
{
    logger->debug(QStringLiteral("Отмена документа"));
    sendCommand(CancelDocument, {});
}

void Command::subtotal() const
{
    logger->debug(QStringLiteral("Подытог"));
    sendCommand(Subtotal, {});
}

void Command::payment(const FrPayment& payment) const
{
    logger->debug(QStringLiteral("Оплата"));
    sendCommand(Payment, {payment.kind, money(payment.getSum())});
}

void Command::sumInOut(double sum) const
{
    logger->debug(QStringLiteral("Внесение/изъятие суммы"));
    sendCommand(SumInOut, {QVariant(), money(sum)});
}

void Command::printBarcode(const Barcode& barcode) const
{
    logger->debug(QStringLiteral("Печать штрихкода"));
    sendCommand(PrintBarcode,
        {barcode.textPosition, barcode.moduleWidth, barcode.height, deviceBarcodeType(barcode.type),
            FrUtils::to866(barcode.text)});
}

void Command::printQrCode(const Barcode& barcode) const
{
    logger->debug(QStringLiteral("Печать QR-кода"));
    sendCommand(PrintQrCode, {barcode.moduleWidth, 1, FrUtils::to866(barcode.text).left(maxTextBytes)});
}

} // namespace spfhex
