// Documents: receipts, money documents, texts, marking codes.

#include "frspf.h"

#include "checktypename.h"
#include "command.h"
#include "decimals.h"
#include "driverlogger.h"
#include "drivertexts.h"
#include "exceptions.h"
#include "frutils.h"
#include "protocol.h"
#include "stringutils.h"

namespace spfhex {

void FrSpf::checkOpen(const FiscalDocument& document)
{
    const hw::fr::CheckType type = document.getDocumentType();
    logger->info(
        QStringLiteral("Открытие чека (%1 - %2), оператор: %3")
            .arg(QString::number(static_cast<int>(type)), checkTypeName(type), document.getCashierName()));
    if (type != hw::fr::CheckSale && type != hw::fr::CheckSaleReturn)
        throw FrCommandException(drivertexts::unsupportedCheckType());
    isPortReady();
    command->openDocument(document, cashierInn);
    agentDataBound = false;
    logDone();
}

QJsonObject FrSpf::checkClose(const FiscalDocument&)
{
    closeCheckOrTextDocument(QStringLiteral("Закрытие чека"));
    logDone();
    return {};
}

void FrSpf::checkCancel()
{
    logger->info(QStringLiteral("Аннулирование чека"));
    isPortReady();
    command->cancelDocument();
    logDone();
}

void FrSpf::checkWaitForPrint()
{
    logger->info(QStringLiteral("Ожидание завершения печати чека"));
    isPortReady();
    if (command->requestStateStatus().isCloseDocumentRequired())
        command->finishDocument();
    logDone();
}

void FrSpf::checkAddPosition(const FrPosition& position)
{
    logger->info("Добавление позиции в чек: %1", position.toString());
    isPortReady();
    agentDataBound = command->bindAgentData(position);
    const QString code = position.getMarkingCode();
    if (!code.isEmpty())
        command->bindMarkingCode(FrUtils::getMarkingCodeWithSeparators(code));
    const auto checked = checkedMarkingCodes.constFind(code);
    command->addPaymentObject(
        position, checked == checkedMarkingCodes.cend() ? QVariant() : QVariant(checked.value()));
    logDone();
}

void FrSpf::checkTotal()
{
    logger->info(QStringLiteral("Переход в подытог"));
    isPortReady();
    command->subtotal();
    logDone();
}

void FrSpf::checkPay(const FrPayment& payment)
{
    logger->info(
        QStringLiteral("Расчет по чеку: (%1) %2").arg(payment.kind).arg(moneyText(payment.getSum())));
    isPortReady();
    if (payment.kind >= protocol::paymentKindCount)
        throw FrCommandException(QStringLiteral("Тип оплаты не поддерживается ФР"));
    command->payment(payment);
    logDone();
}

void FrSpf::checkPrint(const QList<QString>& lines)
{
    printLines(lines);
    logDone();
}

void FrSpf::moneyCheckOpen(hw::fr::CheckType type, const QString&)
{
    openDocument(type);
    logDone();
}

void FrSpf::moneyCheckPrint(const QList<QString>& lines)
{
    printLines(lines);
    logDone();
}

QJsonObject FrSpf::moneyCheckClose(double sum)
{
    logger->info(QStringLiteral("Закрытие чека внесения/выема"));
    isPortReady();
    command->sumInOut(sum);
    command->finishDocument();
    logDone();
    return {};
}

void FrSpf::textDocOpen(hw::fr::CheckType type)
{
    openDocument(type);
    logDone();
}

void FrSpf::textDocPrint(const QList<QString>& lines)
{
    printLines(lines);
    logDone();
}

void FrSpf::textDocClose()
{
    closeCheckOrTextDocument(QStringLiteral("Закрытие текстового документа"));
    logDone();
}

void FrSpf::barcodePrint(const Barcode& barcode)
{
    logger->info("Печать штрих-кода (%1)", barcode.text);
    isPortReady();
    if (barcode.type == Barcode::Qr)
        command->printQrCode(barcode);
    else
        command->printBarcode(barcode);
    logDone();
}

void FrSpf::setFont(const QList<EFrDriver::FontTypes>& fonts)
{
    currentFont = fonts.value(0, EFrDriver::UndefinedFont);
}

void FrSpf::resetFont()
{
    currentFont = EFrDriver::UndefinedFont;
}

void FrSpf::openDocument(hw::fr::CheckType type) const
{
    logger->info(QStringLiteral("Открытие чека: ") + checkTypeName(type));
    isPortReady();
    FiscalDocument document(type);
    document.setCashierName(cashierName);
    command->openDocument(document, cashierInn);
}

void FrSpf::closeCheckOrTextDocument(const QString& message) const
{
    logger->info(message);
    isPortReady();
    command->finishDocument();
}

void FrSpf::printLines(const QList<QString>& lines) const
{
    logger->info(QStringLiteral("Печать строк"));
    isPortReady();
    for (const QString& line : lines)
        command->printText(stringutils::removeControlCharacters(line), currentFont);
}

int FrSpf::checkMarkingCode(const MarkedPosition& position, bool recheck)
{
    logger->info(QStringLiteral("Проверка кода маркировки"));
    const auto checked = checkedMarkingCodes.constFind(position.markingCode);
    if (!recheck && checked != checkedMarkingCodes.cend())
        return checked.value();
    return command->checkMarkingCode(position);
}

void FrSpf::clearMarkingCodes()
{
    logger->info(QStringLiteral("Очистка результатов проверки КМ в ФН"));
    try {
        command->clearMarkingCodes();
    } catch (const FrCommandException& exception) {
        // Meant to be swallowed, a lost connection as well; the driver's memory is emptied all the same.
        logger->warn(QString::fromUtf8(exception.what()));
    }
    checkedMarkingCodes.clear();
}

} // namespace spfhex
