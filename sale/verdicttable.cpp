#include "verdicttable.h"

#include "drivemark.h"
#include "misreading.h"
#include "movement.h"

namespace sale {

namespace {

const Judgement contradiction{Outcome::Unknown, true};

bool differ(const auto& one, const auto& other)
{
    return one && other && *one != *other;
}

/// What the sums of a receipt's kind did between the marks.
enum class Sums { NotTold, Still, ByOurs, ByOthers };

/// Two marks side by side.
class Comparison
{
public:
    Comparison(const DriveMark& before, const DriveMark& after, const Movement& ours,
        const Circumstances& circumstances)
        : m_before(before)
        , m_after(after)
        , m_ours(ours)
        , m_circumstances(circumstances)
    {
    }

    Judgement judgement() const
    {
        if (m_before.drive.isEmpty() || m_before.drive != m_after.drive)
            return {Outcome::Unknown};
        if (isCash(m_ours.kind))
            return ofCash();
        const std::optional<qint64> moved = movedBy();
        if (!moved || *moved < 0)
            return {Outcome::Unknown};
        return isReceipt(m_ours.kind) ? ofReceipt(*moved) : ofNumbered(*moved);
    }

private:
    bool isNumberTold() const { return m_before.lastDocument != 0 && m_after.lastDocument != 0; }
    bool hasShiftEnded() const
    {
        return m_after.isShiftOpen == false || differ(m_before.shift, m_after.shift);
    }

    std::optional<qint64> movedBy() const
    {
        if (isNumberTold())
            return qint64{m_after.lastDocument} - m_before.lastDocument;
        // The next shift counts its receipts anew.
        if (!m_before.nextReceipt || !m_after.nextReceipt || hasShiftEnded())
            return std::nullopt;
        return *m_after.nextReceipt - *m_before.nextReceipt;
    }

    Judgement issued(qint64 times = 1) const
    {
        if (!m_circumstances.isOursAlone)
            return {Outcome::Unknown};
        // The drive does not number cash.
        Verdict verdict{Outcome::Issued, isCash(m_ours.kind) ? 0 : m_after.lastDocument};
        verdict.isNumberRead = m_after.isNumberRead;
        verdict.times = static_cast<int>(times);
        return {verdict};
    }

    PaymentSums sumsBefore() const { return m_before.sums.value(m_ours.kind); }
    PaymentSums sumsAfter() const { return m_after.sums.value(m_ours.kind); }

    Sums sums() const
    {
        const bool isTold = m_before.sums.contains(m_ours.kind) && m_after.sums.contains(m_ours.kind);
        const PaymentSums ours = withoutZeros(m_ours.payments);
        // A receipt over nothing moves no sum, whether it is issued or not.
        if (!isTold || hasShiftEnded() || ours.isEmpty())
            return Sums::NotTold;
        const PaymentSums moved = difference(sumsAfter(), sumsBefore());
        if (moved.isEmpty())
            return Sums::Still;
        return moved == ours ? Sums::ByOurs : Sums::ByOthers;
    }

    /// The sums before may have been those that make the document ours, with a byte changed on the way: of
    /// the answer that told them, or of the receipt that they were counted on by.
    bool mayBeMisread() const
    {
        return !m_circumstances.isChecked
            && (!m_before.areSumsRead
                || isMisreading(sumsBefore(), difference(sumsAfter(), m_ours.payments)));
    }

    Judgement ofReceipt(qint64 moved) const
    {
        const Sums sums = this->sums();
        if (moved == 0)
            return hasShiftEnded() || sums == Sums::ByOurs || sums == Sums::ByOthers
                ? contradiction
                : Judgement{Outcome::NotIssued};
        if (hasShiftEnded())
            return {moved == 1 ? Outcome::NotIssued : Outcome::Unknown};
        if (sums == Sums::Still || (moved == 1 && sums == Sums::ByOthers))
            return mayBeMisread() ? contradiction : Judgement{Outcome::NotIssued};
        return moved == 1 ? issued() : Judgement{Outcome::Unknown};
    }

    /// Whether the shift stands as the document leaves it; nothing when that is not told.
    std::optional<bool> isShiftAsOurs() const
    {
        if (m_ours.kind == DocumentKind::ShiftOpening)
            return m_after.isShiftOpen;
        if (m_ours.kind == DocumentKind::ShiftClosing && m_after.isShiftOpen)
            return !*m_after.isShiftOpen;
        return !differ(m_before.isShiftOpen, m_after.isShiftOpen);
    }

    Judgement ofNumbered(qint64 moved) const
    {
        if (moved == 0)
            return differ(m_before.isShiftOpen, m_after.isShiftOpen) ? contradiction
                                                                     : Judgement{Outcome::NotIssued};
        if (isShiftAsOurs() == false)
            return {moved == 1 ? Outcome::NotIssued : Outcome::Unknown};
        // Of a shift's opening or closing the register refuses the second.
        const bool mayBeRepeated = m_circumstances.isSentAgain && m_ours.kind == DocumentKind::Report;
        return moved == 1 || mayBeRepeated ? issued(moved) : Judgement{Outcome::Unknown};
    }

    /// What went in or out of the drawer is what the counter says of it.
    bool isDrawerAsCounted(qint64 sum) const
    {
        const qint64 signedSum = m_ours.kind == DocumentKind::CashIn ? sum : -sum;
        return !m_before.drawer || !m_after.drawer || *m_after.drawer - *m_before.drawer == signedSum;
    }

    Judgement ofCash() const
    {
        const bool isTold = m_before.cash.contains(m_ours.kind) && m_after.cash.contains(m_ours.kind);
        if (!isTold || hasShiftEnded())
            return {Outcome::Unknown};
        const OperationCount before = m_before.cash.value(m_ours.kind);
        const OperationCount after = m_after.cash.value(m_ours.kind);
        const qint64 moved = after.count - before.count;
        const qint64 sum = after.sum - before.sum;
        if (moved < 0)
            return {Outcome::Unknown};
        if (moved == 0)
            return sum == 0 ? Judgement{Outcome::NotIssued} : contradiction;
        if (!isDrawerAsCounted(sum))
            return contradiction;
        if (sum != moved * m_ours.cash)
            return {moved == 1 ? Outcome::NotIssued : Outcome::Unknown};
        return moved == 1 || m_circumstances.isSentAgain ? issued(moved) : Judgement{Outcome::Unknown};
    }

    const DriveMark& m_before;
    const DriveMark& m_after;
    const Movement& m_ours;
    const Circumstances& m_circumstances;
};

} // namespace

Judgement judge(
    const DriveMark& before, const DriveMark& after, const Movement& ours, const Circumstances& circumstances)
{
    return Comparison(before, after, ours, circumstances).judgement();
}

} // namespace sale
