#pragma once

#include <QString>

class QDomDocument;

namespace spfxml {

/// What waits in the fiscal drive for the OFD.
struct OfdStatus
{
    explicit OfdStatus(const QDomDocument& state);

    /// Three indented lines.
    QString toString() const;

    int queueLength;
    int firstDocumentNumber;
    /// As the register writes it.
    QString firstDocumentTime;
};

} // namespace spfxml
