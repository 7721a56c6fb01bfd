#include "peers/peerline.h"

#include "peers/peerlog.h"

#include "journalerror.h"

#include <QJsonDocument>
#include <QUuid>

#include <algorithm>

namespace frserver {

Q_LOGGING_CATEGORY(peerLog, "frserver.peers")

namespace {

/// Others wait meanwhile.
constexpr int patienceMs = 1'000;
/// In which what is said together is collected, and how long one waits behind another: of a rack at work each
/// wakes all services and their connections.
constexpr std::chrono::milliseconds collecting(5);
constexpr std::chrono::milliseconds between(100);
/// The server takes 8,000.
constexpr qsizetype longest = 7'500;
const QString channel = QStringLiteral("frspf");

} // namespace

PeerLine::PeerLine(const sale::PostgresPlace& place, QObject* parent)
    : QObject(parent)
    , m_id(QUuid::createUuid().toString(QUuid::WithoutBraces))
    , m_connection(place, patienceMs)
{
    m_connection.listen(channel, [this](const QString& text) { hear(text); });
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PeerLine::flush);
}

void PeerLine::say(const QJsonObject& message)
{
    m_messages.append(QJsonDocument(message).toJson(QJsonDocument::Compact));
    if (!m_timer.isActive())
        m_timer.start(std::max(collecting, std::chrono::milliseconds(m_next.remainingTime())));
}

void PeerLine::flush()
{
    m_next.setRemainingTime(between);
    QByteArrayList together;
    qsizetype size = 0;
    for (const QByteArray& message : std::exchange(m_messages, {})) {
        if (size + message.size() > longest) {
            notify(std::exchange(together, {}));
            size = 0;
        }
        together.append(message);
        size += message.size() + 1;
    }
    notify(together);
}

/// In no transaction with anything else, and without waiting for the disk: those of which each says something
/// end one after the other, in all services.
void PeerLine::notify(const QByteArrayList& messages)
{
    if (messages.isEmpty())
        return;
    const QByteArray text = R"({"from":")" + m_id.toLatin1() + R"(","said":[)" + messages.join(',') + "]}";
    ask([&text](sale::SqlConnection& connection) {
        connection.value(
            QStringLiteral("SELECT pg_notify(?, ?), set_config('synchronous_commit', 'off', true)"),
            {channel, QString::fromUtf8(text)});
    });
}

bool PeerLine::ask(const std::function<void(sale::SqlConnection&)>& questions)
{
    constexpr std::chrono::seconds restTime(5);
    if (!m_rest.hasExpired())
        return false;
    try {
        questions(m_connection);
        return true;
    } catch (const sale::JournalError& error) {
        qCWarning(peerLog).noquote() << error.what();
        m_rest = QDeadlineTimer(restTime);
        return false;
    }
}

void PeerLine::hear(const QString& text)
{
    const QJsonObject whole = QJsonDocument::fromJson(text.toUtf8()).object();
    if (whole.value(QStringLiteral("from")).toString() == m_id)
        return;
    for (const QJsonValue message : whole.value(QStringLiteral("said")).toArray())
        Q_EMIT heard(message.toObject());
}

} // namespace frserver
