// Positions with their agent, supplier and marking data.

#include "command.h"

#include "fdrequisite.h"
#include "frposition.h"
#include "frutils.h"
#include "markedposition.h"
#include "requests.h"

#include <log4qt/logger.h>

namespace spfhex {

namespace {

constexpr int fullSettlement = 4;

request::OptionalText textOf(const FdRequisiteMap& requisites, EFrDriver::RequisiteTypes tag)
{
    const auto found = requisites.constFind(tag);
    if (found == requisites.cend())
        return {};
    return found->getSourceData().toString();
}

// Hosts give the date as "dd.MM.yyyy"; what is no such date goes as an empty field.
QDate industryDate(const FdRequisiteMap& industry)
{
    const QString text = industry.value(EFrDriver::IndustryDocumentDate).getSourceData().toString();
    return QDate::fromString(text, QStringLiteral("dd.MM.yyyy"));
}

std::optional<int> agentTypeOf(const FdRequisiteMap& requisites)
{
    const auto found = requisites.constFind(EFrDriver::ItemAgentType);
    if (found == requisites.cend())
        return {};
    return found->getSourceData().toInt();
}

FdRequisiteMap industryFields(const FrPosition& position)
{
    if (!position.hasIndustryRequisites())
        return {};
    return position.getRequisite(EFrDriver::IndustryRequisite).toMap();
}

} // namespace

void Command::addPaymentObject(const FrPosition& position, const QVariant& markingStatus) const
{
    logger->debug(QStringLiteral("Добавление предмета расчета"));
    const int taxCode = qMax(0, position.getTaxCode());
    const int method = position.getPaymentMethod() > 0 ? position.getPaymentMethod() : fullSettlement;
    const FdRequisiteMap requisites = position.getRequisites();
    const FdRequisiteMap industry = industryFields(position);
    sendCommand(AddPaymentObject,
        request::AddPaymentObject{
            .name = position.getName(),
            .barcode = position.getBarcode(),
            .count = position.getCount(),
            .price = position.getPriceWithDisc(),
            .taxCode = taxCode,
            .paymentMethod = method,
            .countryOfOrigin = textOf(requisites, EFrDriver::CountryOfOrigin),
            .customsDeclaration = textOf(requisites, EFrDriver::CustomsDeclaration),
            .paymentObject = position.getPaymentObject(),
            .unit = position.getFrUnit(),
            .markingStatus = markingStatus,
            .industryAuthority = textOf(industry, EFrDriver::IndustryAuthority),
            .industryDocumentDate = industryDate(industry),
            .industryDocumentNumber = textOf(industry, EFrDriver::IndustryDocumentNumber),
            .industryValue = textOf(industry, EFrDriver::IndustryValue),
        });
}

bool Command::bindAgentData(const FrPosition& position) const
{
    logger->debug(QStringLiteral("Регистрация данных агента"));
    if (!position.hasSupplierRequisites() && !position.hasAgentDataRequisites())
        return false;
    const FdRequisiteMap own = position.getRequisites();
    const FdRequisiteMap supplier = position.getRequisite(EFrDriver::SupplierData).toMap();
    const FdRequisiteMap agent = position.getRequisite(EFrDriver::AgentData).toMap();
    sendCommand(BindAgentData,
        request::BindAgentData{
            .agentType = agentTypeOf(own),
            .agentOperation = textOf(agent, EFrDriver::AgentOperation),
            .agentPhone = textOf(agent, EFrDriver::AgentPhone),
            .transferOperatorName = textOf(agent, EFrDriver::TransferOperatorName),
            .transferOperatorAddress = textOf(agent, EFrDriver::TransferOperatorAddress),
            .transferOperatorPhone = textOf(agent, EFrDriver::TransferOperatorPhone),
            .transferOperatorInn = textOf(agent, EFrDriver::TransferOperatorInn),
            .paymentOperatorPhone = textOf(agent, EFrDriver::PaymentOperatorPhone),
            .supplierPhone = textOf(supplier, EFrDriver::SupplierPhone),
            .supplierName = textOf(supplier, EFrDriver::SupplierName),
            .supplierInn = textOf(own, EFrDriver::SupplierInn),
        });
    return true;
}

int Command::checkMarkingCode(const MarkedPosition& position) const
{
    logger->debug(QStringLiteral("Проверка КМ в ФН"));
    const QByteArray answer = sendCommand(CheckMarkingCode,
        request::CheckMarkingCode{
            .status = position.status,
            .quantity = position.quantity,
            .measureUnit = position.measureUnit,
            .code = FrUtils::getMarkingCodeWithSeparators(position.markingCode),
        });
    return answer.toInt();
}

void Command::bindMarkingCode(const QString& code) const
{
    logger->debug(QStringLiteral("Добавление данных о маркировке для товарной позиции"));
    sendCommand(BindMarkingCode, request::BindMarkingCode{.code = code});
}

void Command::clearMarkingCodes() const
{
    logger->debug(QStringLiteral("Очистка результатов проверки КМ в ФН"));
    sendCommand(ClearMarkingCodes, {});
}

} // namespace spfhex
