#include "pendingsales.h"

#include "documentstore.h"
#include "identifiedsale.h"
#include "marknoting.h"
#include "saletr.h"
#include "settlement.h"
#include "storedtime.h"
#include "wrongregister.h"

namespace sale {

namespace {

bool leavesTrace(const StoredDocument& document)
{
    return !document.drive.isEmpty();
}

/// Another register knows nothing of the document, and its own may still tell.
void requireDrive(AbstractFrDriver& driver, const StoredDocument& document, const RegisterLine& line)
{
    const QString drive = noteMark(driver, line, DocumentKind::Report).drive;
    if (drive != document.drive)
        throw WrongRegister(drive.isEmpty()
                ? tr(
                    "the document %1 was begun on fiscal drive %2; the register tells no number of its drive")
                      .arg(document.request.id, document.drive)
                : tr("the document %1 was begun on fiscal drive %2; at the line is %3")
                      .arg(document.request.id, document.drive, drive));
}

Verdict ask(
    AbstractFrDriver& driver, const StoredDocument& document, const RegisterLine& line, bool isOursAlone)
{
    // In a journal that was damaged nothing tells what was before it.
    if (!leavesTrace(document) || !document.hasLastAttempt())
        return Outcome::Unknown;
    const AttemptStart& start = document.lastAttempt().start;
    return settle(
        driver, DriveMark::fromJson(start.markBefore), Movement::fromJson(start.movement), line, isOursAlone);
}

/// A person has looked at what others had made, and none of the journal tells of.
bool isReview(const StoredDocument& document)
{
    return document.request.kind == QStringLiteral("review");
}

/// Whether something that was begun after it may have moved the drive's numbers, too: a document of the same
/// sums would be taken for it.
bool isFollowed(const DocumentStore& store, const StoredDocument& document)
{
    bool isFound = false;
    store.look({.drive = document.drive, .order = DocumentQuery::LastBegun, .withAttempts = false},
        [&](const StoredDocument& later) {
            const bool isLater = later.request.id != document.request.id;
            isFound = isLater && (later.state != DocumentState::NotIssued || isReview(later));
            return isLater && !isFound;
        });
    return isFound;
}

/// One of the future tells nothing of its age.
bool isYoungerThan(std::chrono::milliseconds age, const StoredDocument& document, const QDateTime& now)
{
    return document.begun > now.addMSecs(-age.count()) && document.begun <= now.addSecs(mostSecondsBack);
}

/// Gives what the journal makes of it: one that others may still send is unknown.
Verdict writeDown(DocumentStore& store, const StoredDocument& document, const Verdict& verdict)
{
    const QString& id = document.request.id;
    store.settle(id, document.attemptCount, endingOf(verdict).value());
    return verdict.outcome == Outcome::NotIssued ? verdictOf(store.findId(id).value_or(document)) : verdict;
}

} // namespace

Verdict settleDocument(
    AbstractFrDriver& driver, DocumentStore& store, const StoredDocument& document, const RegisterLine& line)
{
    const bool isOursAlone = line.isExclusive && !isFollowed(store, document);
    const Verdict verdict = ask(driver, document, line, isOursAlone);
    if (leavesTrace(document) && verdict == Outcome::Unknown)
        requireDrive(driver, document, line);
    return writeDown(store, document, verdict);
}

QList<SettledSale> settlePendingSales(
    AbstractFrDriver& driver, DocumentStore& store, const RegisterLine& line, const QString& registerName)
{
    QList<SettledSale> settled;
    QString drive;
    const QString meant = line.driveNow();
    const auto isHere = [&](const StoredDocument& document) {
        if (!leavesTrace(document))
            return document.request.registerName == registerName;
        if (drive.isEmpty())
            drive = noteMark(driver, line, DocumentKind::Report).drive;
        return document.drive == drive;
    };
    // A rack has many that were begun, and few of them are this register's; it is not asked about others.
    for (const StoredDocument& begun : store.find({.states = {DocumentState::Running, DocumentState::Unknown},
                                       .withAttempts = false,
                                       .withBodies = false})) {
        const QString& known = drive.isEmpty() ? meant : drive;
        const bool mayBeHere = leavesTrace(begun) ? known.isEmpty() || begun.drive == known
                                                  : begun.request.registerName == registerName;
        if (!mayBeHere)
            continue;
        const StoredDocument document = store.findId(begun.request.id).value_or(begun);
        if (!document.isToBeAsked() || !isHere(document))
            continue;
        // One whose beginning nobody heard of, since the journal's server was lost over it, is not taken for
        // what was made after it.
        const bool isOursAlone = line.isExclusive && !isFollowed(store, document);
        const Verdict verdict = ask(driver, document, line, isOursAlone);
        settled.append({document.request.id, writeDown(store, document, verdict)});
    }
    return settled;
}

QStringList giveUpPendingSales(
    DocumentStore& store, const QString& registerName, std::chrono::milliseconds unreached)
{
    const QList<StoredDocument> begun = store.find({.states = {DocumentState::Running},
        .registerName = registerName,
        .withAttempts = false,
        .withBodies = false});
    // Mostly there are none, and nobody need be asked.
    if (begun.isEmpty())
        return {};
    const QDateTime now = store.timeNow();
    QStringList ids;
    for (const StoredDocument& document : begun) {
        if (isYoungerThan(unreached, document, now))
            continue;
        store.settle(document.request.id, document.attemptCount, {.isAsked = false});
        ids.append(document.request.id);
    }
    return ids;
}

} // namespace sale
