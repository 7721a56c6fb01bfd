#include "identifiedsale.h"

#include "documentarchived.h"
#include "documentexpired.h"
#include "itemsjson.h"

namespace sale {

Verdict verdictOf(const StoredDocument& document)
{
    switch (document.state) {
    case DocumentState::Issued: {
        Verdict verdict(Outcome::Issued, document.documentNumber);
        verdict.isNumberRead = document.isNumberRead;
        verdict.times = document.times;
        return verdict;
    }
    case DocumentState::Running:
    case DocumentState::Unknown:
        return Outcome::Unknown;
    default:
        return Outcome::NotIssued;
    }
}

std::optional<DocumentEnding> endingOf(const Verdict& verdict)
{
    switch (verdict.outcome) {
    case Outcome::Issued:
        return DocumentEnding{.state = DocumentState::Issued,
            .documentNumber = verdict.number,
            .isNumberRead = verdict.isNumberRead,
            .times = verdict.times};
    case Outcome::NotIssued:
        return DocumentEnding{.state = DocumentState::NotIssued, .reason = StateReason::Settled};
    case Outcome::None:
    case Outcome::Cancelled:
        return DocumentEnding{.state = DocumentState::NotIssued, .reason = StateReason::Refused};
    case Outcome::NotCancelled:
        return std::nullopt;
    default:
        return DocumentEnding{};
    }
}

QJsonObject keptFailure(const Failure& failure, const Verdict& verdict)
{
    QJsonObject json{
        {QStringLiteral("kind"), errorKindName(failure.kind)}, {QStringLiteral("text"), failure.text}};
    if (!failure.exceptionName.isEmpty())
        json.insert(QStringLiteral("exception"), failure.exceptionName);
    if (verdict.outcome == Outcome::NotIssued)
        json.insert(QStringLiteral("asked"), true);
    return json;
}

QJsonArray keptWarnings(const QList<receipt::Finding>& warnings)
{
    QJsonArray json;
    for (const receipt::Finding& warning : warnings)
        json.append(warning.keptText());
    return json;
}

IdentifiedSale::IdentifiedSale(DocumentStore& store, const DocumentRequest& request)
    : m_store(store)
    , m_request(request)
{
    const std::optional<StoredDocument> known = record();
    if (known && known->state != DocumentState::NotIssued && known->digest != bodyDigest(request.body))
        throw IdConflict(id(), known->accepted);
    if (const std::optional<QDateTime> accepted = known ? std::nullopt : store.archived(id()))
        throw DocumentArchived(id(), *accepted);
}

IdentifiedSale::IdentifiedSale(DocumentStore& store, const QString& id, const QByteArray& receipt)
    : IdentifiedSale(store, {id, documentKindName(DocumentKind::Sale), receipt, {}})
{
}

IdentifiedSale::IdentifiedSale(DocumentStore& store, const StoredDocument& queued)
    : m_store(store)
    , m_request(queued.request)
    , m_queued(queued)
{
}

std::optional<StoredAttempt> IdentifiedSale::lastAttempt() const
{
    const std::optional<StoredDocument> known = record();
    return known && !known->attempts.isEmpty() ? std::optional(known->attempts.constLast()) : std::nullopt;
}

Verdict IdentifiedSale::verdict() const
{
    const std::optional<StoredDocument> known = record();
    return known ? verdictOf(*known) : Verdict(Outcome::NotIssued);
}

bool IdentifiedSale::isUnsettled() const
{
    const std::optional<StoredDocument> known = record();
    return known && known->state == DocumentState::Running;
}

void IdentifiedSale::begin(const DriveMark& before, const MarkEntry& goods, const Movement& movement,
    const QList<MarkCheck>& verdicts)
{
    m_request.goods = goods.marks;
    // Whoever gives a receipt need not read it for that.
    if (m_request.kind == documentKindName(DocumentKind::Sale) && isReceipt(movement.kind))
        m_request.kind = documentKindName(movement.kind);
    AttemptStart start{before.toJson(), movement.toJson(), {}, markChecksJson(verdicts)};
    if (m_queued) {
        start.registerName = registerName();
        start.digest = m_queued->digest;
        start.returnOf = m_request.returnOf;
    }
    const std::optional<int> attempt
        = m_queued ? m_store.begin(id(), start) : m_store.acceptAndBegin(m_request, start);
    if (!attempt)
        throw DocumentExpired(id());
    m_attempt = *attempt;
}

void IdentifiedSale::note(const Failure& failure, const Verdict& verdict)
{
    m_isRefused = failure.isOfDriver && failure.kind != ErrorKind::Line;
    m_store.note(id(), m_attempt, {.failure = keptFailure(failure, verdict)});
}

void IdentifiedSale::note(const QList<receipt::Finding>& warnings)
{
    m_store.note(id(), m_attempt, {.warnings = keptWarnings(warnings)});
}

void IdentifiedSale::settle(
    const Verdict& verdict, const std::optional<DriveMark>& after, const QDateTime& time)
{
    std::optional<DocumentEnding> ending = endingOf(verdict);
    if (!ending)
        return;
    // The register has said no; that it was asked afterwards as well changes nothing of that.
    if (ending->state == DocumentState::NotIssued && m_isRefused)
        ending->reason = StateReason::Refused;
    if (after)
        ending->markAfter = after->toJson();
    ending->registerTime = time;
    m_store.settle(id(), m_attempt, *ending);
}

} // namespace sale
