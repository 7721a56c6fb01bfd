#include "frspf.h"

#include <markedposition.h>

namespace spfxml {

int FrSpf::checkMarkingCode(const MarkedPosition& position, bool recheck)
{
    logger->info(QStringLiteral("Проверка кода маркировки"));
    const auto checked = checkedMarkingCodes.constFind(position.markingCode);
    if (!recheck && checked != checkedMarkingCodes.cend()) {
        logger->info(QStringLiteral("Маркировка была проверена ранее. Возвращается значение из кеша"));
        return checked.value();
    }
    openShift();
    const int verdict = command->checkMarkingCode(position);
    checkedMarkingCodes.insert(position.markingCode, verdict);
    return verdict;
}

void FrSpf::clearMarkingCodes()
{
    // A failure is meant to pass through, and then the codes stay known here as in the register.
    command->clearMarkingCodes();
    checkedMarkingCodes.clear();
}

} // namespace spfxml
