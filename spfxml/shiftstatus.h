#pragma once

#include "statustext.h"

namespace spfxml {

/// State of the shift at the time of the query. What the answer lacks reads as false and 0.
struct ShiftStatus
{
    explicit ShiftStatus(const QDomDocument& document);
    /// From an answer whose elements were found before.
    explicit ShiftStatus(const StatusTexts& document);

    bool opened;
    /// The shift has lasted over 24 hours. The driver does not look at it: the register refuses by itself.
    bool overtime;
    /// The current shift, or the last one when it is closed.
    int shiftNumber;
    /// Number of the document within the shift.
    int documentNumber;
};

} // namespace spfxml
