#pragma once

#include "webhook/outbox.h"

#include <QNetworkAccessManager>
#include <QSet>
#include <QTimer>
#include <QUrl>

#include <functional>

namespace frserver {

/// Tells another program of each end of a document: in order by document, again and again for three days when
/// it does not take it (2xx). Signed as webhooks commonly are: see signature.
class Webhook : public QObject
{
public:
    struct Settings
    {
        QUrl url;
        QByteArray secret;
    };
    using Done = std::function<void(bool isTaken)>;
    /// Posts it and says later how that went.
    using Send = std::function<void(const Delivery& delivery, const Done& done)>;

    /// The outbox must outlive it.
    Webhook(Outbox& outbox, const Settings& settings, QObject* parent = nullptr);
    /// The same with another way to send, for tests.
    Webhook(Outbox& outbox, const Send& send, QObject* parent = nullptr);

    /// There may be something to tell.
    void wake();

    /// For the header webhook-id: the same at each attempt, and that of no other end, also of other services
    /// that tell the same program.
    static QByteArray messageId(const Delivery& delivery);
    /// "v1," and the base64 of HMAC-SHA256 over "ID.SECONDS.BODY", for the header webhook-signature;
    /// webhook-timestamp has the seconds since 1970.
    static QByteArray signature(const QByteArray& secret, const Delivery& delivery, qint64 secondsSinceEpoch);
    /// How long after so many attempts the next one is made.
    static std::chrono::seconds pauseAfter(int attempts);

private:
    void post(const Delivery& delivery, const Done& done);
    void tell();
    void finish(const Delivery& delivery, bool isTaken);
    void dropOld();
    void sleep();

    Outbox& m_outbox;
    Settings m_settings;
    Send m_send;
    QNetworkAccessManager m_network;
    QTimer m_timer;
    /// Numbers of those that are on their way.
    QSet<qint64> m_sent;
};

} // namespace frserver
