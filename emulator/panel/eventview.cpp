#include "panel/eventview.h"

#include "panel/jsonvalues.h"

namespace emulator::panel::eventview {

namespace {

QJsonObject place(const LoggedExchange& exchange, const char* numberName)
{
    return {{QLatin1String(numberName), exchange.number},
        {QStringLiteral("protocol"), exchange.exchange.protocol},
        {QStringLiteral("command"), exchange.exchange.command},
        {QStringLiteral("name"), exchange.exchange.name}};
}

} // namespace

QJsonObject document(const QJsonObject& entry)
{
    QJsonObject data{{QStringLiteral("number"), QJsonValue::Null}};
    for (const char* const name : {"number", "type", "dateTime", "total", "fiscalSign", "shift", "receipt"}) {
        if (entry.contains(QLatin1String(name)))
            data[QLatin1String(name)] = entry.value(QLatin1String(name));
    }
    return data;
}

QJsonObject exchange(const LoggedExchange& exchange)
{
    QJsonObject data = place(exchange, "number");
    data[QStringLiteral("error")] = jsonvalues::textOrNull(exchange.exchange.error);
    data[QStringLiteral("fault")] = jsonvalues::textOrNull(exchange.exchange.fault);
    data[QStringLiteral("document")]
        = jsonvalues::numberOrNull(exchange.hasStored() ? exchange.documentAfter : 0);
    return data;
}

QJsonObject refusal(const LoggedExchange& exchange)
{
    QJsonObject data = place(exchange, "exchange");
    data[QStringLiteral("error")] = exchange.exchange.error;
    data[QStringLiteral("reason")] = exchange.exchange.reason;
    return data;
}

QJsonObject warning(const LoggedExchange& exchange, const LoggedExchange::Warning& warning)
{
    return {{QStringLiteral("exchange"), exchange.number}, {QStringLiteral("kind"), warning.kind},
        {QStringLiteral("text"), warning.text}};
}

QJsonObject fault(const LoggedExchange& exchange)
{
    return {{QStringLiteral("exchange"), exchange.number}, {QStringLiteral("mode"), exchange.exchange.fault}};
}

QJsonObject part(const QString& name)
{
    return {{QStringLiteral("part"), name}};
}

const QStringList& parts()
{
    static const QStringList names{QStringLiteral("clock"), QStringLiteral("cover"), QStringLiteral("drawer"),
        QStringLiteral("faults"), QStringLiteral("marks"), QStringLiteral("ofd"), QStringLiteral("paper"),
        QStringLiteral("power"), QStringLiteral("register")};
    return names;
}

} // namespace emulator::panel::eventview
