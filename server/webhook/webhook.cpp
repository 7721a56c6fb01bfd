#include "webhook/webhook.h"

#include "currenttime.h"
#include "journalerror.h"
#include "mockfactory.h"

#include <QLoggingCategory>
#include <QMessageAuthenticationCode>
#include <QNetworkReply>

#include <algorithm>

namespace frserver {

namespace {

Q_LOGGING_CATEGORY(webhookLog, "frserver.webhook")

constexpr int mostAtOnce = 4;
constexpr int keptDays = 3;
/// Far less than there are in that time.
constexpr int leastAttempts = 100;
constexpr int answerTimeoutMs = 30'000;

QDateTime now()
{
    return MockFactory<CurrentTime>::create()->getCurrentDateTime().toUTC();
}

bool isTaken(const QNetworkReply& reply)
{
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 200 && status < 300;
}

} // namespace

Webhook::Webhook(Outbox& outbox, const Settings& settings, QObject* parent)
    : Webhook(
        outbox, [this](const Delivery& delivery, const Done& done) { post(delivery, done); }, parent)
{
    m_settings = settings;
}

Webhook::Webhook(Outbox& outbox, const Send& send, QObject* parent)
    : QObject(parent)
    , m_outbox(outbox)
    , m_send(send)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] { tell(); });
}

QByteArray Webhook::messageId(const Delivery& delivery)
{
    // Each journal counts from 1, and one that was put back counts some numbers again.
    constexpr qsizetype length = 32;
    const QByteArray whole = QByteArray::number(delivery.number) + '.' + delivery.body;
    return QCryptographicHash::hash(whole, QCryptographicHash::Sha256).toHex().first(length);
}

QByteArray Webhook::signature(const QByteArray& secret, const Delivery& delivery, qint64 secondsSinceEpoch)
{
    const QByteArray text
        = messageId(delivery) + '.' + QByteArray::number(secondsSinceEpoch) + '.' + delivery.body;
    return "v1," + QMessageAuthenticationCode::hash(text, secret, QCryptographicHash::Sha256).toBase64();
}

std::chrono::seconds Webhook::pauseAfter(int attempts)
{
    constexpr int mostDoubled = 9;
    constexpr std::chrono::seconds longest(600);
    return attempts > mostDoubled ? longest : std::min(longest, std::chrono::seconds(2 << attempts));
}

void Webhook::wake()
{
    m_timer.start(0);
}

void Webhook::tell()
{
    try {
        dropOld();
        // Those on their way are among them.
        const QList<Delivery> due = m_outbox.due(now(), mostAtOnce + static_cast<int>(m_sent.size()));
        for (const Delivery& delivery : due) {
            if (m_sent.size() >= mostAtOnce || m_sent.contains(delivery.number))
                continue;
            m_sent.insert(delivery.number);
            m_send(delivery, [this, delivery](bool isTaken) { finish(delivery, isTaken); });
        }
        if (m_sent.isEmpty())
            sleep();
    } catch (const sale::JournalError& error) {
        qCWarning(webhookLog).noquote() << error.what();
        m_timer.start(pauseAfter(0));
    }
}

void Webhook::post(const Delivery& delivery, const Done& done)
{
    const qint64 seconds = now().toSecsSinceEpoch();
    QNetworkRequest request(m_settings.url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArray("application/json"));
    request.setTransferTimeout(answerTimeoutMs);
    // The secret's word is for this address alone.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setRawHeader("webhook-id", messageId(delivery));
    request.setRawHeader("webhook-timestamp", QByteArray::number(seconds));
    request.setRawHeader("webhook-signature", signature(m_settings.secret, delivery, seconds));
    QNetworkReply* const reply = m_network.post(request, delivery.body);
    connect(reply, &QNetworkReply::finished, this, [reply, done] {
        reply->deleteLater();
        done(isTaken(*reply));
    });
}

void Webhook::finish(const Delivery& delivery, bool isTaken)
{
    m_sent.remove(delivery.number);
    try {
        if (isTaken)
            m_outbox.remove(delivery.number);
        else
            m_outbox.postpone(delivery.number, now().addDuration(pauseAfter(delivery.attempts)));
    } catch (const sale::JournalError& error) {
        // It is told again then, with the same number.
        qCWarning(webhookLog).noquote() << error.what();
    }
    wake();
}

void Webhook::dropOld()
{
    const int dropped = m_outbox.dropOlderThan(now().addDays(-keptDays), leastAttempts);
    if (dropped > 0)
        qCWarning(webhookLog) << "nobody has taken" << dropped << "ends of documents for" << keptDays
                              << "days";
}

void Webhook::sleep()
{
    // Also when nothing is due: other programs end documents without a word.
    constexpr qint64 longestMs = 60'000;
    const QDateTime next = m_outbox.nextDue();
    const qint64 time = next.isValid() ? now().msecsTo(next) : longestMs;
    m_timer.start(static_cast<int>(std::clamp<qint64>(time, 0, longestMs)));
}

} // namespace frserver
