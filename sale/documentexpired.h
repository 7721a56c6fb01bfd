#pragma once

#include "saletr.h"

#include <QString>

#include <stdexcept>

namespace sale {

/// The time of a document was over before it was begun: it is not issued, and nothing was sent.
class DocumentExpired : public std::runtime_error
{
public:
    explicit DocumentExpired(const QString& id)
        : std::runtime_error(tr("the time of the document %1 is over").arg(id).toStdString())
    {
    }
};

} // namespace sale
