#pragma once

#include "documentstate.h"

#include <QDateTime>
#include <QJsonObject>

namespace sale {

/// What has become of a document.
struct DocumentEnding
{
    /// Issued, NotIssued or Unknown.
    DocumentState state = DocumentState::Unknown;
    StateReason reason = StateReason::None;
    /// Of the fiscal drive; 0 when it has none or it is not known.
    quint32 documentNumber = 0;
    /// False for a number that was counted on and not read.
    bool isNumberRead = true;
    /// How often the register has it, for one that is issued.
    int times = 1;
    /// The register's counters behind it, as AttemptStart::markBefore; empty when they are not known.
    QJsonObject markAfter = {};
    /// The register's clock behind it, local; invalid when it was not asked.
    QDateTime registerTime = {};
    /// Who said so, and why, when it was a person.
    QString by = {};
    QString note = {};
    /// Of one that is not issued: the attempt is over, and the document is queued as before it, at once. For
    /// what a person puts right at the register, such as its paper.
    bool waitsAgain = false;
    /// False for an unknown one whose register could not be asked: that is done when the register is reached
    /// again, and until then the attempt is not over. Nothing is written unless the document is under way.
    bool isAsked = true;
    /// With a person's word: nobody can ask the register of a document that is under way. The word is taken
    /// for that, too.
    bool isOutOfReach = false;
    /// With a person's number: what the register has told since, as of requirePossibleNumber.
    quint32 reached = 0;
};

} // namespace sale
