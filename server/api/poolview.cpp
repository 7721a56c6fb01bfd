#include "api/poolview.h"

#include "api/api.h"
#include "api/place.h"
#include "documentanswer.h"

namespace frserver {

namespace {

const QString nameMember = QStringLiteral("name");
const QString absentMember = QStringLiteral("absent");

} // namespace

QJsonObject poolView(const Api& api, const Pool& pool)
{
    const Pool::Settings& settings = pool.settings();
    QJsonArray registers;
    const QJsonArray told = pool.registers();
    for (const QJsonValue one : told) {
        QJsonObject json = one.toObject();
        const Till* const till = api.till(json.value(nameMember).toString());
        const QJsonObject view = till == nullptr ? QJsonObject() : till->view();
        for (const QString& member : {QStringLiteral("state"), QStringLiteral("waiting")}) {
            const QJsonValue value = view.value(member);
            json.insert(member, value.isUndefined() ? QJsonValue() : value);
        }
        registers.append(json);
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

QJsonArray poolsOfRegister(const Api& api, const QString& registerName)
{
    QJsonArray pools;
    for (const auto& [name, pool] : api.pools()) {
        const QJsonArray told = pool->registers();
        for (const QJsonValue one : told) {
            if (one.toObject().value(nameMember) == registerName)
                pools.append(
                    QJsonObject{{nameMember, name}, {absentMember, one.toObject().value(absentMember)}});
        }
    }
    return pools;
}

} // namespace frserver
