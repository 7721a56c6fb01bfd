#include "register/paper.h"

namespace emulator {

qsizetype Paper::take(qsizetype wanted)
{
    if (isCoverOpen)
        return 0;
    const qsizetype fitting = isIn ? qMin(linesLeft.value_or(wanted), wanted) : 0;
    if (linesLeft)
        *linesLeft -= fitting;
    isIn = fitting == wanted && isIn;
    return fitting;
}

} // namespace emulator
