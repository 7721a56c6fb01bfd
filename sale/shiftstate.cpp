#include "shiftstate.h"

#include "abstractfrdriver.h"

namespace sale {

bool isShiftOpen(AbstractFrDriver& driver)
{
    // A driver without an answer of its own says yes; then the fiscal drive must confirm it.
    return driver.isShiftOpen() && driver.getFnInfo().fnStatus.isShiftOpen;
}

} // namespace sale
