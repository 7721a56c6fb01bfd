#include "documentoutput.h"

#include "findingsjson.h"
#include "frctltr.h"
#include "itemsjson.h"
#include "journalerror.h"
#include "money.h"
#include "showntext.h"
#include "shownvalue.h"

#include <QJsonArray>

namespace frctl {

namespace {

using receipt::moneyText;

QString markLine(const sale::MarkCheck& mark)
{
    return tr("marking code %1: %2").arg(receipt::shownText(mark.markingCode)).arg(mark.result);
}

/// The journal is not made for the question alone.
std::optional<sale::StoredDocument> recordOf(const Options& options, bool& isLost)
{
    try {
        const QString& id = options.answer->id;
        // That of a service stands in the service's journal.
        return id.isEmpty() || options.service || !options.journal->exists()
            ? std::nullopt
            : options.journal->store().findId(id);
    } catch (const sale::JournalError&) {
        isLost = true;
        return std::nullopt;
    }
}

/// The journal could not take the outcome of what it knows as begun.
bool isLaterThan(const sale::Verdict& verdict, const sale::StoredDocument& record)
{
    return record.state == sale::DocumentState::Running && verdict.outcome != sale::Outcome::None
        && verdict.outcome != sale::Outcome::Unknown && verdict.outcome != sale::Outcome::Unasked;
}

sale::DocumentAnswer judged(
    const Options& options, const sale::Verdict& verdict, const std::optional<sale::AnswerError>& error)
{
    bool isLost = false;
    const std::optional<sale::StoredDocument> record = recordOf(options, isLost);
    sale::DocumentAnswer answer
        = record ? sale::answerOf(*record, options.receiptProtocol()) : sale::DocumentAnswer();
    const bool isTold = verdict.outcome != sale::Outcome::None;
    if (record ? isLaterThan(verdict, *record) : isTold || error)
        answer.take(verdict);
    // What an earlier run has made of the id cannot be looked up.
    if (isLost && !isTold && !options.id.isEmpty())
        answer.take(sale::Outcome::Unknown);
    return answer;
}

QJsonArray joined(QJsonArray array, const QJsonArray& more)
{
    for (const auto& value : more)
        array.append(value);
    return array;
}

QString shownSum(const QJsonValue& value)
{
    return value.isDouble() ? moneyText(receipt::kopecksOf(value.toDouble())) : shownValue(value);
}

QString itemText(const QJsonObject& item)
{
    return QStringLiteral("%1, %2 x %3 = %4")
        .arg(shownValue(item.value(QStringLiteral("name"))), shownSum(item.value(QStringLiteral("price"))),
            shownValue(item.value(QStringLiteral("quantity"))),
            shownSum(item.value(QStringLiteral("amount"))));
}

QString warningText(const QJsonObject& warning)
{
    return sale::findingOf(warning, receipt::Finding::Warning).text();
}

QString attemptText(const QJsonObject& attempt)
{
    return QStringLiteral("%1, %2, %3")
        .arg(shownValue(attempt.value(QStringLiteral("number"))),
            shownValue(attempt.value(QStringLiteral("begun"))),
            shownValue(attempt.value(QStringLiteral("state"))));
}

/// Its text is said as a message, see complain.
QString errorText(const QJsonObject& error)
{
    return QStringLiteral("%1. %2").arg(
        error.value(QStringLiteral("kind")).toString(), error.value(QStringLiteral("action")).toString());
}

struct Shown
{
    const char* key;
    QString (*value)(const QJsonValue& value) = shownValue;
    /// For an object, or each of an array.
    QString (*object)(const QJsonObject& object) = nullptr;
};

constexpr Shown shape[]
    = {{"id"}, {"state"}, {"reason"}, {"replayed"}, {"times"}, {"documentNumber"}, {"documentNumberRead"},
        {"drive"}, {"testDrive"}, {"shift"}, {"receiptNumber"}, {"dateTime"}, {"total", shownSum},
        {"change", shownSum}, {"items", shownValue, itemText}, {"warnings", shownValue, warningText},
        {"attempts", shownValue, attemptText}, {"error", shownValue, errorText}};

QStringList textsOf(const Shown& row, const QJsonValue& value)
{
    QStringList texts;
    const QJsonArray entries = value.toArray();
    for (const auto& entry : entries)
        texts.append(row.object(entry.toObject()));
    if (value.isObject())
        texts.append(row.object(value.toObject()));
    const bool isNothing = value.isNull() || value.isUndefined() || value.isArray();
    return texts.isEmpty() && !isNothing ? QStringList{row.value(value)} : texts;
}

} // namespace

void describeReceipt(AnswerDraft& draft, const receipt::Receipt& receipt, const QList<sale::MarkCheck>& marks)
{
    draft.total = receipt.total;
    draft.change = receipt.paid - receipt.total;
    draft.items = sale::itemsJson(receipt, marks);
}

QString numberText(quint32 number)
{
    // Over HEX it is not asked for, and not always known.
    return number == 0 ? QString() : tr(", document %1").arg(number);
}

QString issuedText(qint64 total, qint64 paid, qint64 change, quint32 number)
{
    return tr("receipt issued: total %1, paid %2, change %3")
               .arg(moneyText(total), moneyText(paid), moneyText(change))
        + numberText(number);
}

Output receiptOutput(const sale::IssueResult& result)
{
    Output output;
    output.lines = {issuedText(result.total, result.paid, result.change, result.verdict.number)};
    for (const sale::MarkCheck& mark : result.marks)
        output.lines.append(markLine(mark));
    output.verdict = result.verdict;
    return output;
}

sale::DocumentAnswer answerOf(
    const Options& options, const sale::Verdict& verdict, const std::optional<sale::AnswerError>& error)
{
    const AnswerDraft& draft = *options.answer;
    sale::DocumentAnswer answer = judged(options, verdict, error);
    answer.id = draft.id;
    answer.isReplayed = draft.isReplayed;
    answer.dateTime = draft.dateTime;
    answer.total = draft.total;
    answer.change = draft.change;
    answer.items = draft.items;
    answer.warnings = options.warnings->json();
    answer.error = error;
    return answer;
}

QJsonObject answerJson(
    const Options& options, const sale::Verdict& verdict, const std::optional<sale::AnswerError>& error)
{
    QJsonObject json = answerOf(options, verdict, error).toJson();
    const QJsonObject& told = options.answer->told;
    for (const QString& key : json.keys()) {
        const bool isTold = !told.value(key).isUndefined();
        // Why it still waits is no error of the document's, and is told as one all the same.
        const bool isError = key == QStringLiteral("error") && told.value(key).isNull();
        if (isTold && !isError)
            json.insert(key, told.value(key));
    }
    if (!told.isEmpty())
        json.insert(QStringLiteral("warnings"),
            joined(told.value(QStringLiteral("warnings")).toArray(), options.warnings->json()));
    return json;
}

QStringList answerLines(const QJsonObject& answer)
{
    QStringList lines;
    for (const Shown& row : shape) {
        const QString key = QString::fromLatin1(row.key);
        for (const QString& text : textsOf(row, answer.value(key)))
            lines.append(key + QStringLiteral(": ") + text);
    }
    return lines;
}

Output documentOutput(const Options& options, Output output)
{
    output.json = answerJson(options, output.verdict);
    const QJsonObject& more = options.answer->more;
    for (auto field = more.begin(); field != more.end(); ++field)
        output.json.insert(field.key(), field.value());
    output.lines += answerLines(output.json);
    return output;
}

} // namespace frctl
