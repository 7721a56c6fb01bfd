#include "servicestatus.h"

#include "frctltr.h"
#include "serviceclient.h"
#include "shownvalue.h"

#include <QJsonArray>

namespace frctl {

namespace {

QJsonObject registerOf(const Options& options, const QByteArray& token)
{
    ServiceClient client(*options.service, token);
    const ServiceAnswer answer = client.askRegister();
    if (answer.status == 200 && answer.isOurs())
        return answer.json;
    if (answer.status == 404 && answer.isOurs())
        throw UsageError(QStringLiteral("--port: ") + answer.fault);
    throw HostError(QStringLiteral("%1: %2").arg(client.address(), answer.fault), sale::ErrorKind::Line);
}

QJsonObject identified(const QJsonObject& seen)
{
    const QJsonObject identity = seen.value(QStringLiteral("identity")).toObject();
    const auto told = [](const QJsonObject& object, const char* name) {
        const QJsonValue value = object.value(QLatin1String(name));
        return value.isUndefined() ? QJsonValue() : value;
    };
    const QString waiting = seen.value(QStringLiteral("waiting")).toString();
    const QJsonObject shift = seen.value(QStringLiteral("shift")).toObject();
    return {{QStringLiteral("model"), told(identity, "model")}, {QStringLiteral("modelCode"), QJsonValue()},
        {QStringLiteral("serialNumber"), told(identity, "serial")},
        {QStringLiteral("firmware"), told(identity, "firmware")}, {QStringLiteral("lineWidth"), QJsonValue()},
        {QStringLiteral("dateTime"), QJsonValue()},
        // Nothing is known of it before the service has reached the register.
        {QStringLiteral("shiftOpen"), identity.isEmpty() ? QJsonValue() : told(shift, "open")},
        {QStringLiteral("paper"), told(seen.value(QStringLiteral("condition")).toObject(), "paper")},
        {QStringLiteral("coverOpen"), waiting == QStringLiteral("cover") ? QJsonValue(true) : QJsonValue()},
        {QStringLiteral("drawerOpen"), QJsonValue()}, {QStringLiteral("description"), QJsonArray()},
        {QStringLiteral("testDrive"), told(identity, "testDrive")}};
}

QString shownShift(const QJsonValue& isOpen)
{
    if (isOpen.isNull())
        return QStringLiteral("-");
    return isOpen.toBool() ? tr("open", "shift") : tr("closed", "shift");
}

QStringList linesOf(const QJsonObject& status, const QJsonObject& seen)
{
    const auto text = [](const QJsonObject& object, const char* name) {
        return shownValue(object.value(QLatin1String(name)));
    };
    QStringList lines{tr("model: %1").arg(text(status, "model")),
        tr("serial number: %1").arg(text(status, "serialNumber")),
        tr("firmware: %1").arg(text(status, "firmware")),
        tr("shift: %1").arg(shownShift(status.value(QStringLiteral("shiftOpen")))),
        tr("service: %1").arg(text(seen, "state"))};
    if (seen.value(QStringLiteral("waiting")).isString())
        lines.append(tr("waiting: %1, %2").arg(text(seen, "waiting"), text(seen, "waitingText")));
    if (seen.value(QStringLiteral("pausedBy")).isString())
        lines.append(tr("paused by: %1, since %2").arg(text(seen, "pausedBy"), text(seen, "pausedSince")));
    const QJsonObject queue = seen.value(QStringLiteral("queue")).toObject();
    lines.append(tr("documents: %1 queued, %2 running, %3 unknown")
                     .arg(text(queue, "queued"), text(queue, "running"), text(queue, "unknown")));
    const QJsonArray alarms = seen.value(QStringLiteral("alarms")).toArray();
    for (const auto& alarm : alarms)
        lines.append(tr("alarm: %1").arg(text(alarm.toObject(), "text")));
    return lines;
}

} // namespace

Output serviceStatus(const Options& options, const QByteArray& token)
{
    const QJsonObject seen = registerOf(options, token);
    Output output{.json = identified(seen)};
    output.lines = linesOf(output.json, seen);
    output.json.insert(QStringLiteral("service"), seen);
    return output;
}

} // namespace frctl
