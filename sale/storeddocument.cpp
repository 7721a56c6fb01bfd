#include "storeddocument.h"

#include "drivemark.h"

namespace sale {

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
