#include "basicfrdriver.h"
#include "decimals.h"
#include "driverlogger.h"

// Receipts, money and text documents as a driver answers that has none of its own for them.

void BasicFrDriver::checkOpen(const FiscalDocument&) { }

QJsonObject BasicFrDriver::checkClose(const FiscalDocument&)
{
    return {};
}

void BasicFrDriver::checkCancel() { }

void BasicFrDriver::checkWaitForPrint() { }

void BasicFrDriver::cutAfterChecksClosing() { }

void BasicFrDriver::checkAddPosition(const FrPosition& position)
{
    logger->info("Добавление позиции в чек: %1", position.toString());
}

void BasicFrDriver::checkStornoPosition(const FrPosition&) { }

void BasicFrDriver::checkTotal() { }

void BasicFrDriver::checkPay(const FrPayment& payment)
{
    logger->info(
        QStringLiteral("Расчет по чеку: (%1) %2").arg(payment.kind).arg(moneyText(payment.getSum())));
}

void BasicFrDriver::checkPrint(const QList<QString>&) { }

void BasicFrDriver::moneyCheckOpen(hw::fr::CheckType, const QString&) { }

void BasicFrDriver::moneyCheckPrint(const QList<QString>&) { }

QJsonObject BasicFrDriver::moneyCheckClose(double)
{
    return {};
}

void BasicFrDriver::moneyCheckWaitForPrint() { }

void BasicFrDriver::textDocOpen(hw::fr::CheckType)
{
    logger->info(QStringLiteral("Открытие текстового документа"));
}

void BasicFrDriver::textDocPrint(const QList<QString>&) { }

void BasicFrDriver::textDocClose() { }

void BasicFrDriver::barcodePrint(const Barcode&)
{
    logger->warn(QStringLiteral("Печать штрих-кода не поддерживается устройством"));
}

int BasicFrDriver::getDefaultPaymentType()
{
    return 1;
}

void BasicFrDriver::cancelCheckOpen(const FiscalDocument&) { }

void BasicFrDriver::cancelCheckTotal(const FiscalDocument&) { }

void BasicFrDriver::cancelCheckPay(const FiscalDocument&) { }

QJsonObject BasicFrDriver::cancelCheckClose(const FiscalDocument&)
{
    return {};
}

void BasicFrDriver::cashierLogin(const FrUser&) { }

void BasicFrDriver::cashierLogout(const FrUser&) { }

void BasicFrDriver::setRequisite(const FdRequisite& requisite)
{
    logger->info(QStringLiteral("Запись реквизита %1 (%2) в ФР")
                     .arg(static_cast<int>(requisite.getTag()))
                     .arg(requisite.getDescription()));
}

int BasicFrDriver::getMainPaymentType(int type)
{
    return type;
}

void BasicFrDriver::setCheckTemplate(int, const QString&) { }

void BasicFrDriver::continuePrintClosedDoc() { }

int BasicFrDriver::checkMarkingCode(const MarkedPosition&, bool)
{
    return 0;
}

void BasicFrDriver::clearMarkingCodes() { }

bool BasicFrDriver::isLastCheckWithNumber(const QString&)
{
    return false;
}

QJsonObject BasicFrDriver::getLastCheck(const FiscalDocument&)
{
    return {};
}

void BasicFrDriver::addPostLines(const QList<FrPrintData>&)
{
    logger->warn(QStringLiteral("Печать дополнительных элементов при закрытии чека не поддерживается"));
}

void BasicFrDriver::clearLinesForPrint() { }
