#pragma once

#include "fruser.h"
#include "registerline.h"

namespace sale {

/// What a host may choose for a document that is no receipt.
struct DocumentOptions
{
    RegisterLine line = {};
    FrUser cashier = {};
};

} // namespace sale
