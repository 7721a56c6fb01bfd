#include "peers/peers.h"

#include "peers/saiddocument.h"

#include "api/api.h"

namespace frserver {

namespace {

constexpr std::chrono::seconds lookTime(3);
const QString documentName = QStringLiteral("document");

} // namespace

Peers::Peers(const sale::PostgresPlace& place, Api& api, sale::DocumentStore& store)
    : m_api(api)
    , m_line(place)
    , m_sweep(api, store)
{
    connect(&m_line, &PeerLine::heard, this, &Peers::hear);
    connect(&m_timer, &QTimer::timeout, this, &Peers::look);
    m_api.onChange([this](const sale::StoredDocument& document) { sayDocument(document); });
}

void Peers::start()
{
    m_timer.start(lookTime);
}

void Peers::look()
{
    m_sweep.begin();
    m_line.hold();
}

void Peers::hear(const QJsonObject& message)
{
    if (const QJsonObject document = message.value(documentName).toObject(); !document.isEmpty())
        m_api.heard(documentSaid(document));
}

void Peers::sayDocument(const sale::StoredDocument& document)
{
    m_line.say({{documentName, saidDocument(document)}});
}

} // namespace frserver
