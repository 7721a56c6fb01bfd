#include "witness.h"

#include "documentstore.h"
#include "exceptions.h"
#include "marknoting.h"
#include "misreading.h"
#include "review.h"
#include "saletr.h"
#include "settlement.h"
#include "shiftopening.h"
#include "verdicttable.h"
#include "wrongregister.h"

#include "abstractfrdriver.h"

namespace sale {

namespace {

/// Whether all that the register told now was told by the mark, too.
bool fits(const DriveMark& told, const DriveMark& known, DocumentKind kind)
{
    return told.drive == known.drive && told.shift == known.shift && told.nextReceipt == known.nextReceipt
        && told.drawer == known.drawer
        && withoutZeros(told.sums.value(kind)) == withoutZeros(known.sums.value(kind));
}

} // namespace

Witness::Witness(AbstractFrDriver& driver, const RegisterLine& line, const Movement& ours)
    : m_driver(driver)
    , m_line(line)
    , m_ours(ours)
{
}

void Witness::note(const ShiftOpener& openShift, const std::optional<KnownMark>& known)
{
    Verdict opening;
    // Of a receipt over XML the mark tells whether that is needed.
    const bool isAskedFirst = isReceipt(m_ours.kind) ? m_line.isChecked() : isCash(m_ours.kind);
    if (isAskedFirst && !isShiftOpen(m_driver, m_line))
        opening = openShift();
    m_connection = m_line.connectionNow();
    if (const auto mark = confirmed(known)) {
        m_before = *mark;
        return;
    }
    noteAnew(openShift, opening);
    const bool isUsable = known && m_line.isExclusive;
    if (isUsable && m_before.lastDocument == 0 && m_before.nextReceipt
        && fits(m_before, known->mark, m_ours.kind)) {
        m_before.lastDocument = known->mark.lastDocument;
        m_before.isNumberRead = false;
    }
}

std::optional<DriveMark> Witness::confirmed(const std::optional<KnownMark>& known)
{
    // Over XML the answer names the drive; over HEX only the connection says that it is the same.
    const bool isUsable = known && m_line.isExclusive && (known->isOfThisConnection || !m_line.isChecked());
    return isUsable ? confirmMark(m_driver, m_line, m_ours.kind, known->mark) : std::nullopt;
}

void Witness::noteAnew(const ShiftOpener& openShift, Verdict opening)
{
    m_before = noteMark(m_driver, m_line, m_ours.kind);
    if (isReceipt(m_ours.kind) && m_before.isShiftOpen == false) {
        opening = openShift();
        m_connection = m_line.connectionNow();
        m_before = noteMark(m_driver, m_line, m_ours.kind);
    }
    // The opening of a moment ago is the drive's last document.
    if (m_line.isExclusive && m_before.lastDocument == 0 && opening.number != 0) {
        m_before.lastDocument = opening.number;
        m_before.isNumberRead = false;
    }
}

bool Witness::isDriveRepeated() const
{
    return m_driver.getFnInfo().fnStatus.fnNumber == m_before.drive;
}

void Witness::requireDrive() const
{
    const QString meant = m_line.driveNow();
    if (!meant.isEmpty() && !m_before.drive.isEmpty() && m_before.drive != meant)
        throw WrongRegister(
            tr("another fiscal drive is in the register: %1, not %2").arg(m_before.drive, meant));
}

void Witness::compareWith(const DocumentStore& journal)
{
    // The mark of other documents is read twice anyway.
    const bool isReadOnce = !m_line.isChecked() && (isReceipt(m_ours.kind) || isCash(m_ours.kind));
    if (isReadOnce && !journal.knowsDrive(m_before.drive) && !isDriveRepeated())
        m_before = noteMarkTwice(m_driver, m_line, m_ours.kind);
    requireDrive();
    if (m_line.isExclusive && !isCash(m_ours.kind))
        m_before = requireKnown(m_driver, journal, m_before);
}

Verdict Witness::issued() const
{
    Verdict verdict = Outcome::Issued;
    // The drive does not number cash.
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
    const auto counted = [&] { return judge(m_before, *m_after, m_ours, circumstances).verdict; };
    try {
        m_after = noteMark(m_driver, m_line, m_ours.kind);
        const Verdict verdict = counted();
        if (verdict.outcome == Outcome::Issued && verdict.times == 1)
            return verdict;
    } catch (const BasicException&) {
        // The answer to a request that was sent again may come now, and be taken for that to the question.
        m_driver.connect();
    }
    m_after = noteMarkAfterFailure(m_driver, m_line, m_ours.kind);
    const Verdict verdict = counted();
    const bool isCounted = verdict.outcome == Outcome::Issued && (verdict.times == 1 || isOursAlone());
    return isCounted ? verdict : Verdict(Outcome::Unknown);
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
