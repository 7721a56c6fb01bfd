#pragma once

#include "saletr.h"

#include <stdexcept>

namespace sale {

/// A document wants an open shift and may not open it itself, or cannot: nothing of it was made.
class ShiftIsClosed : public std::runtime_error
{
public:
    ShiftIsClosed()
        : std::runtime_error(tr("the shift is closed").toStdString())
    {
    }
};

} // namespace sale
