#include "spffrcommand.h"

#include <log4qt/logger.h>

#include <QDomDocument>

namespace spfxml {

QDomDocument SpfFrCommand::requestCounters(const QString& message) const
{
    logger->debug(message);
    return requestData(ECommandCode::GetCounters, {}, repeatableAttempts);
}

KktCounters SpfFrCommand::getCheckCounters(EFrDriver::RequisiteTypes requisite) const
{
    return getKktCounters(requestCounters(QStringLiteral("Счётчики ККТ")), requisite);
}

MoneyCounters SpfFrCommand::getMoneyCounters(hw::fr::CheckType type) const
{
    return spfxml::getMoneyCounters(requestCounters(QStringLiteral("Счётчики ККТ")), type);
}

double SpfFrCommand::getCashInDrawer() const
{
    return spfxml::getCashInDrawer(requestCounters(QStringLiteral("Сумма из денежного ящика")));
}

} // namespace spfxml
