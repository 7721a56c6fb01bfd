#include "api/metrics.h"

#include "api/api.h"
#include "api/place.h"
#include "api/poolview.h"
#include "currenttime.h"
#include "mockfactory.h"

#include <QJsonArray>

#include <algorithm>

namespace frserver {

namespace {

using sale::DocumentState;
using Labels = QList<std::pair<const char*, QString>>;

QByteArray quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    text.replace(QLatin1Char('"'), QStringLiteral("\\\""));
    text.replace(QLatin1Char('\n'), QStringLiteral("\\n"));
    return '"' + text.toUtf8() + '"';
}

class Text
{
public:
    void describe(const char* name, const char* type, const char* help)
    {
        m_name = name;
        m_text += QByteArray("# HELP ") + name + ' ' + help + "\n# TYPE " + name + ' ' + type + '\n';
    }

    /// Of what was described last.
    void add(const Labels& labels, double value)
    {
        m_text += m_name;
        char sign = '{';
        for (const auto& [label, text] : labels) {
            m_text += sign + QByteArray(label) + '=' + quoted(text);
            sign = ',';
        }
        m_text += (labels.isEmpty() ? " " : "} ") + QByteArray::number(value, 'g', 15) + '\n';
    }

    const QByteArray& text() const { return m_text; }

private:
    QByteArray m_name;
    QByteArray m_text;
};

const char* const registerLabel = "register";
const char* const poolLabel = "pool";

/// By the registers' names.
using Views = std::map<QString, QJsonObject>;

void addEndings(Text& text, const OpenList& open)
{
    text.describe(
        "frserver_documents_total", "counter", "Documents by what became of them, since the start.");
    for (const auto& [ending, count] : open.endings()) {
        const auto& [name, state, reason] = ending;
        // No register has had what ended in a pool.
        const std::optional<QString> pool = Place::poolOf(name);
        Labels labels{{registerLabel, pool ? QString() : name}, {"state", state}, {"reason", reason}};
        if (pool)
            labels.append({poolLabel, *pool});
        text.add(labels, static_cast<double>(count));
    }
}

/// 0 when nothing waits there.
double oldestSeconds(const Api& api, const QString& place)
{
    const QDateTime oldest = api.openDocuments().oldestQueued(place);
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    return oldest.isValid() ? static_cast<double>(oldest.msecsTo(now)) / 1000 : 0;
}

void addQueues(Text& text, const Api& api)
{
    // Also of registers that have left the configuration.
    QStringList names = api.missingRegisters();
    for (const auto& [name, till] : api.tills())
        names.append(name);
    text.describe("frserver_open_documents", "gauge", "Documents that wait, are made, or are unknown.");
    for (const QString& name : std::as_const(names)) {
        for (const DocumentState state : OpenList::states())
            text.add({{registerLabel, name}, {"state", sale::stateName(state)}},
                api.openDocuments().count(name, state));
    }
    text.describe("frserver_oldest_queued_seconds", "gauge", "How long the oldest document has waited.");
    for (const QString& name : std::as_const(names))
        text.add({{registerLabel, name}}, oldestSeconds(api, name));
}

void addPools(Text& text, const Api& api, const Views& views)
{
    text.describe("frserver_pool_queued_documents", "gauge", "Documents that no register has claimed yet.");
    for (const auto& [name, pool] : api.places().pools())
        text.add({{poolLabel, name}}, api.openDocuments().count(Place::ofPool(name), DocumentState::Queued));
    text.describe("frserver_pool_oldest_queued_seconds", "gauge", "How long the oldest of them has waited.");
    for (const auto& [name, pool] : api.places().pools())
        text.add({{poolLabel, name}}, oldestSeconds(api, Place::ofPool(name)));
    text.describe("frserver_pool_absent", "gauge",
        "1 for a register that takes nothing from its pool, and why; 0 for one that does.");
    for (const auto& [name, pool] : api.places().pools()) {
        for (const auto& [registerName, view] : views) {
            const std::optional<QJsonObject> member = memberView(view, name);
            const QString why = member ? member->value(QStringLiteral("absent")).toString() : QString();
            if (member)
                text.add({{poolLabel, name}, {registerLabel, registerName}, {"reason", why}},
                    why.isEmpty() ? 0 : 1);
        }
    }
}

void addStates(Text& text, const Views& views)
{
    text.describe(
        "frserver_register_state", "gauge", "1 for the state of the register, and what it waits for.");
    for (const auto& [name, view] : views) {
        text.add({{registerLabel, name}, {"state", view.value(QStringLiteral("state")).toString()},
                     {"waiting", view.value(QStringLiteral("waiting")).toString()}},
            1);
    }
}

/// What a register has told of itself, or its process.
struct ToldGauge
{
    const char* name;
    const char* type;
    const char* help;
    /// Nothing where it is not known.
    QJsonValue (*value)(const QJsonObject& view);
};

QJsonValue conditionOf(const QJsonObject& view, const char* member)
{
    return view.value(QStringLiteral("condition")).toObject().value(QLatin1String(member));
}

QJsonValue daysLeft(const QJsonObject& view)
{
    const QDate until = QDate::fromString(conditionOf(view, "driveUntil").toString(), Qt::ISODate);
    const QDate today = MockFactory<CurrentTime>::create()->getCurrentDateTime().date();
    return until.isValid() ? QJsonValue(today.daysTo(until)) : QJsonValue();
}

QJsonValue exchangesOf(const QJsonObject& view, const char* member)
{
    return view.value(QStringLiteral("exchanges")).toObject().value(QLatin1String(member));
}

/// As register and service know it: over XML it is not told, and the service keeps it.
QJsonValue unsentSeconds(const QJsonObject& view)
{
    if (!conditionOf(view, "unsent").isDouble())
        return {};
    const QDateTime since
        = QDateTime::fromString(view.value(QStringLiteral("unsentSince")).toString(), Qt::ISODateWithMs);
    const QDateTime now = MockFactory<CurrentTime>::create()->getCurrentDateTime();
    return since.isValid() ? std::max(0.0, static_cast<double>(since.secsTo(now))) : 0.0;
}

constexpr ToldGauge toldGauges[] = {
    {"frserver_connections_total", "counter", "How often the register was reached anew.",
        [](const QJsonObject& view) { return view.value(QStringLiteral("connections")); }},
    {"frserver_exchanges_total", "counter", "Requests that the register has answered.",
        [](const QJsonObject& view) { return exchangesOf(view, "count"); }},
    {"frserver_exchange_seconds_total", "counter",
        "How long it took from requests to the first bytes of the answers, together.",
        [](const QJsonObject& view) { return exchangesOf(view, "seconds"); }},
    {"frserver_paper_out", "gauge", "Whether a document waits for paper.",
        [](const QJsonObject& view) {
            return QJsonValue(view.value(QStringLiteral("waiting")).toString() == QStringLiteral("paper"));
        }},
    {"frserver_worker_starts_total", "counter", "How often the register's process was started.",
        [](const QJsonObject& view) { return view.value(QStringLiteral("workerStarts")); }},
    {"frserver_unsent_documents", "gauge", "Documents that the operator of fiscal data has not got.",
        [](const QJsonObject& view) { return conditionOf(view, "unsent"); }},
    {"frserver_unsent_seconds", "gauge", "How long the oldest of them has waited, as far as that is known.",
        unsentSeconds},
    {"frserver_drive_days_left", "gauge", "Days until the fiscal drive expires.", daysLeft},
    {"frserver_drive_last_document", "gauge", "Number of the fiscal drive's last document.",
        [](const QJsonObject& view) { return conditionOf(view, "lastDocument"); }},
    {"frserver_clock_ahead_seconds", "gauge", "How far the register's clock is ahead of the computer's.",
        [](const QJsonObject& view) { return conditionOf(view, "clockDifference"); }},
    {"frserver_shift_open", "gauge", "Whether the shift is open.",
        [](const QJsonObject& view) {
            return view.value(QStringLiteral("shift")).toObject().value(QStringLiteral("open"));
        }},
};

/// A counter begins anew with each service that works the register.
Labels labelsOf(const ToldGauge& gauge, const QString& name, const QJsonObject& view)
{
    Labels labels{{registerLabel, name}};
    const QString service = view.value(QStringLiteral("service")).toString();
    if (!service.isEmpty() && QByteArray(gauge.type) == "counter")
        labels.append({"service", service});
    return labels;
}

/// How many documents a drive still takes is told by no register; that it ends is.
void addDriveWarnings(Text& text, const Views& views)
{
    constexpr std::pair<const char*, int> warnings[]
        = {{"replace", 1}, {"resource", 2}, {"memory", 4}, {"operator", 8}};
    text.describe("frserver_drive_warning", "gauge",
        "1 for what the fiscal drive warns of: replace at once, resource ends, memory full, operator silent.");
    for (const auto& [name, view] : views) {
        const QJsonValue told = conditionOf(view, "driveWarnings");
        for (const auto& [warning, bit] : warnings) {
            if (told.isDouble())
                text.add({{registerLabel, name}, {"warning", QString::fromLatin1(warning)}},
                    (told.toInt() & bit) != 0);
        }
    }
}

void addTold(Text& text, const Views& views)
{
    for (const ToldGauge& gauge : toldGauges) {
        text.describe(gauge.name, gauge.type, gauge.help);
        for (const auto& [name, view] : views) {
            const QJsonValue value = gauge.value(view);
            if (value.isDouble() || value.isBool())
                text.add(labelsOf(gauge, name, view), value.isBool() ? value.toBool() : value.toDouble());
        }
    }
    addDriveWarnings(text, views);
    text.describe("frserver_alarm", "gauge", "1 for each alarm of the register.");
    for (const auto& [name, view] : views) {
        QStringList kinds;
        const QJsonArray alarms = view.value(QStringLiteral("alarms")).toArray();
        for (const auto& alarm : alarms)
            kinds.append(alarm.toObject().value(QStringLiteral("kind")).toString());
        kinds.removeDuplicates();
        for (const QString& kind : std::as_const(kinds))
            text.add({{registerLabel, name}, {"kind", kind}}, 1);
    }
}

} // namespace

QByteArray metricsText(const Api& api)
{
    Text text;
    text.describe("frserver_info", "gauge", "The program.");
    text.add({{"version", QString::fromLatin1(api.settings().version)}}, 1);
    addEndings(text, api.openDocuments());
    addQueues(text, api);
    Views views;
    for (const auto& [name, till] : api.tills())
        views.emplace(name, till->view());
    addPools(text, api, views);
    addStates(text, views);
    addTold(text, views);
    return text.text();
}

} // namespace frserver
