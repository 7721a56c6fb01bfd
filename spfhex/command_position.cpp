// Positions with their agent, supplier and marking data.

#include "command.h"

#include "bytestohexutils.h"
#include "cp866.h"
#include "datetimefields.h"
#include "fdrequisite.h"
#include "frposition.h"
#include "frutils.h"
#include "markedposition.h"

#include <logger.h>

namespace spfhex {

namespace {

constexpr qsizetype maxNameBytes = 48;
constexpr int maxBarcodeLength = 13;
constexpr int fullSettlement = 4;

// A field with the text of a requisite, an empty one when the map lacks it.
QVariant textField(const FdRequisiteMap& requisites, EFrDriver::RequisiteTypes tag, int maxLength)
{
    const auto found = requisites.constFind(tag);
    if (found == requisites.cend())
        return {};
    return found->getSourceData().toString().left(maxLength);
}

// Hosts give the date as "dd.MM.yyyy"; what is no such date goes as an empty field.
QVariant industryDateField(const FdRequisiteMap& industry)
{
    const QString text = industry.value(EFrDriver::IndustryDocumentDate).getSourceData().toString();
    return QDate::fromString(text, QStringLiteral("dd.MM.yyyy")).toString(dateFormat());
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
        {
            FrUtils::to866(position.getName()).left(maxNameBytes),
            position.getBarcode().left(maxBarcodeLength),
            QString::number(position.getCount(), 'f', 3),
            QString::number(position.getPriceWithDisc(), 'f', 2),
            0,
            taxCode,
            QVariant(),
            method,
            QVariant(),
            QVariant(),
            textField(requisites, EFrDriver::CountryOfOrigin, 3),
            textField(requisites, EFrDriver::CustomsDeclaration, 32),
            position.getPaymentObject(),
            position.getFrUnit(),
            2,
            markingStatus,
            textField(industry, EFrDriver::IndustryAuthority, 3),
            industryDateField(industry),
            textField(industry, EFrDriver::IndustryDocumentNumber, 32),
            textField(industry, EFrDriver::IndustryValue, 256),
            QVariant(),
            QVariant(),
            QVariant(),
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
    const QVariant agentType = own.contains(EFrDriver::ItemAgentType)
        ? QVariant(own.value(EFrDriver::ItemAgentType).getSourceData().toInt())
        : QVariant();
    sendCommand(BindAgentData,
        {
            agentType,
            textField(agent, EFrDriver::AgentOperation, 24),
            textField(agent, EFrDriver::AgentPhone, 19),
            textField(agent, EFrDriver::TransferOperatorName, 64),
            textField(agent, EFrDriver::TransferOperatorAddress, 256),
            textField(agent, EFrDriver::TransferOperatorPhone, 19),
            textField(agent, EFrDriver::TransferOperatorInn, 12),
            textField(agent, EFrDriver::PaymentOperatorPhone, 19),
            textField(supplier, EFrDriver::SupplierPhone, 19),
            // The device's limit for the supplier's name is meant to be as short as that of a telephone.
            textField(supplier, EFrDriver::SupplierName, 19),
            textField(own, EFrDriver::SupplierInn, 12),
        });
    return true;
}

int Command::checkMarkingCode(const MarkedPosition& position) const
{
    logger->debug(QStringLiteral("Проверка КМ в ФН"));
    const QByteArray code = toCp866(FrUtils::getMarkingCodeWithSeparators(position.markingCode));
    // The quantity goes in its shortest form, unlike that of a position.
    const QByteArray answer = sendCommand(CheckMarkingCode,
        {0, position.status, QVariant(position.quantity), position.measureUnit, QVariant(), QVariant(),
            bytestohexutils::bytesToHexStr(code, QString(), QString()), 0, QVariant(), QVariant()});
    return answer.toInt();
}

void Command::bindMarkingCode(const QString& code) const
{
    logger->debug(QStringLiteral("Добавление данных о маркировке для товарной позиции"));
    sendCommand(BindMarkingCode, {code, 0, QVariant(), 255});
}

void Command::clearMarkingCodes() const
{
    logger->debug(QStringLiteral("Очистка результатов проверки КМ в ФН"));
    sendCommand(ClearMarkingCodes, {});
}

} // namespace spfhex
