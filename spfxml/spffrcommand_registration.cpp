#include "names.h"
#include "spffrcommand.h"

#include <frutils.h>
#include <log4qt/logger.h>

#include <QDomDocument>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

} // namespace

void SpfFrCommand::registration(const QList<hw::fr::common::TaxSystemType>& taxSystems) const
{
    // Whatever the host's reasons are, the register gets this one: it is meant.
    constexpr int changeReason = 8;
    sendStructure(ECommandCode::Registration, names::document::registrationChange,
        {
            cashierParam(),
            {ParamType::Integer, EFrDriver::RegistrationChangeReasons, changeReason},
            {ParamType::Integer, EFrDriver::TaxSystems, FrUtils::snoMask(taxSystems)},
        });
}

QList<hw::fr::common::TaxSystemType> SpfFrCommand::getAllTaxSystems() const
{
    logger->debug(QStringLiteral("Получение налоговой системы"));
    const QDomDocument answer = requestData(ECommandCode::GetTaxSystems, {}, repeatableAttempts);
    return FrUtils::snoList(answerValue(answer, EFrDriver::TaxSystems).toInt());
}

QString SpfFrCommand::getFFDVersion() const
{
    return QStringLiteral("1.2");
}

QVariant SpfFrCommand::answerValue(const QDomDocument& answer, EFrDriver::RequisiteTypes tag) const
{
    const QString name = QString::number(tag);
    const QList<RequestParams> params = RequestParams::fromElement(answer.documentElement()).getParams();
    for (const RequestParams& param : params) {
        if (param.getName() == name)
            return param.getValue();
    }
    refuseParameter(name, QString());
}

} // namespace spfxml
