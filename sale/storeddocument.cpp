#include "storeddocument.h"

#include "drivemark.h"
#include "journalerror.h"
#include "saletr.h"

namespace sale {

bool StoredDocument::hasLastAttempt() const
{
    return !attempts.isEmpty() && attempts.constLast().number == attemptCount;
}

const StoredAttempt& StoredDocument::lastAttempt() const
{
    if (!hasLastAttempt())
        throw JournalError(tr("the journal is damaged: attempt %1 at the document %2 is not there")
                               .arg(attemptCount)
                               .arg(request.id));
    return attempts.constLast();
}

bool StoredDocument::isToBeAsked() const
{
    const bool isGivenUp
        = state == DocumentState::Unknown && !attempts.isEmpty() && !attempts.constLast().ended.isValid();
    return state == DocumentState::Running || isGivenUp;
}

quint32 StoredDocument::numberBefore() const
{
    if (drive.isEmpty() || attempts.isEmpty())
        return 0;
    return DriveMark::fromJson(attempts.constLast().start.markBefore).lastDocument;
}

} // namespace sale
