#include "worker/drivehistory.h"

#include "documentstore.h"
#include "movement.h"

namespace frserver {

using sale::DocumentKind;
using sale::DocumentState;
using sale::StateReason;
using sale::StoredDocument;

namespace {

/// What its journal entry has of a drive is of its last attempt, which another register may have made before
/// the document came to this one.
bool wasMadeHere(const StoredDocument& document)
{
    return document.state != DocumentState::Queued && document.reason != StateReason::Expired
        && document.reason != StateReason::Deleted;
}

} // namespace

QString toldDrive(const QString& number)
{
    return number.trimmed().isEmpty() ? QString() : number;
}

QString lastDrive(const sale::DocumentStore& journal, const QString& registerName)
{
    QString drive;
    journal.look(
        {.registerName = registerName, .order = sale::DocumentQuery::LastBegun, .withAttempts = false},
        [&drive](const StoredDocument& document) {
            if (wasMadeHere(document))
                drive = document.drive;
            return drive.isEmpty();
        });
    return drive;
}

ShiftTrace shiftTrace(const sale::DocumentStore& journal, const QString& drive)
{
    ShiftTrace trace;
    QDateTime last;
    if (drive.isEmpty())
        return trace;
    journal.look({.drive = drive, .order = sale::DocumentQuery::LastBegun},
        [&trace, &last](const StoredDocument& document) {
            if (!last.isValid())
                last = document.begun;
            // One that was closed by other means would be looked for through years.
            if (document.begun < last.addDays(-1))
                return false;
            if (document.state != DocumentState::Issued || document.attempts.isEmpty())
                return true;
            const DocumentKind kind
                = sale::Movement::fromJson(document.attempts.constLast().start.movement).kind;
            if (kind == DocumentKind::ShiftClosing)
                trace.closed = document.begun;
            // A report moves nothing that would tell of a shift.
            else if (kind != DocumentKind::Report)
                trace.since = document.begun;
            trace.isOpening = kind == DocumentKind::ShiftOpening;
            return kind != DocumentKind::ShiftClosing && !trace.isOpening;
        });
    return trace;
}

} // namespace frserver
