// Receipts: gathered here call by call, sent as one request.

#include "frspf.h"

#include <checktypename.h>
#include <decimals.h>
#include <fiscaldocument.h>
#include <frpayment.h>

#include <QJsonObject>

namespace spfxml {

void FrSpf::checkOpen(const FiscalDocument& document)
{
    logger->info(QStringLiteral("Открытие чека %1").arg(checkTypeNameGenitive(document.getDocumentType())));
    openShift();
    // The tax system and the checked marking codes are meant to stay.
    positions.clear();
    payments.clear();
    printLines.clear();
    requisites.clear();
    command->setPrintMode(document.getPrintMode());
}

void FrSpf::checkAddPosition(const FrPosition& position)
{
    logger->info(QStringLiteral("Добавление позиции в чек: %1").arg(position.toString()));
    positions.append(position);
}

void FrSpf::checkPay(const FrPayment& payment)
{
    logger->info(QStringLiteral("Расчет по чеку: тип %1, сумма %2")
                     .arg(payment.kind)
                     .arg(moneyText(payment.getSum())));
    payments[payment.kind] += payment.getSum();
}

QJsonObject FrSpf::checkClose(const FiscalDocument& document)
{
    const hw::fr::CheckType type = document.getDocumentType();
    logger->info(QStringLiteral("Закрытие чека %1").arg(checkTypeName(type)));
    isPortReady();
    const qint32 receiptTaxSystem = taxSystem != 0 ? taxSystem : qint32{getDefaultTaxSystem()};
    // It stays in the list when the receipt fails, so that a repetition sends it twice: it is meant.
    requisites.append({RequestParams::EParamType::Integer, EFrDriver::TaxSystem, receiptTaxSystem});
    try {
        command->checkClose(type, payments, positions, printLines, requisites);
    } catch (const FrCommandException& exception) {
        logger->error(QString::fromUtf8(exception.what()));
        throw;
    }
    checkedMarkingCodes.clear();
    logger->info(QStringLiteral("Чек закрыт"));
    return {};
}

} // namespace spfxml
