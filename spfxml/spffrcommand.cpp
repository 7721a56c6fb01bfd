#include "spffrcommand.h"

#include "names.h"

#include <log4qt/logger.h>
#include <xmlutils.h>

#include <QDomDocument>

namespace spfxml {

namespace {

using ParamType = RequestParams::EParamType;

} // namespace

SpfFrCommand::SpfFrCommand(
    AbstractSerialDriver* serialDriver, const Log4Qt::Logger* driverLogger, const QString& version)
    : serial(serialDriver)
    , logger(driverLogger)
    , m_protocolVersion(version)
{
}

SpfFrCommand::~SpfFrCommand() = default;

void SpfFrCommand::setCashierInfo(const QString& name, const QString& taxNumber)
{
    cashierName = name;
    cashierInn = taxNumber;
}

void SpfFrCommand::setPrintMode(CheckPrintMode mode)
{
    printMode = mode;
}

void SpfFrCommand::setTail(const QList<QString>& lines)
{
    tailText = lines.join(QLatin1Char('\n'));
}

RequestParams SpfFrCommand::cashierParam() const
{
    return {ParamType::Text, EFrDriver::CashierName, cashierName};
}

// Reports and money operations do not carry the tax number: it is meant.
QList<RequestParams> SpfFrCommand::cashierParams() const
{
    QList<RequestParams> params{cashierParam()};
    if (!cashierInn.isEmpty())
        params.append({ParamType::Text, EFrDriver::CashierInn, cashierInn});
    return params;
}

void SpfFrCommand::sendStructure(
    ECommandCode code, const QString& name, const QList<RequestParams>& params) const
{
    requestData(code, {ParamType::Structure, name, params}, repeatableAttempts);
}

QDateTime SpfFrCommand::getDateTime() const
{
    logger->debug(QStringLiteral("Чтение времени"));
    const QDomDocument answer = requestData(ECommandCode::GetDateTime, {}, repeatableAttempts);
    const QString text
        = xmlutils::getValueByAttribute(answer.childNodes(), names::tree::name, names::document::clock);
    return QDateTime::fromString(text, QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}

void SpfFrCommand::setDateTime(const QDateTime& dateTime) const
{
    logger->debug(QStringLiteral("Установка времени"));
    sendStructure(ECommandCode::SetDateTime, names::document::clock,
        {{ParamType::DateTime, names::field::dateTime, dateTime}});
}

void SpfFrCommand::printXReport() const
{
    logger->debug(QStringLiteral("Печать итогов смены"));
    sendStructure(ECommandCode::PrintXReport, names::document::shiftReport, {cashierParam()});
}

ShiftStatus SpfFrCommand::getShiftStatus() const
{
    logger->debug(QStringLiteral("Запрос параметров смены"));
    return ShiftStatus(requestData(ECommandCode::GetShiftStatus, {}, repeatableAttempts));
}

SpfStatus SpfFrCommand::getStatus() const
{
    logger->debug(QStringLiteral("Информация о ККТ"));
    const QDomDocument info = requestData(ECommandCode::GetDeviceInformation, {}, repeatableAttempts);
    logger->debug(QStringLiteral("Запрос состояния"));
    const QDomDocument state = requestData(ECommandCode::GetState, {}, repeatableAttempts);
    return {state, info};
}

bool SpfFrCommand::getCashDrawerStatus() const
{
    logger->debug(QStringLiteral("Состояние денежного ящика"));
    const QDomDocument answer = requestData(ECommandCode::GetDrawerStatus, {}, repeatableAttempts);
    for (const RequestParams& param : RequestParams::fromElement(answer.documentElement()).getParams()) {
        if (param.getName() == names::field::isDrawerOpen)
            return param.getValue().toBool();
    }
    return false;
}

void SpfFrCommand::openDrawer() const
{
    logger->debug(QStringLiteral("Открытие денежного ящика"));
    requestData(ECommandCode::OpenDrawer, {}, repeatableAttempts);
}

void SpfFrCommand::shiftOpen() const
{
    logger->debug(QStringLiteral("Открытие смены"));
    sendStructure(ECommandCode::OpenShift, names::document::shiftOpening, cashierParams());
}

void SpfFrCommand::shiftClose() const
{
    logger->debug(QStringLiteral("Закрытие смены"));
    sendStructure(ECommandCode::CloseShift, names::document::shiftClosing, cashierParams());
}

void SpfFrCommand::accountingReport() const
{
    logger->info(QStringLiteral("Снятие отчета о текущем состоянии расчетов"));
    sendStructure(ECommandCode::AccountingReport, names::document::accountingReport, {cashierParam()});
}

void SpfFrCommand::printFNDocument(unsigned int number) const
{
    sendStructure(ECommandCode::PrintFnDocument, names::document::fnDocument,
        {{ParamType::Integer, names::field::documentNumber, number}});
}

void SpfFrCommand::printLastFNDocument() const
{
    requestData(ECommandCode::PrintLastFnDocument, {}, repeatableAttempts);
}

} // namespace spfxml
