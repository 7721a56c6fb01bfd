#include "documentrecord.h"

#include "documentanswer.h"

#include <QJsonArray>

namespace sale {

QJsonObject recordSummary(const StoredDocument& document)
{
    return {{QStringLiteral("id"), document.request.id}, {QStringLiteral("kind"), document.request.kind},
        {QStringLiteral("register"), textOrNull(document.request.registerName)},
        {QStringLiteral("state"), stateName(document.state)},
        {QStringLiteral("reason"), textOrNull(reasonName(document.reason))},
        {QStringLiteral("times"), document.times}, {QStringLiteral("drive"), textOrNull(document.drive)},
        {QStringLiteral("documentNumber"), documentNumberJson(document.documentNumber)},
        {QStringLiteral("documentNumberRead"),
            document.documentNumber == 0 ? QJsonValue() : QJsonValue(document.isNumberRead)},
        {QStringLiteral("accepted"), momentJson(document.accepted)},
        {QStringLiteral("begun"), momentJson(document.begun)},
        {QStringLiteral("settled"), momentJson(document.settled)},
        {QStringLiteral("attemptCount"), document.attemptCount}};
}

QJsonObject recordJson(const StoredDocument& document)
{
    QJsonObject json = recordSummary(document);
    QJsonArray attempts;
    for (const StoredAttempt& attempt : document.attempts)
        attempts.append(attemptJson(attempt));
    json.insert(QStringLiteral("body"), bodyJson(document.request.body));
    json.insert(QStringLiteral("digest"), QString::fromLatin1(document.digest));
    json.insert(QStringLiteral("resolvedBy"), textOrNull(document.resolvedBy));
    json.insert(QStringLiteral("note"), textOrNull(document.resolvedNote));
    json.insert(QStringLiteral("attempts"), attempts);
    return json;
}

} // namespace sale
