#pragma once

#include "finding.h"

#include <QString>

#include <optional>

namespace receipt {

/// What is wrong with the form of a marking code.
struct MarkFault
{
    Finding::Severity severity = Finding::Error;
    QString reason;
};

/// Tells from the form of a marking code whether it was scanned whole: a GS1 code of marked goods or one of
/// the short codes. Whether the code is a good one, only the register can say.
std::optional<MarkFault> markFault(const QString& code);
/// What the code says of the piece on which it stands: without the proofs behind it, the same with and
/// without group separators.
QString markIdentity(const QString& code);

} // namespace receipt
