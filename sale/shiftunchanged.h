#pragma once

#include "saletr.h"

#include <stdexcept>

namespace sale {

/// A document that opens or closes the shift is not needed: the shift is so already, and nothing was begun.
class ShiftUnchanged : public std::runtime_error
{
public:
    explicit ShiftUnchanged(bool isOpen)
        : std::runtime_error(
            (isOpen ? tr("the shift is open already") : tr("the shift is closed already")).toStdString())
    {
    }
};

} // namespace sale
