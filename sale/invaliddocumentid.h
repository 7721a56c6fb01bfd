#pragma once

#include "saletr.h"

#include <QString>

#include <stdexcept>

namespace sale {

/// The text is no id of a document, see isDocumentId: a mistake of the caller, nothing was sent.
class InvalidDocumentId : public std::invalid_argument
{
public:
    explicit InvalidDocumentId(const QString& id)
        : std::invalid_argument(tr("\"%1\" has not 8 to 64 of A-Z a-z 0-9 . _ : -").arg(id).toStdString())
    {
    }
};

} // namespace sale
