#pragma once

#include "panel/loggedexchange.h"

#include <QJsonObject>

/// The data of events, without the number of the register.
namespace emulator::panel::eventview {

/// Of an entry of the journal.
QJsonObject document(const QJsonObject& entry);
QJsonObject exchange(const LoggedExchange& exchange);
QJsonObject refusal(const LoggedExchange& exchange);
QJsonObject warning(const LoggedExchange& exchange, const LoggedExchange::Warning& warning);
QJsonObject fault(const LoggedExchange& exchange);
QJsonObject part(const QString& name);
/// All that part() may be of.
const QStringList& parts();

} // namespace emulator::panel::eventview
