// The fields of one line of a receipt.

#include "assignmentstatus.h"
#include "names.h"
#include "spffrcommand.h"

#include <bytestohexutils.h>
#include <frposition.h>
#include <frutils.h>

#include <cmath>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

constexpr int defaultTaxCode = 1;
constexpr int defaultPaymentObject = 1;
constexpr int fullSettlement = 4;
constexpr double discountLimit = 0.005;

int valueOr(int value, int unset, int fallback)
{
    return value == unset ? fallback : value;
}

// Only these groups send the whole code beside that of the goods: it is meant.
bool carriesWholeCode(ExciseMarkType type)
{
    return type >= MarkTobacco && type <= MarkMedicine;
}

// A surcharge is a negative discount; the register wants the sign the other way round.
RequestParams discountParam(double discount)
{
    const RequestParams record(ParamType::Structure, names::field::discounts,
        QList<RequestParams>{
            {ParamType::Text, names::field::discountName, QStringLiteral("Скидка")},
            {ParamType::Sum, names::field::discountValue, -discount},
        });
    return {ParamType::StructureList, names::field::discounts, QList<RequestParams>{record}};
}

QList<RequestParams> importRequisites(const FrPosition& position)
{
    QList<RequestParams> params;
    for (const EFrDriver::RequisiteTypes tag : {EFrDriver::CountryOfOrigin, EFrDriver::CustomsDeclaration}) {
        if (position.hasFdRequisite(tag))
            params.append({ParamType::Text, tag, position.getRequisite(tag).getSourceData()});
    }
    return params;
}

} // namespace

QList<RequestParams> SpfFrCommand::getPositionRequisites(
    const FrPosition& position, hw::fr::CheckType type) const
{
    const int taxCode = valueOr(position.getTaxCode(), -1, defaultTaxCode);
    const int object = valueOr(FrUtils::getPaymentObject(position, getFFDVersion()), 0, defaultPaymentObject);
    const int method = valueOr(position.getPaymentMethod(), 0, fullSettlement);
    QList<RequestParams> params{
        {ParamType::Text, EFrDriver::ItemName, position.getName()},
        {ParamType::Sum, EFrDriver::ItemPrice, position.getPrice()},
        {ParamType::Text, EFrDriver::MeasureName, position.getMeasureName()},
        {ParamType::Quantity, EFrDriver::ItemQuantity, position.getCount()},
        {ParamType::Integer, EFrDriver::TaxRate, taxCode},
        {ParamType::Integer, EFrDriver::PaymentObject, object},
        {ParamType::Integer, EFrDriver::PaymentMethod, method},
        {ParamType::Integer, EFrDriver::MeasureUnit, position.getFrUnit()},
    };
    params.append(markingRequisites(position, type));
    if (std::abs(position.getDiscsum()) > discountLimit)
        params.append(discountParam(position.getDiscsum()));
    params.append({ParamType::Sum, names::field::priceWithDiscount, position.getPriceWithDisc()});
    params.append(getSupplierRequisites(position));
    params.append(getAgentRequisites(position));
    params.append(getIndustryRequisites(position));
    params.append(importRequisites(position));
    return params;
}

QList<RequestParams> SpfFrCommand::markingRequisites(const FrPosition& position, hw::fr::CheckType type) const
{
    const ExciseMarkType markType = position.getExciseMarkType();
    if (markType == MarkNone)
        return {};
    const QString code = position.getMarkingCode();
    QList<RequestParams> params{{ParamType::Integer, EFrDriver::MarkingProcessingMode, 0}};
    params.append(getNomenclatureCodeRequisite(code, markType));
    params.append({ParamType::Integer, EFrDriver::AssignedItemStatus, spf::utils::getAssignmentStatus(type)});
    if (carriesWholeCode(markType))
        params.append({ParamType::Text, EFrDriver::MarkingCode,
            bytestohexutils::bytesToHexStr(code.toUtf8(), QString(), QString())});
    return params;
}

} // namespace spfxml
