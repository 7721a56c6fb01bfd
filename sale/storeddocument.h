#pragma once

#include "documentrequest.h"
#include "documentstate.h"
#include "storedattempt.h"

#include <QList>

namespace sale {

/// A document of ours, as the journal keeps it. Times are UTC.
struct StoredDocument
{
    /// Its place in the order of acceptance.
    qint64 sequence = 0;
    /// The body is empty for one that was anonymised or taken over from a former journal; goods are not read
    /// back.
    DocumentRequest request;
    QByteArray digest;
    DocumentState state = DocumentState::Queued;
    StateReason reason = StateReason::None;
    QDateTime accepted;
    /// Accepted for its last attempt: since then it waits, or has waited.
    QDateTime queued;
    /// Of the last attempt.
    QDateTime begun;
    QDateTime settled;
    /// The fiscal drive of the last attempt.
    QString drive;
    quint32 documentNumber = 0;
    /// False for a number that was counted on and not read.
    bool isNumberRead = true;
    int times = 0;
    QString resolvedBy;
    QString resolvedNote;
    int attemptCount = 0;
    /// In their order; only when they were asked for.
    QList<StoredAttempt> attempts;

    /// Whether the attempt that it is at, or ended with, is there: not in a journal that was damaged.
    bool hasLastAttempt() const;
    /// That one. Throws JournalError. By the attempts.
    const StoredAttempt& lastAttempt() const;
    /// Its register has not been asked yet what has become of it. By the attempts.
    bool isToBeAsked() const;
    /// Of its fiscal drive's last document before the last attempt: its own number is a higher one. 0 when
    /// that was not told, or nobody knows the drive. By the attempts.
    quint32 numberBefore() const;
};

} // namespace sale
