#pragma once

#include "peers/toldregister.h"
#include "sqlconnection.h"

#include <QHash>
#include <QList>

#include <chrono>

namespace frserver {

/// The tables by which the services of one database know of each other and of their registers. A service is
/// named by an id that it has as long as it runs. All operations throw sale::JournalError.
namespace rackboard {

struct Entry
{
    Till::Settings settings;
    QJsonObject view;
    QJsonArray followed = {};
};

struct Order
{
    QString registerName;
    QJsonObject content;
    /// Not in the order in which they are there to be read.
    qint64 number = 0;
};

struct Reading
{
    /// Of each register by name, and of all of them.
    QHash<QString, QString> told = {};
    QString last = QStringLiteral("-infinity");
};

/// The service is there.
void beat(sale::SqlConnection& connection, const QString& service, const QString& name);
/// It is no longer.
void leave(sale::SqlConnection& connection, const QString& service);
/// Drops what nobody has told anything of for a week: registers without an open document, and services.
void tidy(sale::SqlConnection& connection);
/// Drops what a service of that name on this machine has told of registers that it has no more, unless a
/// document is open there.
void forgetOthers(sale::SqlConnection& connection, const QString& name, const QStringList& registers);
/// Those that are there, each with the seconds for which it has told nothing.
QHash<QString, double> silences(const sale::SqlConnection& connection);
/// All at once: the service works these registers now.
void tell(sale::SqlConnection& connection, const QString& service, const QList<Entry>& entries);
/// What others than the service have told since the last reading, which begins with an empty one.
QList<ToldRegister> registers(
    const sale::SqlConnection& connection, const QString& service, Reading& reading);
/// @name What whoever works a register is to do with it, for as long as somebody expects it
/// @{
inline constexpr std::chrono::seconds longestOrder{30};
/// As a service was asked. Gives its number.
qint64 order(sale::SqlConnection& connection, const QString& service, const Order& order);
/// Whether there is anything to take, or to drop for that service.
bool areOrders(const sale::SqlConnection& connection, const QString& service);
/// Those for these registers, in their order; each once, and none that is too old.
QList<Order> takeOrders(sale::SqlConnection& connection, const QStringList& registers);
/// Those that the service was asked for and nobody has taken in time: nobody takes them any more.
QList<Order> dropOrders(sale::SqlConnection& connection, const QString& service);
/// @}

} // namespace rackboard

} // namespace frserver
