#include "names.h"
#include "spffrcommand.h"

#include <bytestohexutils.h>
#include <log4qt/logger.h>
#include <markedposition.h>

#include <QDomDocument>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

} // namespace

int SpfFrCommand::checkMarkingCode(const MarkedPosition& position)
{
    logger->debug(QStringLiteral("Проверка кода маркировки"));
    const QByteArray code = position.markingCode.toUtf8();
    QList<RequestParams> params{
        {ParamType::Quantity, EFrDriver::ItemQuantity, position.quantity},
        {ParamType::Text, EFrDriver::MarkingCode, bytestohexutils::bytesToHexStr(code, QString(), QString())},
        {ParamType::Integer, EFrDriver::PlannedItemStatus, position.status},
        {ParamType::Integer, EFrDriver::MarkingProcessingMode, 0},
        {ParamType::Integer, EFrDriver::MeasureUnit, position.measureUnit},
    };
    // The host does not tell the group of the goods; the common one is meant to stand for all.
    params.append(getNomenclatureCodeRequisite(position.markingCode, MarkCommon));
    const QDomDocument answer = requestData(ECommandCode::CheckMarkingCode,
        {ParamType::Structure, names::document::markingCheck, params}, repeatableAttempts);
    logger->info(QStringLiteral("Обработка результата проверки кода маркировки"));
    return answerValue(answer, EFrDriver::MarkingCheckResult).toInt();
}

void SpfFrCommand::clearMarkingCodes() const
{
    requestData(ECommandCode::ClearMarkingCodes, {}, repeatableAttempts);
}

} // namespace spfxml
