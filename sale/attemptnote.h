#pragma once

#include <QJsonArray>
#include <QJsonObject>

namespace sale {

/// What is learnt of an attempt while it is under way. What is empty leaves the journal as it is.
struct AttemptNote
{
    /// As AttemptStart::markBefore.
    QJsonObject markAfter = {};
    /// "kind", "text" in the register's words, "exception", "asked".
    QJsonObject failure = {};
    QJsonArray warnings = {};
};

} // namespace sale
