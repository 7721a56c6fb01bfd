#include "possiblenumber.h"

#include "notresolvable.h"
#include "saletr.h"

#include <algorithm>

namespace sale {

namespace {

/// By the last document of the drive, when it was begun behind all that could come of this one; 0 for
/// nothing.
quint32 reachedSince(DocumentStore& store, const StoredDocument& document)
{
    const QList<StoredDocument> found = store.find(
        {.drive = document.drive, .limit = 1, .order = DocumentQuery::LastBegun, .withBodies = false});
    const QDateTime silent = found.isEmpty() ? QDateTime() : store.silentSince(document);
    if (!silent.isValid())
        return 0;
    const StoredDocument& last = found.constFirst();
    const bool isLater = last.request.id != document.request.id && last.begun >= silent;
    return isLater ? std::max(last.numberBefore(), last.documentNumber) : 0;
}

} // namespace

void requirePossibleNumber(
    DocumentStore& store, const StoredDocument& document, quint32 number, quint32 reached)
{
    const QString& drive = document.drive;
    // Of one that an older state left in doubt nobody knows the drive.
    if (drive.isEmpty())
        return;
    if (number <= document.numberBefore())
        throw NotResolvable(
            tr("When it was begun the fiscal drive %1 had reached number %2: its own one is higher.")
                .arg(drive)
                .arg(document.numberBefore()));
    const quint32 most = std::max(reached, reachedSince(store, document));
    if (most != 0 && number > most)
        throw NotResolvable(
            tr("Behind it the fiscal drive %1 had reached number %2: its own one is not higher.")
                .arg(drive)
                .arg(most));
    const QList<StoredDocument> others = store.find(
        {.drive = drive, .documentNumber = number, .limit = 1, .withAttempts = false, .withBodies = false});
    if (!others.isEmpty())
        throw NotResolvable(tr("That number of the fiscal drive %1 is the document %2.")
                                .arg(drive, others.constFirst().request.id));
}

} // namespace sale
