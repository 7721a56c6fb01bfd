#pragma once

#include <QByteArray>
#include <QStringList>

#include <bitset>

namespace spfhex {

/// The device's state as it answers RequestStateStatus.
class StateStatus
{
public:
    /// Document states that the driver looks at.
    enum DocumentState { DocumentClosed = 0, CloseRequired = 8, CancelImpossible = 16 };

    /// Fields that are missing or do not parse read as 0.
    explicit StateStatus(const QByteArray& data);

    /// The device has not had its start command since it was powered.
    bool isNotInitialized() const;
    bool isDocumentClosed() const;
    /// The document can only be finished: it is complete, or the device says that a cancellation is
    /// impossible.
    bool isCloseDocumentRequired() const;
    bool isShiftOpened() const;

    /// Lines for a service screen, each block with its heading.
    QStringList getFatalStateStatus() const;
    QStringList getCurrentFlagsStatus() const;
    QStringList getDocumentStatus() const;

    std::bitset<8> fatalStatus;
    std::bitset<8> currentFlags;
    qint32 documentType = 0;
    qint32 documentState = 0;
};

} // namespace spfhex
