// Documents: receipts, money documents, texts.

#include "command.h"

#include "barcode.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "fiscaldocument.h"
#include "frpayment.h"
#include "requests.h"

#include <QMap>

#include <log4qt/logger.h>

namespace spfhex {

namespace {

protocol::DocumentType documentType(hw::fr::CheckType type)
{
    static const QMap<hw::fr::CheckType, protocol::DocumentType> types{
        {hw::fr::CheckSale, protocol::SaleDocument},
        {hw::fr::CheckSaleReturn, protocol::SaleReturnDocument},
        {hw::fr::CheckCashIn, protocol::CashInDocument},
        {hw::fr::CheckCashOut, protocol::CashOutDocument},
        {hw::fr::CheckNonFiscal, protocol::NonFiscalDocument},
        {hw::fr::CheckCopy, protocol::NonFiscalDocument},
    };
    return types.value(type, protocol::NoDocument);
}

protocol::TextAttribute textAttribute(EFrDriver::FontTypes font)
{
    switch (font) {
    case EFrDriver::DoubleSizeFont:
        return protocol::DoubleSizeText;
    case EFrDriver::CondensedFont:
    case EFrDriver::SmallFont:
        return protocol::CondensedText;
    case EFrDriver::DoubleWidthFont:
        return protocol::DoubleWidthText;
    case EFrDriver::DoubleHeightFont:
        return protocol::DoubleHeightText;
    case EFrDriver::InvertedFont:
        return protocol::InvertedText;
    default:
        return protocol::NormalText;
    }
}

int barcodeType(int type)
{
    switch (type) {
    case Barcode::Code93:
        return protocol::Code93Barcode;
    case Barcode::Code128:
        return protocol::Code128Barcode;
    default:
        return type;
    }
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
    sendCommand(OpenDocument,
        request::OpenDocument{
            .type = documentType(document.getDocumentType()),
            .cashierName = document.getCashierName(),
            .cashierInn = cashierInn,
            .taxSystem = static_cast<int>(taxSystem),
            .customerAddress = document.getCustomerAddress(),
            .withoutPrinting = document.getPrintMode() == CheckPrintNone,
        });
}

void Command::printText(const QString& text, EFrDriver::FontTypes font) const
{
    logger->debug(QStringLiteral("Печать текста"));
    sendCommand(PrintText, request::PrintText{.text = text, .attribute = textAttribute(font)});
}

void Command::finishDocument() const
{
    logger->debug(QStringLiteral("Завершение документа"));
    sendCommand(FinishDocument, request::FinishDocument{});
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
    sendCommand(Payment, request::Payment{.kind = payment.kind, .sum = payment.getSum()});
}

void Command::sumInOut(double sum) const
{
    logger->debug(QStringLiteral("Внесение/изъятие суммы"));
    sendCommand(SumInOut, request::SumInOut{.sum = sum});
}

void Command::printBarcode(const Barcode& barcode) const
{
    logger->debug(QStringLiteral("Печать штрихкода"));
    sendCommand(PrintBarcode,
        request::PrintBarcode{
            .textPosition = barcode.textPosition,
            .moduleWidth = barcode.moduleWidth,
            .height = barcode.height,
            .type = barcodeType(barcode.type),
            .text = barcode.text,
        });
}

void Command::printQrCode(const Barcode& barcode) const
{
    logger->debug(QStringLiteral("Печать QR-кода"));
    sendCommand(PrintQrCode, request::PrintQrCode{.moduleWidth = barcode.moduleWidth, .text = barcode.text});
}

} // namespace spfhex
