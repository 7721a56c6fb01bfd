#pragma once

#include <QDateTime>

class AbstractFrDriver;

namespace sale {

struct RegisterLine;

/// What a register's clock said behind a document that was made. The document is made, whatever the clock
/// says.
struct ClockReading
{
    /// Asks over a line whose host wants to know, without throwing.
    static ClockReading behind(AbstractFrDriver& driver, const RegisterLine& line);

    /// Local; invalid when it was not asked or not told.
    QDateTime time = {};
    /// The line failed meanwhile: what it still brings is no answer to the next question.
    bool isLineLost = false;
};

} // namespace sale
