#include "register/register.h"

namespace emulator {

namespace {

constexpr qsizetype mostCodes = 128;
constexpr char groupSeparator = '\x1D';
constexpr int unchangedStatus = 255;

bool isKnownStatus(int status)
{
    // Sold or returned, by the piece or measured; 255 leaves it as it is and 0 is a host that does not say.
    return (status >= 0 && status <= 5) || status == unchangedStatus;
}

// A code carries its own proof behind a group separator: key 91 and signature 92, or short signature 93.
bool hasProof(const QByteArray& code)
{
    for (const char* const key : {"91", "92", "93"}) {
        if (code.contains(QByteArray(1, groupSeparator) + key))
            return true;
    }
    return false;
}

} // namespace

Refusal Register::checkMarking(const MarkingQuery& query, int& result)
{
    if ((m_registration.modes & Registration::markedGoods) == 0)
        return Refusal::MarkingForbidden;
    if (query.code.isEmpty() || !isKnownStatus(query.plannedStatus) || query.quantity < 0)
        return Refusal::BadValue;
    if (!m_boundMarking.isEmpty())
        return Refusal::MarkingOutOfOrder;
    if (m_checkedMarking.size() >= mostCodes && !m_checkedMarking.contains(query.code))
        return Refusal::MarkingTableFull;
    const int byDrive = hasProof(query.code) ? 1 | 2 : 1;
    const int bySystem = m_operatorReachable ? (hasProof(query.code) ? 4 | 8 : 4) : 0;
    result = byDrive | bySystem;
    m_checkedMarking[query.code] = result;
    return Refusal::None;
}

Refusal Register::bindMarking(const QByteArray& code)
{
    if (const Refusal refusal = checkPositions(); refusal != Refusal::None)
        return refusal;
    if ((m_registration.modes & Registration::markedGoods) == 0)
        return Refusal::MarkingForbidden;
    if (!m_boundMarking.isEmpty())
        return Refusal::MarkingOutOfOrder;
    if (code.isEmpty())
        return Refusal::BadValue;
    if (!m_checkedMarking.contains(code))
        return Refusal::MarkingNotChecked;
    m_boundMarking = code;
    return Refusal::None;
}

Refusal Register::clearMarking()
{
    // The codes of the open receipt are still needed.
    if (m_document.isReceipt() && !m_document.isStored())
        return Refusal::MarkingOutOfOrder;
    m_checkedMarking.clear();
    return Refusal::None;
}

void Register::removeMarking()
{
    for (const Item& item : m_document.items) {
        if (!item.markingCode.isEmpty() && m_checkedMarking.remove(item.markingCode) > 0)
            ++m_notifications;
    }
}

} // namespace emulator
