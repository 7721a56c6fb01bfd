#pragma once

#include "idconflict.h"

namespace sale {

/// The id belongs to a document that was archived: it is not in the journal any more, and its id stays its
/// own.
class DocumentArchived : public IdConflict
{
public:
    DocumentArchived(const QString& id, const QDateTime& accepted)
        : IdConflict(Words(),
            tr("\"%1\" is the id of a document of %2 that was archived: what has become of it stands "
               "in the archive")
                .arg(id, accepted.toLocalTime().toString(Qt::ISODate)),
            accepted)
    {
    }
};

} // namespace sale
