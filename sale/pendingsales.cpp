#include "pendingsales.h"

#include "documentstore.h"
#include "identifiedsale.h"
#include "marknoting.h"
#include "settlement.h"

namespace sale {

namespace {

bool leavesTrace(const StoredDocument& document)
{
    return !document.drive.isEmpty();
}

} // namespace

Verdict settleDocument(
    AbstractFrDriver& driver, DocumentStore& store, const StoredDocument& document, const RegisterLine& line)
{
    const AttemptStart start
        = document.attempts.isEmpty() ? AttemptStart() : document.attempts.constLast().start;
    Verdict verdict = Outcome::Unknown;
    if (leavesTrace(document))
        verdict
            = settle(driver, DriveMark::fromJson(start.markBefore), Movement::fromJson(start.movement), line);
    store.settle(document.request.id, document.attemptCount, endingOf(verdict).value());
    return verdict;
}

QList<SettledSale> settlePendingSales(
    AbstractFrDriver& driver, DocumentStore& store, const RegisterLine& line, const QString& registerName)
{
    QList<SettledSale> settled;
    QString drive;
    const auto isHere = [&](const StoredDocument& document) {
        if (!leavesTrace(document))
            return document.request.registerName == registerName;
        if (drive.isEmpty())
            drive = noteMark(driver, line, DocumentKind::Report).drive;
        return document.drive == drive;
    };
    for (const StoredDocument& document : store.find({.states = {DocumentState::Running}})) {
        if (isHere(document))
            settled.append({document.request.id, settleDocument(driver, store, document, line)});
    }
    return settled;
}

} // namespace sale
