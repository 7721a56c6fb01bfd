#include "api/documentview.h"

#include "api/api.h"
#include "api/documentresponse.h"
#include "documentanswer.h"
#include "documentkind.h"
#include "documentrecord.h"
#include "errorkind.h"
#include "findingsjson.h"
#include "itemsjson.h"
#include "journalerror.h"
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

/// The register that makes it, or one of those that may: they take the same receipts.
const Till* tillFor(const Api& api, const StoredDocument& document)
{
    if (const Till* const till = api.till(document.request.registerName))
        return till;
    const Pool* const pool = api.places().pool(document.request.pool);
    if (pool == nullptr)
        return nullptr;
    const QStringList& own = pool->settings().registers;
    return api.till(own.isEmpty() ? api.places().registersOf(*pool).value(0) : own.constFirst());
}

DocumentAnswer describedAnswer(const Api& api, const StoredDocument& document)
{
    const Till* const till = tillFor(api, document);
    const receipt::Protocol protocol = till == nullptr ? receipt::Protocol::Xml : till->settings().protocol;
    DocumentAnswer answer = sale::answerOf(document, protocol);
    if (till != nullptr)
        describeBody(answer, api, document, *till);
    api.summaries().keep(document, {answer.total, answer.shift, answer.receiptNumber});
    return answer;
}

/// Of one that was found without its attempts. Only those of an issued one tell of it.
Summaries::Told toldOf(const Api& api, const StoredDocument& document)
{
    if (const Summaries::Told* const told = api.summaries().find(document))
        return *told;
    const bool isIssued = document.state == DocumentState::Issued;
    const std::optional<StoredDocument> whole
        = isIssued ? api.store().findId(document.request.id) : std::nullopt;
    const DocumentAnswer answer = describedAnswer(api, whole.value_or(document));
    return {answer.total, answer.shift, answer.receiptNumber};
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

/// Why nothing of it was begun yet, or nobody tells how it goes on; nothing for one that no register of its
/// pool has claimed.
QJsonValue waitingOf(const Api& api, const StoredDocument& document, const Till* till)
{
    if (!isPending(document.state) || document.request.registerName.isEmpty())
        return {};
    if (till == nullptr)
        return api.settings().isShared || document.state == DocumentState::Running
            ? QJsonValue()
            : QJsonValue(QStringLiteral("notConfigured"));
    if (document.state == DocumentState::Running)
        return till->isLost() ? QJsonValue(QStringLiteral("unreachable")) : QJsonValue();
    const QJsonObject view = till->view();
    const QString paused = QStringLiteral("paused");
    return view.value(QStringLiteral("state")) == paused ? paused : view.value(QStringLiteral("waiting"));
}

void addPosting(QJsonObject& json, const Api& api, const StoredDocument& document)
{
    const QJsonValue waiting = waitingOf(api, document, api.till(document.request.registerName));
    json.insert(QStringLiteral("pool"), sale::textOrNull(document.request.pool));
    json.insert(QStringLiteral("startBefore"), sale::momentJson(document.request.startBefore));
    json.insert(QStringLiteral("returnOf"), sale::textOrNull(document.request.returnOf));
    json.insert(QStringLiteral("waiting"), waiting.isUndefined() ? QJsonValue() : waiting);
}

} // namespace

QJsonObject documentView(const Api& api, const StoredDocument& document, bool isReplayed)
{
    DocumentAnswer answer = describedAnswer(api, document);
    answer.isReplayed = isReplayed;
    answer.error = errorOf(document);
    QJsonObject json = sale::recordSummary(document);
    const QJsonObject told = answer.toJson();
    for (auto member = told.begin(); member != told.end(); ++member)
        json.insert(member.key(), member.value());
    addPosting(json, api, document);
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
    addPosting(json, api, document);
    const Summaries::Told told = toldOf(api, document);
    json.insert(QStringLiteral("total"), sale::sumJson(told.total));
    json.insert(QStringLiteral("shift"), sale::numberJson(told.shift));
    json.insert(QStringLiteral("receiptNumber"), sale::numberJson(told.receiptNumber));
    return json;
}

QJsonValue lastReceipt(const Api& api, const QString& registerName)
{
    // Between two receipts stand some reports; what has made none for so long is no shop's register.
    constexpr int most = 50;
    std::optional<StoredDocument> found;
    try {
        api.store().look({.states = {DocumentState::Issued},
                             .registerName = registerName,
                             .limit = most,
                             .order = sale::DocumentQuery::LastBegun,
                             .withAttempts = false},
            [&found](const StoredDocument& document) {
                if (sale::isReceiptName(document.request.kind))
                    found = document;
                return !found;
            });
        return found ? QJsonValue(documentSummary(api, *found)) : QJsonValue();
    } catch (const sale::JournalError&) {
        return {};
    }
}

} // namespace frserver
