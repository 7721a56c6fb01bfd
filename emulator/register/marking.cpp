#include "register/marking.h"

#include "register/judgement.h"
#include "register/markingquery.h"
#include "register/parts.h"

#include <cmath>

namespace emulator {

namespace {

constexpr qsizetype mostCodes = 128;
constexpr char groupSeparator = '\x1D';
constexpr int highestStatus = 5;
constexpr int statusAsItIs = 255;

bool isKnownStatus(int status)
{
    // Sold or returned, by the piece or measured; 255 leaves it as it is and 0 is a host that does not say.
    return (status >= 0 && status <= highestStatus) || status == statusAsItIs;
}

bool isQuantity(double quantity)
{
    return std::isfinite(quantity) && quantity >= 0;
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

// Codes that begin with the number of the goods ought to have a proof; tobacco packs, furs, excise stamps and
// trade numbers have none, so that the drive cannot check them.
int proofOf(const QByteArray& code)
{
    if (hasProof(code))
        return 1 | 2;
    return code.startsWith("01") || code.contains(groupSeparator) ? 1 : 0;
}

} // namespace

bool Marking::isForbidden() const
{
    return (m_parts.state.registration.modes & Registration::markedGoods) == 0;
}

Refusal Marking::judge(const MarkingQuery& query) const
{
    if (!m_parts.drive.isInFiscalMode())
        return Refusal::DriveWrongState;
    if (isForbidden())
        return Refusal::MarkingForbidden;
    if (query.code.isEmpty() || !isKnownStatus(query.plannedStatus) || !isQuantity(query.quantity))
        return Refusal::BadValue;
    if (!m_parts.state.open.marking.isEmpty())
        return Refusal::MarkingOutOfOrder;
    const QMap<QByteArray, int>& results = m_parts.state.marking.results;
    const bool fits = results.size() < mostCodes || results.contains(query.code);
    return fits ? Refusal::None : Refusal::MarkingTableFull;
}

Refusal Marking::check(const MarkingQuery& query, int& result)
{
    if (const Refusal refusal = judge(query); refusal != Refusal::None)
        return refusal;
    m_parts.state.marking.results[query.code] = result = resultOf(query.code);
    return Refusal::None;
}

int Marking::resultOf(const QByteArray& code) const
{
    for (const MarkVerdict& verdict : m_parts.around.markVerdicts) {
        if (verdict.pattern.match(QString::fromLatin1(code)).hasMatch())
            return verdict.result;
    }
    const int byDrive = proofOf(code);
    // The system knows each piece that was ever marked, with a proof or without.
    const int found = byDrive == 1 ? 1 : 1 | 2;
    const int bySystem = m_parts.state.isOperatorReachable ? found << 2 : 0;
    return byDrive | bySystem;
}

Refusal Marking::bind(const QByteArray& code)
{
    OpenDocument& open = m_parts.state.open;
    if (const Refusal refusal = judgement::positions(open.document); refusal != Refusal::None)
        return refusal;
    if (isForbidden())
        return Refusal::MarkingForbidden;
    if (!open.marking.isEmpty())
        return Refusal::MarkingOutOfOrder;
    if (code.isEmpty())
        return Refusal::BadValue;
    if (!m_parts.state.marking.results.contains(code))
        return Refusal::MarkingNotChecked;
    open.marking = code;
    return Refusal::None;
}

Refusal Marking::clear()
{
    // The codes of the open receipt are still needed.
    if (m_parts.state.open.document.isReceiptInWork())
        return Refusal::MarkingOutOfOrder;
    m_parts.state.marking.results.clear();
    return Refusal::None;
}

} // namespace emulator
