#pragma once

#include "postgres/postgresconnection.h"

#include <QDeadlineTimer>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

namespace frserver {

/// What the services of one database say to each other, in a moment. Nobody is kept waiting for it, and it
/// may be lost: whoever must know looks at the tables, too.
class PeerLine : public QObject
{
    Q_OBJECT

public:
    /// Throws sale::JournalError.
    explicit PeerLine(const sale::PostgresPlace& place, QObject* parent = nullptr);

    /// Of this service as long as it runs.
    const QString& id() const { return m_id; }
    /// To all others, with what else is said meanwhile.
    void say(const QJsonObject& message);
    /// What is to be said is said.
    void flush();
    /// For a question that somebody waits for; throws sale::JournalError.
    sale::SqlConnection& connection() { return m_connection; }
    /// Of the database, unless it has not answered some seconds ago: nobody is to wait for that again and
    /// again. Whether all was answered.
    bool ask(const std::function<void(sale::SqlConnection&)>& questions);

Q_SIGNALS:
    void heard(const QJsonObject& message);

private:
    void hear(const QString& text);
    void notify(const QByteArrayList& messages);

    const QString m_id;
    sale::PostgresConnection m_connection;
    QByteArrayList m_messages;
    QTimer m_timer;
    /// When the next ones are said at the earliest.
    QDeadlineTimer m_next;
    QDeadlineTimer m_rest;
};

} // namespace frserver
