#include "assignmentstatus.h"

namespace spf::utils {

int getAssignmentStatus(hw::fr::CheckType type)
{
    switch (type) {
    case hw::fr::CheckSale:
        return 1;
    case hw::fr::CheckSaleReturn:
        return 3;
    default:
        // Annulments, corrections and purchases, too: it is meant.
        return 255;
    }
}

} // namespace spf::utils
