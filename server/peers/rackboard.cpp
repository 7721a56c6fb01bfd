#include "peers/rackboard.h"

#include "postgres/processidentity.h"
#include "storedjson.h"

#include <QJsonDocument>
#include <QSqlQuery>

namespace frserver::rackboard {

namespace {

/// Of a register, to be made or to be told of by a person.
const QString hasNoDocument
    = QStringLiteral("NOT EXISTS (SELECT 1 FROM documents WHERE register = registers.name "
                     "AND state IN ('queued', 'running', 'unknown'))");

QJsonObject jsonOf(const QVariant& text)
{
    return QJsonDocument::fromJson(text.toString().toUtf8()).object();
}

QString textOf(const QJsonArray& numbers)
{
    return QString::fromLatin1(QJsonDocument(numbers).toJson(QJsonDocument::Compact));
}

QJsonArray numbersOf(const QVariant& text)
{
    return QJsonDocument::fromJson(text.toString().toLatin1()).array();
}

QString settingsText(const Till::Settings& settings)
{
    return sale::wholeJson({{QStringLiteral("protocol"), receipt::protocolName(settings.protocol)},
        {QStringLiteral("timeZone"), QString::fromLatin1(settings.timeZone.id())},
        {QStringLiteral("startBefore"), settings.startBefore},
        {QStringLiteral("hasCashier"), settings.hasCashier}, {QStringLiteral("cashier"), settings.cashier},
        {QStringLiteral("cashierInn"), settings.cashierInn},
        {QStringLiteral("queueLimit"), settings.queueLimit}});
}

Till::Settings settingsOf(const QString& name, const QJsonObject& json)
{
    const auto text = [&json](const char* member) { return json.value(QLatin1String(member)).toString(); };
    return {name, receipt::protocolNamed(text("protocol")).value_or(receipt::Protocol::Xml),
        QTimeZone(text("timeZone").toLatin1()), json.value(QStringLiteral("startBefore")).toInt(),
        json.value(QStringLiteral("hasCashier")).toBool(), text("cashier"), text("cashierInn"),
        json.value(QStringLiteral("queueLimit")).toInt()};
}

/// Of an order that is followed still.
QString oldest()
{
    return QStringLiteral("clock_timestamp() - interval '%1 seconds'").arg(longestOrder.count());
}

QString arrayOf(const QStringList& names)
{
    QStringList quoted;
    for (QString name : names) {
        name.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
            .replace(QLatin1Char('"'), QStringLiteral("\\\""));
        quoted.append(QLatin1Char('"') + name + QLatin1Char('"'));
    }
    return QLatin1Char('{') + quoted.join(QLatin1Char(',')) + QLatin1Char('}');
}

QList<ToldRegister> readThose(
    const sale::SqlConnection& connection, const QString& service, const QStringList& names, Reading& reading)
{
    QList<ToldRegister> found;
    if (names.isEmpty())
        return found;
    connection.select(
        QStringLiteral("SELECT name, told::text, service, settings, view, followed, "
                       "greatest(0, extract(epoch FROM clock_timestamp() - told))::float8 "
                       "FROM registers WHERE name = ANY(?::text[]) AND service <> ? ORDER BY told"),
        {arrayOf(names), service}, [&](const QSqlQuery& row) {
            const QString name = row.value(0).toString();
            reading.told.insert(name, row.value(1).toString());
            ToldRegister told{settingsOf(name, jsonOf(row.value(3))), jsonOf(row.value(4)),
                row.value(2).toString(), row.value(6).toDouble(), {}, numbersOf(row.value(5))};
            told.read.start();
            found.append(told);
        });
    return found;
}

QList<Order> removeOrders(
    sale::SqlConnection& connection, const QString& condition, const QVariantList& values)
{
    QList<Order> removed;
    // A connection that is lost over the last answer has not lost them with it.
    connection.together([&] {
        removed.clear();
        connection.select(QStringLiteral("WITH removed AS (DELETE FROM orders WHERE %1 RETURNING *) "
                                         "SELECT register, content, number FROM removed ORDER BY number")
                              .arg(condition),
            values, [&removed](const QSqlQuery& row) {
                removed.append({row.value(0).toString(), jsonOf(row.value(1)), row.value(2).toLongLong()});
            });
    });
    return removed;
}

} // namespace

void beat(sale::SqlConnection& connection, const QString& service, const QString& name)
{
    connection.execute(
        QStringLiteral("INSERT INTO services (id, name, seen) VALUES (?, ?, clock_timestamp()) "
                       "ON CONFLICT (id) DO UPDATE SET seen = excluded.seen, name = excluded.name"),
        {service, name});
}

void leave(sale::SqlConnection& connection, const QString& service)
{
    connection.execute(QStringLiteral("DELETE FROM services WHERE id = ?"), {service});
}

void tidy(sale::SqlConnection& connection)
{
    connection.execute(QStringLiteral("DELETE FROM registers WHERE told < now() - interval '7 days' "
                                      "AND NOT EXISTS (SELECT 1 FROM services WHERE id = service) AND ")
        + hasNoDocument);
    connection.execute(QStringLiteral("DELETE FROM services WHERE seen < now() - interval '7 days'"));
    connection.execute(QStringLiteral("DELETE FROM orders WHERE made < now() - interval '1 hour'"));
}

void forgetOthers(sale::SqlConnection& connection, const QString& name, const QStringList& registers)
{
    // Machines may be called alike.
    connection.execute(
        QStringLiteral(
            "DELETE FROM registers WHERE view::json ->> 'service' = ? AND name <> ALL(?::text[]) "
            "AND EXISTS (SELECT 1 FROM leases WHERE register = registers.name AND machine = ?) AND ")
            + hasNoDocument,
        {name, arrayOf(registers), sale::ProcessIdentity::own().machine});
}

QHash<QString, double> silences(const sale::SqlConnection& connection)
{
    QHash<QString, double> found;
    connection.select(
        QStringLiteral("SELECT id, extract(epoch FROM clock_timestamp() - seen)::float8 FROM services"), {},
        [&found](const QSqlQuery& row) { found.insert(row.value(0).toString(), row.value(1).toDouble()); });
    return found;
}

void tell(sale::SqlConnection& connection, const QString& service, const QList<Entry>& entries)
{
    if (entries.isEmpty())
        return;
    QStringList rows;
    QVariantList values;
    for (const Entry& entry : entries) {
        rows.append(QStringLiteral("(?, ?, ?, ?, ?, clock_timestamp())"));
        values << entry.settings.name << service << settingsText(entry.settings)
               << sale::wholeJson(entry.view) << textOf(entry.followed);
    }
    connection.execute(
        QStringLiteral("INSERT INTO registers (name, service, settings, view, followed, told) VALUES %1 "
                       "ON CONFLICT (name) DO UPDATE SET service = excluded.service, "
                       "settings = excluded.settings, view = excluded.view, followed = excluded.followed, "
                       "told = excluded.told")
            .arg(rows.join(QLatin1Char(','))),
        values);
}

QList<ToldRegister> registers(const sale::SqlConnection& connection, const QString& service, Reading& reading)
{
    QString last = reading.last;
    QStringList changed;
    // What was written before something else may be seen after it, and the database's clock be put back.
    // Mostly it was read before, and what is told of a register is long.
    connection.select(
        QStringLiteral("SELECT name, told::text FROM registers "
                       "WHERE told >= least(?::timestamptz, clock_timestamp()) - interval '5 seconds' "
                       "AND service <> ? ORDER BY told"),
        {reading.last, service}, [&](const QSqlQuery& row) {
            const QString name = row.value(0).toString();
            last = row.value(1).toString();
            if (reading.told.value(name) != last)
                changed.append(name);
        });
    const QList<ToldRegister> found = readThose(connection, service, changed, reading);
    reading.last = last;
    return found;
}

qint64 order(sale::SqlConnection& connection, const QString& service, const Order& order)
{
    return connection
        .value(QStringLiteral("INSERT INTO orders (asked, register, content, made) "
                              "VALUES (?, ?, ?, clock_timestamp()) RETURNING number"),
            {service, order.registerName, sale::wholeJson(order.content)})
        .toLongLong();
}

bool areOrders(const sale::SqlConnection& connection, const QString& service)
{
    // Mostly there are none; those of a service that is gone are left to tidy.
    return connection
        .value(QStringLiteral("SELECT 1 FROM orders WHERE asked = ? OR made >= %1 LIMIT 1").arg(oldest()),
            {service})
        .isValid();
}

QList<Order> takeOrders(sale::SqlConnection& connection, const QStringList& registers)
{
    if (registers.isEmpty())
        return {};
    return removeOrders(connection, QStringLiteral("register = ANY(?::text[]) AND made >= %1").arg(oldest()),
        {arrayOf(registers)});
}

QList<Order> dropOrders(sale::SqlConnection& connection, const QString& service)
{
    return removeOrders(connection, QStringLiteral("asked = ? AND made < %1").arg(oldest()), {service});
}

} // namespace frserver::rackboard
