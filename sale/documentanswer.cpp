#include "documentanswer.h"

#include "drivemark.h"
#include "identifiedsale.h"
#include "movement.h"
#include "testdrive.h"

#include "money.h"

#include <QJsonDocument>

namespace sale {

namespace {

QJsonValue localTimeJson(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))) : QJsonValue();
}

QJsonArray attemptsJson(const QList<StoredAttempt>& attempts)
{
    QJsonArray json;
    for (const StoredAttempt& attempt : attempts)
        json.append(attemptJson(attempt));
    return json;
}

void readMark(DocumentAnswer& answer, const AttemptStart& start, receipt::Protocol protocol)
{
    const DriveMark mark = DriveMark::fromJson(start.markBefore);
    // Over HEX the register tells the number that the next shift will have. A receipt that is asked for over
    // the other protocol has a number in the shift over HEX alone.
    const bool isHex = protocol == receipt::Protocol::Hex || mark.nextReceipt;
    if (mark.shift)
        answer.shift = *mark.shift - (isHex ? 1 : 0);
    if (isReceipt(Movement::fromJson(start.movement).kind))
        answer.receiptNumber = mark.nextReceipt;
}

} // namespace

QJsonObject DocumentAnswer::toJson() const
{
    return {{QStringLiteral("id"), textOrNull(id)},
        {QStringLiteral("state"), state ? QJsonValue(stateName(*state)) : QJsonValue()},
        {QStringLiteral("reason"), textOrNull(reasonName(reason))}, {QStringLiteral("replayed"), isReplayed},
        {QStringLiteral("times"), times},
        {QStringLiteral("documentNumber"), documentNumberJson(documentNumber)},
        {QStringLiteral("documentNumberRead"), documentNumber == 0 ? QJsonValue() : QJsonValue(isNumberRead)},
        {QStringLiteral("drive"), textOrNull(drive)}, {QStringLiteral("testDrive"), testDriveJson(drive)},
        {QStringLiteral("shift"), numberJson(shift)},
        {QStringLiteral("receiptNumber"), numberJson(receiptNumber)},
        {QStringLiteral("dateTime"), localTimeJson(dateTime)}, {QStringLiteral("total"), sumJson(total)},
        {QStringLiteral("change"), sumJson(change)}, {QStringLiteral("items"), items},
        {QStringLiteral("warnings"), warnings}, {QStringLiteral("attempts"), attemptsJson(attempts)},
        {QStringLiteral("error"), error ? QJsonValue(error->toJson(state)) : QJsonValue()}};
}

void DocumentAnswer::take(const Verdict& verdict)
{
    const std::optional<DocumentEnding> ending = endingOf(verdict);
    state = ending ? ending->state : DocumentState::Running;
    reason = ending ? ending->reason : StateReason::None;
    const bool isIssued = state == DocumentState::Issued;
    times = isIssued ? verdict.times : 0;
    documentNumber = isIssued ? verdict.number : 0;
    isNumberRead = verdict.isNumberRead;
}

DocumentAnswer answerOf(const StoredDocument& document, receipt::Protocol protocol)
{
    DocumentAnswer answer{.id = document.request.id,
        .state = document.state,
        .reason = document.reason,
        .times = document.times,
        .documentNumber = document.documentNumber,
        .isNumberRead = document.isNumberRead,
        .drive = document.drive,
        .attempts = document.attempts};
    if (document.state != DocumentState::Issued || document.attempts.isEmpty())
        return answer;
    const StoredAttempt& last = document.attempts.constLast();
    answer.dateTime = last.registerTime;
    readMark(answer, last.start, protocol);
    return answer;
}

QJsonValue bodyJson(const QByteArray& body)
{
    const QJsonDocument json = QJsonDocument::fromJson(body);
    return json.isObject() ? QJsonValue(json.object()) : textOrNull(QString::fromUtf8(body));
}

QJsonValue textOrNull(const QString& text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue documentNumberJson(quint32 number)
{
    return number == 0 ? QJsonValue() : QJsonValue(qint64{number});
}

QJsonValue numberJson(const std::optional<qint64>& number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}

QJsonValue sumJson(const std::optional<qint64>& kopecks)
{
    return kopecks ? QJsonValue(receipt::roubles(*kopecks)) : QJsonValue();
}

QJsonValue momentJson(const QDateTime& time)
{
    return time.isValid() ? QJsonValue(time.toUTC().toString(Qt::ISODateWithMs)) : QJsonValue();
}

QJsonObject attemptJson(const StoredAttempt& attempt)
{
    const QJsonObject& failure = attempt.note.failure;
    QJsonObject json{{QStringLiteral("number"), attempt.number},
        {QStringLiteral("begun"), momentJson(attempt.begun)},
        {QStringLiteral("ended"), momentJson(attempt.ended)},
        {QStringLiteral("markBefore"), attempt.start.markBefore},
        {QStringLiteral("movement"), attempt.start.movement},
        {QStringLiteral("markAfter"), attempt.note.markAfter},
        {QStringLiteral("error"), failure.isEmpty() ? QJsonValue() : QJsonValue(failure)},
        {QStringLiteral("warnings"), attempt.note.warnings},
        {QStringLiteral("state"), attempt.verdict ? QJsonValue(stateName(*attempt.verdict)) : QJsonValue()},
        {QStringLiteral("documentNumber"), documentNumberJson(attempt.documentNumber)}};
    if (attempt.digest.isEmpty())
        return json;
    json.insert(QStringLiteral("body"), bodyJson(attempt.body));
    json.insert(QStringLiteral("digest"), QString::fromLatin1(attempt.digest));
    return json;
}

} // namespace sale
