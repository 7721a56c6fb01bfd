#pragma once

#include <QString>

#include <stdexcept>

namespace sale {

/// The id of a sale belongs to another receipt: a mistake of the caller, nothing was sent.
class IdConflict : public std::runtime_error
{
public:
    explicit IdConflict(const QString& id)
        : std::runtime_error(QStringLiteral("\"%1\" is the id of another receipt").arg(id).toStdString())
    {
    }
};

} // namespace sale
