// Composite requisites of a position. The register judges their values; what is missing goes out empty.

#include "spffrcommand.h"

#include <bytestohexutils.h>
#include <frposition.h>
#include <frutils.h>
#include <log4qt/logger.h>

#include <initializer_list>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

RequestParams textParam(EFrDriver::RequisiteTypes tag, const FdRequisite& requisite)
{
    return {ParamType::Text, tag, requisite.getSourceData()};
}

// A composite requisite with these fields, also those that it lacks.
RequestParams blockOf(
    const FdRequisite& requisite, EFrDriver::RequisiteTypes tag, const QList<EFrDriver::RequisiteTypes>& tags)
{
    const FdRequisiteMap fields = requisite.toMap();
    QList<RequestParams> params;
    for (const EFrDriver::RequisiteTypes field : tags)
        params.append(textParam(field, fields.value(field)));
    return {ParamType::Structure, tag, params};
}

// Only the first characters of an excise stamp go out: it is meant.
FdRequisite exciseStampCode(const QString& code)
{
    constexpr qsizetype stampCodeLength = 14;
    return {EFrDriver::ProductCodeExcise30, FrUtils::to866(code.mid(0, stampCodeLength))};
}

} // namespace

QList<RequestParams> SpfFrCommand::getNomenclatureCodeRequisite(
    const QString& code, ExciseMarkType type) const
{
    logger->info(QStringLiteral("Получение реквизита 'Код товара'"));
    const FdRequisite requisite = type == MarkAlcohol
        ? exciseStampCode(code)
        : FrUtils::createNomenclatureCodeRequisiteFFD12(code, type);
    const QByteArray bytes = requisite.getSourceData().toByteArray();
    const RequestParams field(
        ParamType::Text, requisite.getTag(), bytestohexutils::bytesToHexStr(bytes, QString(), QString()));
    return {{ParamType::Structure, EFrDriver::ProductCodeBlock, QList<RequestParams>{field}}};
}

QList<RequestParams> SpfFrCommand::getSupplierRequisites(const FrPosition& position) const
{
    logger->info(QStringLiteral("Добавление реквизитов поставщика в позицию"));
    if (!position.hasSupplierRequisites())
        return {};
    const auto ownParam
        = [&position](EFrDriver::RequisiteTypes tag) { return textParam(tag, position.getRequisite(tag)); };
    return {
        blockOf(position.getRequisite(EFrDriver::SupplierData), EFrDriver::SupplierData,
            {EFrDriver::SupplierPhone, EFrDriver::SupplierName}),
        ownParam(EFrDriver::ItemAgentType),
        ownParam(EFrDriver::SupplierInn),
    };
}

QList<RequestParams> SpfFrCommand::getAgentRequisites(const FrPosition& position) const
{
    logger->info(QStringLiteral("Добавление реквизитов платежного агента в позицию"));
    const FdRequisite agent = position.getRequisite(EFrDriver::AgentData);
    const QList<EFrDriver::RequisiteTypes> tags = agent.toMap().keys();
    if (tags.isEmpty())
        return {};
    return {blockOf(agent, EFrDriver::AgentData, tags)};
}

QList<RequestParams> SpfFrCommand::getIndustryRequisites(const FrPosition& position) const
{
    if (!position.hasIndustryRequisites())
        return {};
    return {blockOf(position.getRequisite(EFrDriver::IndustryRequisite), EFrDriver::IndustryRequisite,
        {EFrDriver::IndustryAuthority, EFrDriver::IndustryDocumentDate, EFrDriver::IndustryDocumentNumber,
            EFrDriver::IndustryValue})};
}

} // namespace spfxml
