#include "review.h"

#include "abstractfrdriver.h"
#include "documentid.h"
#include "documentstore.h"
#include "movement.h"
#include "reviewneeded.h"
#include "saletr.h"

#include <algorithm>

namespace sale {

namespace {

// The drive's first document is the register's registration, which is no sale.
constexpr quint32 registrationNumber = 1;

/// How far a register had counted when the journal saw it last.
struct Known
{
    DriveMark mark;
    /// Numbers that may have come behind it without a sale that the journal does not know.
    quint32 harmless = 0;
};

bool hasReceipts(const DriveMark& mark)
{
    return mark.shift && mark.nextReceipt;
}

DocumentKind kindOf(const StoredAttempt& attempt)
{
    return Movement::fromJson(attempt.start.movement).kind;
}

/// Also one that waits for its next attempt.
bool wasNotIssued(const StoredDocument& document)
{
    return document.state == DocumentState::NotIssued || document.state == DocumentState::Queued;
}

bool isSettled(const StoredDocument& document)
{
    const bool isJudged = document.state == DocumentState::Issued || wasNotIssued(document);
    return isJudged && document.resolvedBy.isEmpty();
}

/// Where the mark behind the document was not noted: by the mark before it.
Known countedBehind(const StoredDocument& document, const StoredAttempt& attempt)
{
    Known known{DriveMark::fromJson(attempt.start.markBefore)};
    DriveMark& mark = known.mark;
    const bool isNumbered = !isCash(kindOf(attempt));
    if (!isSettled(document)) {
        // It has been issued, or it has not.
        known.harmless = isNumbered ? 1 : 0;
        if (isNumbered && mark.nextReceipt)
            ++*mark.nextReceipt;
    } else {
        // Which receipt comes next cannot be told any more.
        mark.nextReceipt = {};
        if (document.state == DocumentState::Issued && isNumbered && mark.lastDocument != 0)
            mark.lastDocument += static_cast<quint32>(document.times);
    }
    mark.lastDocument = std::max(mark.lastDocument, document.documentNumber);
    return known;
}

Known knownBehind(const StoredDocument& document)
{
    const StoredAttempt& attempt = document.lastAttempt();
    Known known = attempt.note.markAfter.isEmpty() ? countedBehind(document, attempt)
                                                   : Known{DriveMark::fromJson(attempt.note.markAfter)};
    // Behind a Z report the next document is the opening of a shift, or a report: no sale is lost with it.
    if (kindOf(attempt) == DocumentKind::ShiftClosing)
        ++known.harmless;
    return known;
}

/// Nothing where the journal cannot tell, as of a drive of a former journal, which did not have all
/// documents.
std::optional<Known> knownOn(const DocumentStore& store, const QString& drive)
{
    constexpr int farthest = 200;
    std::optional<Known> found;
    bool isAny = false;
    bool areReceiptsCounted = true;
    store.look({.drive = drive, .limit = farthest, .order = DocumentQuery::LastBegun},
        [&](const StoredDocument& document) {
            isAny = true;
            Known known = knownBehind(document);
            if (!areReceiptsCounted)
                known.mark.nextReceipt = {};
            if (known.mark.lastDocument != 0 || hasReceipts(known.mark)) {
                found = known;
                return false;
            }
            // Neither cash nor what was not issued has moved the number that one before them tells.
            const bool isOfCash = isCash(kindOf(document.lastAttempt()));
            areReceiptsCounted = areReceiptsCounted && isOfCash;
            return isOfCash || wasNotIssued(document);
        });
    if (isAny || store.knowsDrive(drive))
        return found;
    return Known{{.drive = drive, .lastDocument = registrationNumber}, 1};
}

/// Where the register has made no receipt since, the drive has made no document in the shift either.
DriveMark withNumber(DriveMark now, const DriveMark& known)
{
    const bool isUnmoved = now.nextReceipt && now.nextReceipt == known.nextReceipt && now.shift
        && now.shift == known.shift && now.drawer == known.drawer;
    if (now.lastDocument == 0 && known.lastDocument != 0 && isUnmoved) {
        now.lastDocument = known.lastDocument;
        now.isNumberRead = false;
    }
    return now;
}

bool areReceiptsLater(const DriveMark& now, const DriveMark& known)
{
    return now.shift != known.shift || *now.nextReceipt > *known.nextReceipt;
}

bool isNumberLater(const DriveMark& now, const Known& known)
{
    return known.mark.lastDocument != 0 && now.lastDocument > known.mark.lastDocument + known.harmless;
}

QString textOf(const DriveMark& now, const Known& known)
{
    const QString documents = known.mark.lastDocument == 0 || now.lastDocument == 0 ? tr("receipts")
        : now.lastDocument == known.mark.lastDocument + 1
        ? tr("document %1").arg(now.lastDocument)
        : tr("documents %1 to %2").arg(known.mark.lastDocument + 1).arg(now.lastDocument);
    return tr("the register has %1 of fiscal drive %2 that this journal does not know: look at its "
              "tape for sales of yours before you accept them")
        .arg(documents, now.drive);
}

} // namespace

std::optional<DriveMark> lastKnownMark(const DocumentStore& store, const QString& registerName)
{
    // Texts and X reports leave no trace.
    constexpr int fewest = 20;
    std::optional<qint64> drawer;
    std::optional<DriveMark> known;
    store.look({.registerName = registerName, .limit = fewest, .order = DocumentQuery::LastBegun},
        [&](const StoredDocument& document) {
            if (document.drive.isEmpty())
                return true;
            const StoredAttempt& attempt = document.lastAttempt();
            if (attempt.note.markAfter.isEmpty())
                return false;
            DriveMark mark = knownBehind(document).mark;
            if (drawer)
                mark.drawer = drawer;
            // It moved nothing but the drawer.
            drawer = mark.drawer;
            const bool isOfCash = isCash(kindOf(attempt));
            if (!isOfCash)
                known = mark;
            return isOfCash;
        });
    return known;
}

DriveMark requireKnown(AbstractFrDriver& driver, const DocumentStore& store, DriveMark now)
{
    const std::optional<Known> known = now.isKnown() ? knownOn(store, now.drive) : std::nullopt;
    if (!known)
        return now;
    now = withNumber(now, known->mark);
    const bool areCompared = hasReceipts(now) && hasReceipts(known->mark);
    // Once: from the number that is read now those of the next documents are counted on.
    if (now.lastDocument == 0 && known->mark.lastDocument != 0)
        now.lastDocument = driver.getFnInfo().fnStatus.lastFdNumber;
    if ((areCompared && areReceiptsLater(now, known->mark)) || isNumberLater(now, *known))
        throw ReviewNeeded(textOf(now, *known));
    return now;
}

void acceptUnknown(DocumentStore& store, const QString& registerName, const DriveMark& now, const QString& by,
    const QString& note)
{
    const QString id = newDocumentId();
    const int attempt
        = store.acceptAndBegin({id, QStringLiteral("review"), {}, registerName}, {now.toJson()}).value();
    store.settle(id, attempt, {.markAfter = now.toJson()});
    store.settle(id, attempt,
        {.state = DocumentState::NotIssued, .reason = StateReason::Resolved, .by = by, .note = note});
}

} // namespace sale
