#include "peers/saiddocument.h"

#include "storedtime.h"

namespace frserver {

namespace {

const QString idMember = QStringLiteral("id");
const QString registerMember = QStringLiteral("register");
const QString poolMember = QStringLiteral("pool");
const QString kindMember = QStringLiteral("kind");
const QString stateMember = QStringLiteral("state");
const QString reasonMember = QStringLiteral("reason");
const QString numberMember = QStringLiteral("number");
const QString queuedMember = QStringLiteral("queued");

} // namespace

QJsonObject saidDocument(const sale::StoredDocument& document)
{
    return {{idMember, document.request.id}, {registerMember, document.request.registerName},
        {poolMember, document.request.pool}, {kindMember, document.request.kind},
        {stateMember, sale::stateName(document.state)}, {reasonMember, sale::reasonName(document.reason)},
        {numberMember, qint64{document.documentNumber}}, {queuedMember, sale::storedTime(document.queued)}};
}

sale::StoredDocument documentSaid(const QJsonObject& json)
{
    const auto text = [&json](const QString& name) { return json.value(name).toString(); };
    sale::StoredDocument document;
    document.request.id = text(idMember);
    document.request.registerName = text(registerMember);
    document.request.pool = text(poolMember);
    document.request.kind = text(kindMember);
    document.state = sale::stateOf(text(stateMember)).value_or(sale::DocumentState::Unknown);
    document.reason = sale::reasonOf(text(reasonMember));
    document.documentNumber = static_cast<quint32>(json.value(numberMember).toInteger());
    document.queued = sale::timeFromStored(text(queuedMember));
    return document;
}

} // namespace frserver
