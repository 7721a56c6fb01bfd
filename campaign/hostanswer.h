#pragma once

#include <QByteArray>
#include <QJsonObject>

#include <optional>

/// What a frctl came to that was to answer in JSON.
class HostAnswer
{
public:
    /// Its exit statuses, as far as the campaigns tell them apart.
    enum Status { Done = 0, WrongUsage = 2, FoundIssued = 3, Unknown = 5 };

    HostAnswer() = default;
    HostAnswer(int status, const QByteArray& output, const QByteArray& messages);

    /// -1 for one that was killed.
    int status() const { return m_status; }
    bool isIssued() const { return m_state == QStringLiteral("issued"); }
    bool isNotIssued() const { return m_state == QStringLiteral("notIssued"); }
    /// Empty where it is not told.
    std::optional<qint64> documentNumber() const;
    const QJsonObject& json() const { return m_json; }
    /// What it said, also where that is no single answer.
    const QByteArray& output() const { return m_output; }
    /// All of it, for people.
    QString text() const;

private:
    int m_status = -1;
    QByteArray m_output;
    QJsonObject m_json;
    QString m_state;
    QByteArray m_messages;
};
