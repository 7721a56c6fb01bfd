#include "api/poolview.h"

#include "api/api.h"
#include "api/place.h"
#include "documentanswer.h"

#include <QJsonArray>

namespace frserver {

namespace {

const QString nameMember = QStringLiteral("name");

QJsonObject registerJson(const QString& name, const QJsonObject& view, const QString& pool)
{
    const QJsonObject member = memberView(view, pool).value_or(QJsonObject());
    QJsonObject json{{nameMember, name}};
    const auto copy = [&json](const QJsonObject& from, const QString& what) {
        const QJsonValue value = from.value(what);
        json.insert(what, value.isUndefined() ? QJsonValue() : value);
    };
    for (const QString& what : {QStringLiteral("state"), QStringLiteral("waiting")})
        copy(view, what);
    for (const QString& what :
        {QStringLiteral("absent"), QStringLiteral("daysLeft"), QStringLiteral("documentsLeft")})
        copy(member, what);
    return json;
}

} // namespace

QJsonObject poolView(const Api& api, const Pool& pool)
{
    const Pool::Settings& settings = pool.settings();
    QJsonArray registers;
    // In one order at all services.
    QStringList names = api.places().registersOf(pool);
    names.sort();
    for (const QString& name : names) {
        if (const Till* const till = api.till(name))
            registers.append(registerJson(name, till->view(), settings.name));
    }
    const QString place = Place::ofPool(settings.name);
    return {{nameMember, settings.name}, {QStringLiteral("inn"), sale::textOrNull(settings.inn)},
        {QStringLiteral("taxSystems"), QJsonArray::fromStringList(settings.taxSystems)},
        {QStringLiteral("registers"), registers},
        {QStringLiteral("queue"),
            QJsonObject{
                {QStringLiteral("queued"), api.openDocuments().count(place, sale::DocumentState::Queued)},
                {QStringLiteral("oldest"), sale::momentJson(api.openDocuments().oldestQueued(place))}}}};
}

std::optional<QJsonObject> memberView(const QJsonObject& registerView, const QString& pool)
{
    const QJsonArray pools = registerView.value(QStringLiteral("pools")).toArray();
    for (const QJsonValue one : pools) {
        if (one.toObject().value(nameMember) == pool)
            return one.toObject();
    }
    return std::nullopt;
}

} // namespace frserver
