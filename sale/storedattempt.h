#pragma once

#include "attemptnote.h"
#include "attemptstart.h"
#include "documentstate.h"

#include <QDateTime>

#include <optional>

namespace sale {

/// One attempt at a document, as the journal keeps it.
struct StoredAttempt
{
    /// From 1.
    int number = 0;
    /// UTC.
    QDateTime begun;
    /// Invalid while it is under way, or when nobody has settled it; also of an unknown document, whose
    /// register could not be asked.
    QDateTime ended;
    AttemptStart start;
    AttemptNote note;
    std::optional<DocumentState> verdict;
    quint32 documentNumber = 0;
    /// The register's clock behind it, local; invalid when it was not asked.
    QDateTime registerTime;
    /// What this attempt was made of, where a later one was corrected; empty otherwise.
    QByteArray body;
    QByteArray digest;
};

} // namespace sale
