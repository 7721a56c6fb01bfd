#include "witness.h"

#include "exceptions.h"
#include "marknoting.h"
#include "settlement.h"
#include "verdicttable.h"

#include "abstractfrdriver.h"

namespace sale {

namespace {

/// Whether all that the register told now was told by the mark, too.
bool fits(const DriveMark& told, const DriveMark& known, DocumentKind kind)
{
    return told.drive == known.drive && told.shift == known.shift && told.nextReceipt == known.nextReceipt
        && told.drawer == known.drawer && told.sums.value(kind) == known.sums.value(kind);
}

} // namespace

Witness::Witness(AbstractFrDriver& driver, const RegisterLine& line, const Movement& ours)
    : m_driver(driver)
    , m_line(line)
    , m_ours(ours)
{
}

void Witness::note(const std::optional<KnownMark>& known)
{
    m_connection = m_line.connectionNow();
    // Over XML the mark tells first whether that is needed.
    if (isReceipt(m_ours.kind) && m_line.isChecked())
        m_driver.openShift();
    const bool isUsable = known && m_line.isExclusive;
    // Over XML the answer names the drive; over HEX only the connection says that it is the same.
    if (isUsable && (known->isOfThisConnection || !m_line.isChecked())) {
        if (const auto confirmed = confirmMark(m_driver, m_line, m_ours.kind, known->mark)) {
            m_before = *confirmed;
            return;
        }
    }
    m_before = noteMark(m_driver, m_line, m_ours.kind);
    if (isReceipt(m_ours.kind) && m_before.isShiftOpen == false) {
        m_driver.openShift();
        m_before = noteMark(m_driver, m_line, m_ours.kind);
    }
    if (isUsable && m_before.lastDocument == 0 && m_before.nextReceipt
        && fits(m_before, known->mark, m_ours.kind)) {
        m_before.lastDocument = known->mark.lastDocument;
        m_before.isNumberRead = false;
    }
}

Verdict Witness::issued() const
{
    Verdict verdict = Outcome::Issued;
    if (m_before.lastDocument != 0 && !isCash(m_ours.kind)) {
        verdict.number = m_before.lastDocument + 1;
        verdict.isNumberRead = false;
    }
    return verdict;
}

Verdict Witness::afterSuccess()
{
    m_after = markAfter(m_before, m_ours);
    if (m_line.isChecked() || (!isCash(m_ours.kind) && m_ours.kind != DocumentKind::Report))
        return issued();
    // It was issued once at least; only how often may be in question.
    const Circumstances circumstances{true, false, true};
    m_after = noteMark(m_driver, m_line, m_ours.kind);
    Verdict counted = judge(m_before, *m_after, m_ours, circumstances).verdict;
    if (counted.outcome == Outcome::Issued && counted.times == 1)
        return counted;
    m_after = noteMarkAfterFailure(m_driver, m_line, m_ours.kind);
    counted = judge(m_before, *m_after, m_ours, circumstances).verdict;
    const bool isCounted = counted.outcome == Outcome::Issued && (counted.times == 1 || isOursAlone());
    return isCounted ? counted : Verdict(Outcome::Unknown);
}

std::optional<Verdict> Witness::afterFailure()
{
    try {
        m_driver.connect();
        return settle(m_driver, m_before, m_ours, m_line, isOursAlone());
    } catch (const BasicException&) {
        return std::nullopt;
    }
}

bool Witness::isOursAlone() const
{
    return m_line.isExclusive || (m_connection != 0 && m_connection == m_line.connectionNow());
}

} // namespace sale
