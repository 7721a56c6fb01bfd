#include "hostanswer.h"

#include <QJsonDocument>

HostAnswer::HostAnswer(int status, const QByteArray& output, const QByteArray& messages)
    : m_status(status)
    , m_output(output)
    , m_json(QJsonDocument::fromJson(output).object())
    , m_state(m_json.value(QStringLiteral("state")).toString())
    , m_messages(messages)
{
}

std::optional<qint64> HostAnswer::documentNumber() const
{
    const QJsonValue number = m_json.value(QStringLiteral("documentNumber"));
    return number.isDouble() ? std::optional(number.toInteger()) : std::nullopt;
}

QString HostAnswer::text() const
{
    return QStringLiteral("status %1, %2\n%3")
        .arg(QString::number(m_status),
            QString::fromUtf8(QJsonDocument(m_json).toJson(QJsonDocument::Compact)),
            QString::fromUtf8(m_messages));
}
