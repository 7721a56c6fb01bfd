#include "peers/saiddocument.h"

#include "storedtime.h"

namespace frserver {

namespace {

const QString idName = QStringLiteral("id");
const QString registerName = QStringLiteral("register");
const QString poolName = QStringLiteral("pool");
const QString kindName = QStringLiteral("kind");
const QString stateMember = QStringLiteral("state");
const QString reasonMember = QStringLiteral("reason");
const QString numberName = QStringLiteral("number");
const QString queuedName = QStringLiteral("queued");

} // namespace

QJsonObject saidDocument(const sale::StoredDocument& document)
{
    return {{idName, document.request.id}, {registerName, document.request.registerName},
        {poolName, document.request.pool}, {kindName, document.request.kind},
        {stateMember, sale::stateName(document.state)}, {reasonMember, sale::reasonName(document.reason)},
        {numberName, qint64{document.documentNumber}}, {queuedName, sale::storedTime(document.queued)}};
}

sale::StoredDocument documentSaid(const QJsonObject& json)
{
    const auto text = [&json](const QString& name) { return json.value(name).toString(); };
    sale::StoredDocument document;
    document.request.id = text(idName);
    document.request.registerName = text(registerName);
    document.request.pool = text(poolName);
    document.request.kind = text(kindName);
    document.state = sale::stateOf(text(stateMember)).value_or(sale::DocumentState::Unknown);
    document.reason = sale::reasonOf(text(reasonMember));
    document.documentNumber = static_cast<quint32>(json.value(numberName).toInteger());
    document.queued = sale::timeFromStored(text(queuedName));
    return document;
}

} // namespace frserver
