#pragma once

#include "errorkind.h"

#include <QJsonObject>

namespace sale {

/// What an answer says of a failure.
struct AnswerError
{
    /// "kind", "text", "action", "exception" and the details. The action is that for a document in that
    /// state.
    QJsonObject toJson(const std::optional<DocumentState>& state = {}) const;
    /// "kind", "text" and "exception", as an answer or the journal has them.
    static AnswerError fromJson(const QJsonObject& json);

    ErrorKind kind = ErrorKind::Other;
    /// The register's own Russian text; English of what is not the register's.
    QString text = {};
    /// Class of the exception, as Failure::exceptionName.
    QString exceptionName = {};
    /// What else machines may want to know.
    QJsonObject details = {};
    /// Where there is more to say than of the kind; Russian.
    QString action = {};
};

} // namespace sale
