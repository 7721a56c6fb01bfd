#pragma once

#include "statustext.h"

#include <QString>

namespace spfxml {

/// State of the fiscal drive. The warnings are numbers, so that whatever the register sends shows.
struct FnStatus
{
    explicit FnStatus(const QDomDocument& state);
    /// From an answer whose elements were found before.
    explicit FnStatus(const StatusTexts& state);

    /// Thirteen indented lines.
    QString toString() const;
    QString getLifePhaseDescription() const;

    /// A staircase of bits: 1, 3, 7, 15.
    int lifePhase;
    int currentDocType;
    /// Not 0 when the open document already holds data.
    int currentDocData;
    int needChange;
    int endingResource;
    int overflow;
    int ofdWaitExceeded;
    /// "yyyy-MM-dd hh:mm:ss", as the register writes it.
    QString lastDocDateTime;
    int lastDocNumber;
    QString fnNumber;
    /// The same format.
    QString expirationDate;
    QString fwVersion;
    bool isShiftOpen = true;
};

} // namespace spfxml
