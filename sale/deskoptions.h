#pragma once

#include "fruser.h"
#include "markpolicy.h"
#include "registerline.h"

#include <QString>

namespace sale {

/// What a cash desk knows of its register and of the person at it.
struct DeskOptions
{
    RegisterLine line = {};
    /// What the journal calls the register: the same at each start of the program, another for each register.
    QString registerName = {};
    /// For documents that name none. The tax number may be empty.
    FrUser cashier = {};
    /// What becomes of receipts whose marking codes the register does not find good.
    MarkPolicy markPolicy = MarkPolicy::Warn;
    /// A receipt or cash that finds the shift closed opens it; else it is refused (ErrorKind::ShiftClosed)
    /// before anything of it is begun.
    bool opensShift = true;
    /// Whoever has the queue closes a shift of more than 24 hours by itself: a document of the queue that
    /// meets one waits for that; else it is refused.
    bool closesShift = false;
};

} // namespace sale
