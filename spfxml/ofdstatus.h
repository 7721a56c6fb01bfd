#pragma once

#include "statustext.h"

#include <QString>

namespace spfxml {

/// What waits in the fiscal drive for the OFD.
struct OfdStatus
{
    explicit OfdStatus(const QDomDocument& state);
    /// From an answer whose elements were found before.
    explicit OfdStatus(const StatusTexts& state);

    /// Three indented lines.
    QString toString() const;

    int queueLength;
    int firstDocumentNumber;
    /// As the register writes it.
    QString firstDocumentTime;
};

} // namespace spfxml
