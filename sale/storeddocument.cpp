#include "storeddocument.h"

#include "drivemark.h"

namespace sale {

quint32 StoredDocument::numberBefore() const
{
    if (drive.isEmpty() || attempts.isEmpty())
        return 0;
    return DriveMark::fromJson(attempts.constLast().start.markBefore).lastDocument;
}

} // namespace sale
