// Rules about the people of a receipt: cashier, buyer, agents and suppliers.

#include "cashiername.h"
#include "judgement.h"
#include "receipttr.h"
#include "rulelist.h"
#include "taxnumber.h"

namespace receipt::rules {

namespace {

QString valueOf(const FdRequisiteMap& fields, EFrDriver::RequisiteTypes tag)
{
    return fields.value(tag).getSourceData().toString();
}

FdRequisiteMap buyerOf(const Receipt& receipt)
{
    for (const FdRequisite& requisite : receipt.requisites) {
        if (requisite.getTag() == EFrDriver::CustomerBlock)
            return requisite.toMap();
    }
    return {};
}

/// Over XML the fields of such a block go out with it, those that are missing as well.
void warnOfEmpty(Judgement& judgement, const QString& path, int tag)
{
    if (judgement.options.protocol == Protocol::Xml)
        judgement.warning(path, {}, tr("is missing: over XML tag %1 goes out empty").arg(tag));
}

void judgeInn(Judgement& judgement, const QString& path, const QString& inn)
{
    if (!inn.isEmpty() && !isInn(inn))
        judgement.warning(path, inn, tr("has wrong check digits; it is sent as it stands"));
}

void judgeAgent(Judgement& judgement, const ReceiptItem& item)
{
    const FrPosition& position = item.position;
    const QString supplier = item.path + QStringLiteral(".supplierInfo");
    if (!position.hasFdRequisite(EFrDriver::SupplierInn))
        judgement.error(supplier + QStringLiteral(".vatin"), {},
            tr("is missing: an agent's goods need the tax number of their supplier, tag 1226; "
               "000000000000 for one who has none"));
    const FdRequisiteMap data = position.getRequisite(EFrDriver::SupplierData).toMap();
    if (!data.contains(EFrDriver::SupplierPhone))
        warnOfEmpty(judgement, supplier + QStringLiteral(".phones"), EFrDriver::SupplierPhone);
    if (!data.contains(EFrDriver::SupplierName))
        judgement.warning(supplier + QStringLiteral(".name"), {},
            tr("is missing: the supplier of an agent's goods, tag 1225, goes out empty"));
}

} // namespace

void delivery(Judgement& judgement)
{
    const FiscalDocument& document = judgement.receipt.document;
    if (document.getPrintMode() == CheckPrintNone && document.getCustomerAddress().isEmpty())
        judgement.error(QStringLiteral("clientInfo.emailOrPhone"), {},
            tr("is missing: an electronic receipt goes to an address or a telephone, tag 1008"));
}

void cashier(Judgement& judgement)
{
    const QString name = judgement.receipt.cashier.value_or(FrUser()).name;
    if (const auto warning = shiftCashierWarning(name, judgement.options.protocol))
        judgement.warning(QStringLiteral("operator.name"), name, *warning);
}

void buyer(Judgement& judgement)
{
    const FdRequisiteMap fields = buyerOf(judgement.receipt);
    if (fields.isEmpty())
        return;
    if (!fields.contains(EFrDriver::CustomerName))
        warnOfEmpty(judgement, QStringLiteral("clientInfo.name"), EFrDriver::CustomerName);
    if (!fields.contains(EFrDriver::CustomerInn))
        warnOfEmpty(judgement, QStringLiteral("clientInfo.vatin"), EFrDriver::CustomerInn);
}

void agents(Judgement& judgement)
{
    for (const ReceiptItem& item : judgement.receipt.items) {
        if (item.position.hasFdRequisite(EFrDriver::ItemAgentType))
            judgeAgent(judgement, item);
        else if (item.position.hasSupplierRequisites())
            judgement.warning(item.path + QStringLiteral(".agentInfo"), {},
                tr("is missing: a supplier belongs to an agent's goods, whose tag 1222 goes out empty"));
    }
}

void taxNumbers(Judgement& judgement)
{
    const Receipt& receipt = judgement.receipt;
    judgeInn(judgement, QStringLiteral("operator.vatin"), receipt.cashier.value_or(FrUser()).inn);
    judgeInn(
        judgement, QStringLiteral("clientInfo.vatin"), valueOf(buyerOf(receipt), EFrDriver::CustomerInn));
    for (const ReceiptItem& item : receipt.items) {
        const FdRequisiteMap agent = item.position.getRequisite(EFrDriver::AgentData).toMap();
        judgeInn(judgement, item.path + QStringLiteral(".agentInfo.moneyTransferOperator.vatin"),
            valueOf(agent, EFrDriver::TransferOperatorInn));
        judgeInn(judgement, item.path + QStringLiteral(".supplierInfo.vatin"),
            valueOf(item.position.getRequisites(), EFrDriver::SupplierInn));
    }
}

} // namespace receipt::rules
