#include "api/documentview.h"

#include "api/api.h"
#include "api/documentresponse.h"
#include "documentanswer.h"
#include "documentkind.h"
#include "documentrecord.h"
#include "errorkind.h"
#include "findingsjson.h"
#include "itemsjson.h"
#include "money.h"
#include "receiptcheck.h"
#include "receipterror.h"
#include "salereturn.h"

#include <QJsonDocument>

namespace frserver {

namespace {

using sale::DocumentAnswer;
using sale::DocumentState;
using sale::StoredDocument;

/// What the register said of them ahead of the last attempt.
QList<sale::MarkCheck> marksOf(const StoredDocument& document)
{
    return document.attempts.isEmpty() ? QList<sale::MarkCheck>()
                                       : sale::markChecksOf(document.attempts.constLast().start.marks);
}

/// The body is that of a document that was accepted, so there are no errors; one that was anonymised has
/// none.
void describeReceipt(DocumentAnswer& answer, const Api& api, const StoredDocument& document, const Till& till)
{
    try {
        const receipt::CheckedReceipt checked
            = receipt::checkedReceipt(sale::completedBody(api.store(), document.request),
                {till.settings().protocol, document.accepted.toTimeZone(till.settings().timeZone).date()});
        answer.total = checked.receipt.total;
        answer.change = checked.receipt.paid - checked.receipt.total;
        answer.items = sale::itemsJson(checked.receipt, marksOf(document));
        answer.warnings = sale::findingsJson(checked.findings);
    } catch (const receipt::ReceiptError&) {
        return;
    }
}

void describeBody(DocumentAnswer& answer, const Api& api, const StoredDocument& document, const Till& till)
{
    if (sale::isReceiptName(document.request.kind))
        return describeReceipt(answer, api, document, till);
    const QJsonObject body = QJsonDocument::fromJson(document.request.body).object();
    if (const QJsonValue sum = body.value(QStringLiteral("sum")); sum.isDouble())
        answer.total = receipt::kopecksOf(sum.toDouble());
}

/// What the last attempt failed of, which is what a person is told.
std::optional<sale::AnswerError> errorOf(const StoredDocument& document)
{
    const QJsonObject failure
        = document.attempts.isEmpty() ? QJsonObject() : document.attempts.constLast().note.failure;
    if (isPending(document.state) || document.reason == sale::StateReason::Expired
        || document.reason == sale::StateReason::Deleted)
        return std::nullopt;
    if (!failure.isEmpty())
        return sale::AnswerError::fromJson(failure);
    if (document.state == DocumentState::Unknown)
        return sale::AnswerError{.text = QStringLiteral("Документ прерван, и касса о нём ничего не сообщает"),
            .exceptionName = QStringLiteral("Refusal")};
    return std::nullopt;
}

/// Why nothing of it was begun yet, or nobody tells how it goes on.
QJsonValue waitingOf(const StoredDocument& document, const Till* till)
{
    if (!isPending(document.state) || till == nullptr)
        return {};
    if (document.state == DocumentState::Running)
        return till->isReachable() ? QJsonValue() : QJsonValue(QStringLiteral("unreachable"));
    const QJsonObject view = till->view();
    const QString paused = QStringLiteral("paused");
    return view.value(QStringLiteral("state")) == paused ? paused : view.value(QStringLiteral("waiting"));
}

/// The register that makes it, or one of those that may: they take the same receipts.
const Till* tillFor(const Api& api, const StoredDocument& document)
{
    if (const Till* const till = api.till(document.request.registerName))
        return till;
    const Pool* const pool = api.pool(document.request.pool);
    return pool == nullptr ? nullptr : api.till(pool->settings().registers.value(0));
}

void addPosting(QJsonObject& json, const StoredDocument& document, const Till* till)
{
    const QJsonValue waiting = waitingOf(document, till);
    json.insert(QStringLiteral("pool"), sale::textOrNull(document.request.pool));
    json.insert(QStringLiteral("startBefore"), sale::momentJson(document.request.startBefore));
    json.insert(QStringLiteral("returnOf"), sale::textOrNull(document.request.returnOf));
    json.insert(QStringLiteral("waiting"), waiting.isUndefined() ? QJsonValue() : waiting);
}

} // namespace

QJsonObject documentView(const Api& api, const StoredDocument& document, bool isReplayed)
{
    const Till* const till = api.till(document.request.registerName);
    const Till* const like = tillFor(api, document);
    const receipt::Protocol protocol = like == nullptr ? receipt::Protocol::Xml : like->settings().protocol;
    DocumentAnswer answer = sale::answerOf(document, protocol);
    answer.isReplayed = isReplayed;
    answer.error = errorOf(document);
    if (like != nullptr)
        describeBody(answer, api, document, *like);
    QJsonObject json = sale::recordSummary(document);
    const QJsonObject told = answer.toJson();
    for (auto member = told.begin(); member != told.end(); ++member)
        json.insert(member.key(), member.value());
    addPosting(json, document, till);
    return json;
}

QJsonObject wholeDocumentView(const Api& api, const StoredDocument& document)
{
    QJsonObject json = sale::recordJson(document);
    const QJsonObject view = documentView(api, document);
    for (auto member = view.begin(); member != view.end(); ++member)
        json.insert(member.key(), member.value());
    return json;
}

QJsonObject documentSummary(const Api& api, const StoredDocument& document)
{
    QJsonObject json = sale::recordSummary(document);
    addPosting(json, document, api.till(document.request.registerName));
    return json;
}

} // namespace frserver
